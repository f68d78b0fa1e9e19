#pragma once

#include "svg/length.h"
#include "svg/node.h"
#include "svg/viewport_alignment.h"

namespace quor {

class SvgGroup final : public SvgNode {
public:
    using SvgNode::SvgNode;
};

/// Nothing inside `defs` is drawn directly.
class SvgDefs final : public SvgNode {
public:
    using SvgNode::SvgNode;
};

/// An `svg` element, outermost or nested.
class SvgSvg final : public SvgNode {
public:
    using SvgNode::SvgNode;
    Status parseAttributes(const AttributeTable& attributes) noexcept override;

    /// Null while the record is unset.
    const Rect* viewport() const noexcept override {
        return viewport_.isSet() ? &viewport_ : nullptr;
    }

    /// The outermost `svg` is placed by the document: this map is used instead of its own x, y,
    /// width, height and viewBox.
    void setOutermostMapping(const SvgMatrix& mapping) noexcept {
        outermostMapping_ = mapping;
        isOutermost_ = true;
    }

    /// The map into the parent's coordinates; false when nothing is to be drawn because a nested
    /// element's size or viewBox is degenerate.
    bool ownMapping(SvgMatrix& mapping) const noexcept;

    SvgLength x, y;
    SvgLength width{100.0F, LengthUnit::kPercent};
    SvgLength height{100.0F, LengthUnit::kPercent};
    bool hasWidth = false;  ///< the attribute is present
    bool hasHeight = false;
    bool hasViewBox = false;
    ViewportAlignment alignment;

private:
    /// x, y, width, height in user units, percentages being of `outer`.
    Rect placeIn(const Rect& outer) const noexcept;

    Rect viewport_;
    SvgMatrix outermostMapping_;
    bool isOutermost_ = false;
};

class SvgUse final : public SvgNode {
public:
    using SvgNode::SvgNode;
    Status parseAttributes(const AttributeTable& attributes) noexcept override;

    /// The element that `xlink:href` names, looked up on first need; null when there is none.
    SvgNode* target() noexcept;

    float x = 0.0F;
    float y = 0.0F;
    const char* href = nullptr;
    bool isBeingDrawn = false;

private:
    SvgNode* target_ = nullptr;
};

}  // namespace quor
