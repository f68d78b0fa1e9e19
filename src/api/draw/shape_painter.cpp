// Draws a shape in one pass, or fill and stroke in two when they cannot share the engine's state:
// sets paints, paint matrices and opacity, draws the path, and restores what it changed.

#include "api/draw/shape_painter.h"

#include "api/draw/engine_matrix.h"
#include "api/draw/gradient_paint.h"
#include "api/draw/solid_color_paint.h"
#include "api/draw/traversal.h"
#include "svg/engine_error.h"
#include "vg/engine.h"

namespace quor {

namespace {

constexpr bool includes(PaintPass pass, PaintPass part) noexcept {
    return (static_cast<uint32_t>(pass) & static_cast<uint32_t>(part)) != 0;
}
constexpr bool includes(DrawModes modes, DrawModes part) noexcept {
    return (static_cast<VGbitfield>(modes) & static_cast<VGbitfield>(part)) != 0;
}
constexpr DrawModes with(DrawModes modes, DrawModes part) noexcept {
    return static_cast<DrawModes>(static_cast<VGbitfield>(modes) | static_cast<VGbitfield>(part));
}
constexpr DrawModes without(DrawModes modes, DrawModes part) noexcept {
    return static_cast<DrawModes>(static_cast<VGbitfield>(modes) & ~static_cast<VGbitfield>(part));
}

/// Opacity is a scale of alpha after the paint is evaluated.
void setOpacity(float opacity) noexcept {
    if (opacity == 1.0F) {
        vgSeti(VG_COLOR_TRANSFORM, VG_FALSE);
        return;
    }
    const VGfloat scalesAndBiases[8] = {1.0F, 1.0F, 1.0F, opacity, 0.0F, 0.0F, 0.0F, 0.0F};
    vgSetfv(VG_COLOR_TRANSFORM_VALUES, 8, scalesAndBiases);
    vgSeti(VG_COLOR_TRANSFORM, VG_TRUE);
}

bool isStroked(const SvgStyle& style) noexcept {
    return style.stroke.type != PaintType::kNone && style.strokeWidth > 0.0F;
}

/// One colour transform serves both paints, so only equal opacities can share a pass; and a
/// non-scaling stroke may draw another path.
bool sharesPass(const SvgStyle& style) noexcept {
    return style.fillOpacity == style.strokeOpacity &&
           style.vectorEffect != SvgVectorEffect::kNonScalingStroke;
}

}  // namespace

ShapePainter::ShapePainter(Traversal& traversal, SvgShape& shape) noexcept
    : traversal_(traversal), shape_(shape), style_(traversal.style()) {}

Status ShapePainter::paint() noexcept {
    const bool isFilled = style_.fill.type != PaintType::kNone;
    const bool hasStroke = isStroked(style_);
    if (!isFilled && !hasStroke) return takeEngineError();
    if (const Status status = shape_.ensurePath(); status != Status::kOk) return status;

    Status status = Status::kOk;
    if (isFilled && hasStroke && sharesPass(style_)) {
        status = paintPass(PaintPass::kFillAndStroke);
    } else {
        if (isFilled) status = paintPass(PaintPass::kFill);
        if (hasStroke && status == Status::kOk) status = paintPass(PaintPass::kStroke);
    }
    return status;
}

Status ShapePainter::paintPass(PaintPass pass) noexcept {
    DrawModes modes = DrawModes::kNone;
    const Status status = setupPaints(pass, modes);
    if (status == Status::kOk && modes != DrawModes::kNone) {
        const VGPath path = nonScalingStroke_.path() != VG_INVALID_HANDLE ? nonScalingStroke_.path()
                                                                          : shape_.path();
        if (traversal_.painted() != nullptr) {
            measure(path, modes, *traversal_.painted());
        } else {
            vgDrawPath(path, static_cast<VGbitfield>(modes));
        }
    }
    nonScalingStroke_.restore();
    restorePaintMatrices();
    return status != Status::kOk ? status : takeEngineError();
}

void ShapePainter::measure(VGPath path, DrawModes modes, Box& painted) noexcept {
    const vg::PaintedBounds box = vg::paintedBounds(path, static_cast<VGbitfield>(modes));
    if (box.minX < box.maxX && box.minY < box.maxY) {
        painted.unite({box.minX, box.minY, box.maxX, box.maxY});
    }
}

Status ShapePainter::setupPaints(PaintPass pass, DrawModes& modes) noexcept {
    Status status = Status::kOk;
    if (includes(pass, PaintPass::kFill)) {
        status = setupPaint(style_.fill, style_.fillOpacity, DrawModes::kFill, modes);
        if (status != Status::kOk) return status;
    }
    if (includes(pass, PaintPass::kStroke)) {
        status = setupPaint(style_.stroke, style_.strokeOpacity, DrawModes::kStroke, modes);
        if (status != Status::kOk) return status;
    }
    if (includes(modes, DrawModes::kStroke) &&
        style_.vectorEffect == SvgVectorEffect::kNonScalingStroke) {
        const SvgMatrix& transform = traversal_.transform();
        if (leavesStroke(transform)) {
            status = nonScalingStroke_.setup(transform, shape_);
        } else {
            modes = without(modes, DrawModes::kStroke);
        }
    }
    return status != Status::kOk ? status : takeEngineError();
}

Status ShapePainter::setupPaint(const SvgPaint& paint, float opacity, DrawModes mode,
                                DrawModes& modes) noexcept {
    VGPaint handle = VG_INVALID_HANDLE;
    const Status status = preparePaint(paint, mode, handle);
    if (status != Status::kOk || handle == VG_INVALID_HANDLE) return status;
    vgSetPaint(handle, static_cast<VGbitfield>(mode));
    modes = with(modes, mode);
    setOpacity(opacity);
    return Status::kOk;
}

/// The engine paint for filling or stroking; invalid when there is nothing to draw with. A
/// reference that gives no paint takes its fallback; currentColor was resolved when the node was
/// entered.
Status ShapePainter::preparePaint(const SvgPaint& paint, DrawModes mode, VGPaint& handle) noexcept {
    PaintType type = paint.type;
    if (type == PaintType::kServer) {
        if (paint.server != nullptr) {
            EnginePaint prepared;
            const Status status = prepareServer(*paint.server, prepared);
            handle = prepared.handle;
            if (handle != VG_INVALID_HANDLE) loadPaintMatrix(prepared.paintToUser, mode);
            if (status != Status::kOk || handle != VG_INVALID_HANDLE) return status;
        }
        type = paint.fallback;
    }
    if (type != PaintType::kColor) return Status::kOk;
    const VGfloat color[4] = {paint.color.red, paint.color.green, paint.color.blue,
                              paint.color.alpha};
    handle = mode == DrawModes::kFill ? traversal_.fillPaint() : traversal_.strokePaint();
    vgSetParameterfv(handle, VG_PAINT_COLOR, 4, color);
    return Status::kOk;
}

Status ShapePainter::prepareServer(SvgNode& server, EnginePaint& prepared) noexcept {
    if (server.kind() == SvgNodeKind::kSolidColor) {
        return prepareSolidColorPaint(static_cast<SvgSolidColor&>(server), prepared);
    }
    return prepareGradientPaint(static_cast<SvgGradient&>(server), shape_, prepared);
}

void ShapePainter::loadPaintMatrix(const SvgMatrix& matrix, DrawModes mode) noexcept {
    if (matrix.isIdentity()) return;
    loadEngineMatrix(
        mode == DrawModes::kFill ? VG_MATRIX_FILL_PAINT_TO_USER : VG_MATRIX_STROKE_PAINT_TO_USER,
        matrix);
    loadedMatrices_ = with(loadedMatrices_, mode);
}

void ShapePainter::restorePaintMatrices() noexcept {
    if (includes(loadedMatrices_, DrawModes::kFill)) {
        loadEngineMatrix(VG_MATRIX_FILL_PAINT_TO_USER, SvgMatrix());
    }
    if (includes(loadedMatrices_, DrawModes::kStroke)) {
        loadEngineMatrix(VG_MATRIX_STROKE_PAINT_TO_USER, SvgMatrix());
    }
    loadedMatrices_ = DrawModes::kNone;
}

}  // namespace quor
