// What all elements share: ownership of their children, presentation attributes, and the climb to
// an ancestor for a viewport or an inherited property.

#include "svg/node.h"

#include "svg/presentation_attributes.h"
#include "svg/text_cursor.h"
#include "svg/tree_resources.h"

namespace quor {

// Trees are no deeper than the XML library lets elements nest, so the recursion is bounded.
SvgNode::~SvgNode() {
    SvgNode* next = nullptr;
    for (SvgNode* child = children_.first_; child != nullptr; child = next) {
        next = child->nextSibling_;
        delete child;
    }
}

Status SvgNode::readAttributes(const tinyxml2::XMLElement& element) noexcept {
    if (!attributes_.read(element, resources_.arena)) return Status::kOutOfMemory;
    return parseAttributes(attributes_);
}

Status SvgNode::parseAttributes(const AttributeTable& attributes) noexcept {
    const LengthContext lengths{resources_.screen.dpi, &resources_.initialViewport};
    return readPresentationAttributes(attributes, lengths, style_, dashes_, transform_);
}

const char* SvgNode::id() const noexcept {
    const char* plain = attribute(AttributeId::kId);
    return plain != nullptr ? plain : attribute(AttributeId::kXmlId);
}

void SvgNode::appendChild(SvgNode* child) noexcept {
    SvgNode*& link = children_.isEmpty() ? children_.first_ : children_.last_->nextSibling_;
    link = children_.last_ = child;
    child->setParent(this);
}

const Rect& SvgNode::lengthViewport() const noexcept {
    const SvgNode* node = this;
    while (node != nullptr && node->kind() != SvgNodeKind::kSvg) node = node->parent();
    const Rect* own = node != nullptr ? node->viewport() : nullptr;
    return own != nullptr ? *own : resources_.initialViewport;
}

namespace {

/// The initial value of a property that is looked up in this way; null for all others.
const char* initialValue(AttributeId property) noexcept {
    switch (property) {
        case AttributeId::kColor:
        case AttributeId::kStopColor:
        case AttributeId::kSolidColor:
            return "#000";
        case AttributeId::kStopOpacity:
        case AttributeId::kSolidOpacity:
            return "1";
        default:
            return nullptr;
    }
}

}  // namespace

const char* lookupInherited(const SvgNode* node, AttributeId property) noexcept {
    for (; node != nullptr; node = node->parent()) {
        const char* value = node->attribute(property);
        if (value != nullptr && !TextCursor(value).beginsWith("inherit")) return value;
    }
    return initialValue(property);
}

}  // namespace quor
