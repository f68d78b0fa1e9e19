#include "svg/node.h"

#include <tinyxml2.h>

#include "svg/document.h"
#include "svg/presentation_table.h"
#include "svg/style_attribute.h"
#include "svg/text_cursor.h"

namespace quor {

// Trees are no deeper than the XML library lets elements nest, so the recursion is bounded.
SvgNode::~SvgNode() {
    for (SvgNode* child : children_) delete child;
}

Status SvgNode::parseAttributes(const AttributeTable& attributes) noexcept {
    const LengthContext lengths{document_.screen.dpi, &document_.initialViewport};
    return readPresentationAttributes(attributes, lengths, style_, dashes_, transform_);
}

const char* SvgNode::attribute(const char* name) const noexcept { return element_.Attribute(name); }

const char* SvgNode::id() const noexcept {
    const char* plain = attribute("id");
    return plain != nullptr ? plain : attribute("xml:id");
}

Status SvgNode::reserveChildren(int count) noexcept {
    return children_.reserve(count) ? Status::kOk : Status::kOutOfMemory;
}

Status SvgNode::appendChild(SvgNode* child) noexcept {
    if (!children_.push(child)) return Status::kOutOfMemory;
    child->setParent(this);
    return Status::kOk;
}

const Rect& SvgNode::lengthViewport() const noexcept {
    const SvgNode* node = this;
    while (node != nullptr && node->kind() != SvgNodeKind::kSvg) node = node->parent();
    const Rect* own = node != nullptr ? node->viewport() : nullptr;
    return own != nullptr ? *own : document_.initialViewport;
}

const char* lookupInherited(const SvgNode* node, const char* property) noexcept {
    for (; node != nullptr; node = node->parent()) {
        const char* value = node->attribute(property);
        if (value != nullptr && !TextCursor(value).beginsWith("inherit")) return value;
    }
    return initialPropertyValue(property);
}

}  // namespace quor
