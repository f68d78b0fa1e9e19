// What a gradient takes over from the gradients that it refers to.

#include "svg/gradient.h"
#include "svg/tree_resources.h"

namespace quor {

namespace {

/// A longer chain is cut off, and a circle with it: going round once meets all there is to take.
constexpr int kLongestChain = 512;

bool isGradient(const SvgNode& node) noexcept {
    return node.kind() == SvgNodeKind::kLinearGradient ||
           node.kind() == SvgNodeKind::kRadialGradient;
}

template <class Value>
void inheritValue(Value& own, bool& hasOwn, const Value& other, bool hasOther) noexcept {
    if (hasOwn || !hasOther) return;
    own = other;
    hasOwn = true;
}

void inheritLength(SvgLength& own, const SvgLength& other) noexcept {
    if (own.unit == LengthUnit::kNone) own = other;
}

}  // namespace

void SvgGradient::inheritAttributes() noexcept {
    if (isInherited_) return;
    isInherited_ = true;
    if (hasStops()) stopSource_ = this;
    SvgGradient* gradient = referenced();
    for (int i = 0; gradient != nullptr && i < kLongestChain; ++i) {
        inheritFrom(*gradient);
        gradient = gradient->referenced();
    }
}

/// The gradient that `xlink:href` names; any other node is ignored.
SvgGradient* SvgGradient::referenced() noexcept {
    if (!isReferenceResolved_) {
        isReferenceResolved_ = true;
        SvgNode* node = href != nullptr ? resources_.findReference(href) : nullptr;
        if (node != nullptr && isGradient(*node)) referenced_ = static_cast<SvgGradient*>(node);
    }
    return referenced_;
}

void SvgGradient::inheritFrom(const SvgGradient& other) noexcept {
    inheritValue(gradientUnits, hasUnits, other.gradientUnits, other.hasUnits);
    inheritValue(spreadMethod, hasSpreadMethod, other.spreadMethod, other.hasSpreadMethod);
    inheritValue(gradientTransform, hasTransform, other.gradientTransform, other.hasTransform);
    if (other.kind() == kind()) inheritGeometry(other);
    if (stopSource_ == nullptr && other.hasStops()) stopSource_ = &other;
}

bool SvgGradient::hasStops() const noexcept {
    for (const SvgNode* child : children_) {
        if (child->kind() == SvgNodeKind::kStop) return true;
    }
    return false;
}

void SvgLinearGradient::inheritGeometry(const SvgGradient& other) noexcept {
    const auto& gradient = static_cast<const SvgLinearGradient&>(other);
    inheritLength(x1, gradient.x1);
    inheritLength(y1, gradient.y1);
    inheritLength(x2, gradient.x2);
    inheritLength(y2, gradient.y2);
}

void SvgRadialGradient::inheritGeometry(const SvgGradient& other) noexcept {
    const auto& gradient = static_cast<const SvgRadialGradient&>(other);
    inheritLength(cx, gradient.cx);
    inheritLength(cy, gradient.cy);
    inheritLength(fx, gradient.fx);
    inheritLength(fy, gradient.fy);
    inheritLength(r, gradient.r);
}

}  // namespace quor
