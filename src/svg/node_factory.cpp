// Builds the tree depth first. An element's class is that of the first keyword which its name
// begins with; a table by initial letter keeps the search short.

#include "svg/node_factory.h"

#include <tinyxml2.h>

#include <array>
#include <iterator>
#include <memory>
#include <string_view>

#include "svg/containers.h"
#include "svg/gradient.h"
#include "svg/shapes.h"
#include "svg/text_cursor.h"
#include "svg/tree_resources.h"

namespace quor {

namespace {

using tinyxml2::XMLElement;

/// Makes the bare node of an element; null when memory runs out.
using Maker = SvgNode* (*)(TreeResources& resources) noexcept;

template <class Node, SvgNodeKind kKind>
SvgNode* make(TreeResources& resources) noexcept {
    return new (resources.arena) Node(resources, kKind);
}

constexpr Maker kDropped = nullptr;

struct Rule {
    std::string_view keyword;  ///< an element's name matches when it begins with this
    Maker maker;
};

// The first match decides. Rules of one initial letter stand together.
// clang-format off
constexpr Rule kRules[] = {
    {"circle", make<SvgCircle, SvgNodeKind::kCircle>},
    {"clipPath", kDropped},
    {"defs", make<SvgDefs, SvgNodeKind::kDefs>},
    {"ellipse", make<SvgEllipse, SvgNodeKind::kEllipse>},
    {"font", kDropped},
    {"g", make<SvgGroup, SvgNodeKind::kGroup>},
    {"linearGradient", make<SvgLinearGradient, SvgNodeKind::kLinearGradient>},
    {"line", make<SvgLine, SvgNodeKind::kLine>},
    {"mask", kDropped},
    {"marker", kDropped},
    {"path", make<SvgPath, SvgNodeKind::kPath>},
    {"pattern", kDropped},
    {"polygon", make<SvgPolygon, SvgNodeKind::kPolygon>},
    {"polyline", make<SvgPolyline, SvgNodeKind::kPolyline>},
    {"radialGradient", make<SvgRadialGradient, SvgNodeKind::kRadialGradient>},
    {"rect", make<SvgRect, SvgNodeKind::kRect>},
    {"solidColor", make<SvgSolidColor, SvgNodeKind::kSolidColor>},
    {"stop", make<SvgStop, SvgNodeKind::kStop>},
    {"svg", make<SvgSvg, SvgNodeKind::kSvg>},
    {"symbol", kDropped},
    {"use", make<SvgUse, SvgNodeKind::kUse>},
};
// clang-format on

constexpr size_t kRuleCount = std::size(kRules);

/// kFirstRule[letter]: where the rules of a letter begin, kRuleCount for a letter without any.
constexpr auto kFirstRule = [] {
    std::array<uint8_t, 256> first{};
    first.fill(kRuleCount);
    for (size_t i = kRuleCount; i-- > 0;) {
        first[static_cast<uint8_t>(kRules[i].keyword[0])] = static_cast<uint8_t>(i);
    }
    return first;
}();

/// kDropped for an element that makes no node.
Maker findMaker(const char* name) noexcept {
    const char letter = name[0];
    for (size_t i = kFirstRule[static_cast<uint8_t>(letter)]; i < kRuleCount; ++i) {
        const std::string_view keyword = kRules[i].keyword;
        if (keyword[0] != letter) break;
        if (beginsWith(name, keyword)) return kRules[i].maker;
    }
    return make<SvgNode, SvgNodeKind::kGeneric>;
}

Status appendChildren(XMLElement& element, SvgNode& node) noexcept {
    for (XMLElement* childElement = element.FirstChildElement(); childElement != nullptr;
         childElement = childElement->NextSiblingElement()) {
        SvgNode* child = nullptr;
        const Status status = buildNode(node.resources(), *childElement, child);
        if (status != Status::kOk) return status;
        if (child != nullptr) node.appendChild(child);
    }
    return Status::kOk;
}

/// Fills a bare node. Its id comes last, so that of two elements with one id, the one that ends
/// later is found.
Status fillNode(XMLElement& element, SvgNode& node) noexcept {
    Status status = node.readAttributes(element);
    if (status == Status::kOk) status = appendChildren(element, node);
    if (status != Status::kOk) return status;
    const char* id = node.id();
    return id != nullptr ? node.resources().ids.insert(id, &node) : Status::kOk;
}

}  // namespace

Status buildNode(TreeResources& resources, XMLElement& element, SvgNode*& node) noexcept {
    node = nullptr;
    const Maker maker = findMaker(element.Name());
    if (maker == kDropped) return Status::kOk;
    std::unique_ptr<SvgNode> built(maker(resources));
    if (built == nullptr) return Status::kOutOfMemory;
    const Status status = fillNode(element, *built);
    if (status == Status::kOk) node = built.release();
    return status;
}

}  // namespace quor
