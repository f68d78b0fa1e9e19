#pragma once

#include "svg/node.h"

namespace quor {

class SvgShape;

/// A node that shapes refer to as their fill or stroke.
class SvgPaintServer : public SvgNode {
public:
    using SvgNode::SvgNode;

    /// Sets the engine's fill or stroke paint for the shape. `isUsable` false: the reference's
    /// fallback is to be used. Defined on the drawing side.
    virtual Status buildPaint(Traversal& traversal, SvgShape& shape, bool forFill,
                              bool& isUsable) noexcept = 0;

    /// From the paint's coordinates to those of the shape that buildPaint() had last.
    const SvgMatrix& paintMatrix() const noexcept { return paintMatrix_; }

protected:
    SvgMatrix paintMatrix_;
};

/// Whether a node of this kind can serve as a paint.
constexpr bool isPaintServer(SvgNodeKind kind) noexcept {
    return kind == SvgNodeKind::kLinearGradient || kind == SvgNodeKind::kRadialGradient ||
           kind == SvgNodeKind::kSolidColor;
}

}  // namespace quor
