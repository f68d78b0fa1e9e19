#pragma once

#include <cstdint>

#include "api/draw/engine_paint.h"
#include "api/draw/non_scaling_stroke.h"
#include "svg/shapes.h"
#include "svg/status.h"
#include "svg/style.h"
#include "vg/vg.h"

namespace quor {

class Traversal;

/// The paints that one pass sets up and restores.
enum class PaintPass : uint32_t { kFill = 1, kStroke = 2, kFillAndStroke = 3 };

/// The paints of a pass that are usable, as vgDrawPath takes them. The bits are swapped against
/// PaintPass.
enum class DrawModes : VGbitfield {
    kNone = 0,
    kStroke = VG_STROKE_PATH,
    kFill = VG_FILL_PATH,
    kFillAndStroke = VG_STROKE_PATH | VG_FILL_PATH,
};

/// Draws or measures one shape under the traversal's style and transform, and leaves the engine's
/// state as it found it but for the paints and the colour transform, which every pass sets anew.
class ShapePainter {
public:
    ShapePainter(Traversal& traversal, SvgShape& shape) noexcept;

    Status paint() noexcept;

private:
    Status paintPass(PaintPass pass) noexcept;
    static void measure(VGPath path, DrawModes modes, Box& painted) noexcept;
    Status setupPaints(PaintPass pass, DrawModes& modes) noexcept;
    Status setupPaint(const SvgPaint& paint, float opacity, DrawModes mode,
                      DrawModes& modes) noexcept;
    Status preparePaint(const SvgPaint& paint, DrawModes mode, VGPaint& handle) noexcept;
    Status prepareServer(SvgNode& server, EnginePaint& prepared) noexcept;
    void loadPaintMatrix(const SvgMatrix& matrix, DrawModes mode) noexcept;
    void restorePaintMatrices() noexcept;

    Traversal& traversal_;
    SvgShape& shape_;
    const SvgStyle& style_;
    NonScalingStroke nonScalingStroke_;
    DrawModes loadedMatrices_ = DrawModes::kNone;  ///< paint matrices that are not the identity
};

}  // namespace quor
