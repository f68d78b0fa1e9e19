#pragma once

#include <cstddef>
#include <cstdint>

#include "base/arena.h"
#include "base/array.h"
#include "svg/attribute_table.h"
#include "svg/matrix.h"
#include "svg/node_list.h"
#include "svg/rect.h"
#include "svg/status.h"
#include "svg/style.h"

namespace tinyxml2 {
class XMLElement;
}

namespace quor {

class TreeResources;

/// Fixed codes; gaps are never given to other kinds.
enum class SvgNodeKind : uint8_t {
    kCircle = 0,
    kDefs = 2,
    kEllipse = 4,
    kGroup = 5,
    kLine = 6,
    kLinearGradient = 7,
    kPath = 8,
    kPolygon = 11,
    kPolyline = 12,
    kRadialGradient = 13,
    kRect = 14,
    kSolidColor = 15,
    kStop = 16,
    kSvg = 17,
    kUse = 20,
    kGeneric = 99,
};

/// Whether a node of this kind has an outline: it is a SvgShape.
constexpr bool isShape(SvgNodeKind kind) noexcept {
    switch (kind) {
        case SvgNodeKind::kCircle:
        case SvgNodeKind::kEllipse:
        case SvgNodeKind::kLine:
        case SvgNodeKind::kPath:
        case SvgNodeKind::kPolygon:
        case SvgNodeKind::kPolyline:
        case SvgNodeKind::kRect:
            return true;
        default:
            return false;
    }
}

/// Whether a node of this kind counts in bounds.
constexpr bool isRenderable(SvgNodeKind kind) noexcept {
    return isShape(kind) || kind == SvgNodeKind::kGroup || kind == SvgNodeKind::kSvg ||
           kind == SvgNodeKind::kUse;
}

/// A node of the element tree; also the class of every element without one of its own.
///
/// A node owns its children, lives in the arena of its tree's resources and points into the texts
/// of its XML element, so the XML document and the resources outlive the tree. Nodes hold values;
/// whoever draws or measures them dispatches over kind(), which names the class.
class SvgNode {
public:
    SvgNode(TreeResources& resources, SvgNodeKind kind) noexcept
        : resources_(resources), kind_(kind) {}
    SvgNode(const SvgNode&) = delete;
    SvgNode& operator=(const SvgNode&) = delete;
    virtual ~SvgNode();

    /// Null when memory runs out. Deleting a node destroys it; the memory stays with the arena.
    static void* operator new(size_t size, base::Arena& arena) noexcept {
        return arena.allocate(size);
    }
    static void operator delete(void* /*memory*/) noexcept {}
    static void operator delete(void* /*memory*/, base::Arena& /*arena*/) noexcept {}

    /// The area of its own coordinate system that the node shows; null for all but `svg`.
    virtual const Rect* viewport() const noexcept { return nullptr; }

    /// Looks at the element's attributes and reads those that are needed before a draw.
    Status readAttributes(const tinyxml2::XMLElement& element) noexcept;

    /// Reads the node's attributes while the tree is built.
    virtual Status parseAttributes(const AttributeTable& attributes) noexcept;

    SvgNode* parent() const noexcept { return parent_; }
    /// A `use` re-points its target's parent to itself while it draws it.
    void setParent(SvgNode* parent) noexcept { parent_ = parent; }
    const SvgNodeList& children() const noexcept { return children_; }
    /// The next child of the parent in whose list the node is; null after the last.
    SvgNode* nextSibling() const noexcept { return nextSibling_; }
    TreeResources& resources() const noexcept { return resources_; }
    const SvgMatrix& transform() const noexcept { return transform_; }
    SvgStyle& style() noexcept { return style_; }
    const SvgStyle& style() const noexcept { return style_; }
    SvgNodeKind kind() const noexcept { return kind_; }

    /// The value of the attribute, declarations of `style` included, or null.
    const char* attribute(AttributeId id) const noexcept { return attributes_[id]; }
    /// The value of `id`, else of `xml:id`, else null.
    const char* id() const noexcept;

    /// Takes ownership of a child that is in no list.
    void appendChild(SvgNode* child) noexcept;

    /// The viewport record of the nearest `svg` at or above the node when it is set, else the
    /// screen: what geometry and gradient lengths refer to.
    const Rect& lengthViewport() const noexcept;

protected:
    TreeResources& resources_;
    SvgNode* parent_ = nullptr;
    SvgNode* nextSibling_ = nullptr;
    SvgNodeList children_;
    AttributeTable attributes_;
    SvgMatrix transform_;
    SvgStyle style_;
    base::Array<float> dashes_;  ///< the values of style_.strokeDashArray
    SvgNodeKind kind_;
};

inline SvgNodeList::Iterator& SvgNodeList::Iterator::operator++() noexcept {
    node_ = node_->nextSibling();
    return *this;
}

/// The first value of the property at or above the node that does not begin with "inherit"; else
/// its initial value. The properties are `color` and those of `stop` and `solidColor`; the others
/// are inherited as SvgStyle.
const char* lookupInherited(const SvgNode* node, AttributeId property) noexcept;

}  // namespace quor
