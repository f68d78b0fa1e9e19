#include "passed_over.h"

#include <tinyxml2.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "element_walk.h"

namespace tool {

namespace {

struct Feature {
    const char* name;
    const char* advice;
};

// clang-format off
constexpr Feature kElements[] = {
    {"animate",          "the drawing stands still"},
    {"animateColor",     "the drawing stands still"},
    {"animateMotion",    "the drawing stands still"},
    {"animateTransform", "the drawing stands still"},
    {"clipPath",         "shapes are drawn whole; cut them in the editor"},
    {"filter",           "shapes are drawn without it"},
    {"font",             "convert text to paths"},
    {"foreignObject",    "only SVG is drawn"},
    {"image",            "only vector shapes are drawn"},
    {"marker",           "draw arrow heads as paths"},
    {"mask",             "shapes are drawn whole"},
    {"mesh",             "use linear and radial gradients"},
    {"pattern",          "the fill falls back or is left out; repeat the shapes with <use>"},
    {"script",           "the drawing stands still"},
    {"set",              "the drawing stands still"},
    {"style",            "style sheets are not read; write presentation attributes"},
    {"symbol",           "make it a <g> in <defs>"},
    {"text",             "convert text to paths in the editor"},
    {"video",            "only vector shapes are drawn"},
};

constexpr Feature kAttributes[] = {
    {"clip-path",    "shapes are drawn whole"},
    {"filter",       "shapes are drawn without it"},
    {"marker",       "draw arrow heads as paths"},
    {"marker-end",   "draw arrow heads as paths"},
    {"marker-mid",   "draw arrow heads as paths"},
    {"marker-start", "draw arrow heads as paths"},
    {"mask",         "shapes are drawn whole"},
    {"opacity",      "use fill-opacity and stroke-opacity"},
};
// clang-format on

template <std::size_t kCount>
const Feature* find(const Feature (&features)[kCount], std::string_view name) {
    const auto* found = std::find_if(std::begin(features), std::end(features),
                                     [name](const Feature& f) { return name == f.name; });
    return found == std::end(features) ? nullptr : found;
}

class Collector {
public:
    void visit(const tinyxml2::XMLElement& element) {
        const int line = element.GetLineNum();
        if (const Feature* feature = find(kElements, element.Name()))
            add(std::string("<") + feature->name + ">", *feature, line);
        forEachProperty(element, [&](std::string_view name, std::string_view value) {
            const Feature* feature = find(kAttributes, name);
            if (feature == nullptr || value == "none" || value == "inherit") return;
            if (name == "opacity" && std::atof(std::string(value).c_str()) >= 1) return;
            add(std::string(name) + "=", *feature, element.GetLineNum());
        });
    }

    std::vector<PassedOver> take() { return std::move(found_); }

private:
    void add(const std::string& name, const Feature& feature, int line) {
        const auto known = std::find_if(found_.begin(), found_.end(),
                                        [&](const PassedOver& p) { return p.name == name; });
        if (known != found_.end())
            ++known->count;
        else
            found_.push_back({name, 1, line, feature.advice});
    }

    std::vector<PassedOver> found_;  ///< in document order, and so by line
};

}  // namespace

std::vector<PassedOver> findPassedOver(const std::string& text) {
    tinyxml2::XMLDocument xml;
    if (xml.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS) return {};
    Collector collector;
    const tinyxml2::XMLElement* root = xml.RootElement();
    for (const auto* element = root; element != nullptr; element = nextElement(element, root))
        collector.visit(*element);
    return collector.take();
}

}  // namespace tool
