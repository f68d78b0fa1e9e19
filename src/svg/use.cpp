#include "base/finite.h"
#include "svg/containers.h"
#include "svg/number.h"
#include "svg/tree_resources.h"

namespace quor {

namespace {

/// A plain number: a unit or percent sign after it is ignored.
float numberOrZero(const char* text) noexcept {
    if (text == nullptr) return 0.0F;
    TextCursor cursor(text);
    return base::finite(readNumber(cursor));
}

}  // namespace

Status SvgUse::parseAttributes(const AttributeTable& attributes) noexcept {
    x = numberOrZero(attributes[AttributeId::kX]);
    y = numberOrZero(attributes[AttributeId::kY]);
    href = attributes[AttributeId::kHref];
    return SvgNode::parseAttributes(attributes);
}

SvgNode* SvgUse::target() noexcept {
    if (target_ == nullptr && href != nullptr) target_ = resources_.findReference(href);
    return target_;
}

}  // namespace quor
