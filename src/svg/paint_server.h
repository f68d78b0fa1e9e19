#pragma once

#include "svg/node.h"
#include "vg/vg.h"

namespace quor {

/// A node that shapes refer to as their fill or stroke. It owns an engine paint, which the drawing
/// side makes when the server is first used and fills.
class SvgPaintServer : public SvgNode {
public:
    using SvgNode::SvgNode;
    ~SvgPaintServer() override {
        if (enginePaint != VG_INVALID_HANDLE) vgDestroyPaint(enginePaint);
    }

    VGPaint enginePaint = VG_INVALID_HANDLE;  ///< invalid until the server is first used
};

/// Whether a node of this kind can serve as a paint: it is a SvgPaintServer.
constexpr bool isPaintServer(SvgNodeKind kind) noexcept {
    return kind == SvgNodeKind::kLinearGradient || kind == SvgNodeKind::kRadialGradient ||
           kind == SvgNodeKind::kSolidColor;
}

}  // namespace quor
