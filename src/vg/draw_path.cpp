#include "vg/draw_path.h"

#include <algorithm>
#include <cmath>

#include "vg/context.h"
#include "vg/paint_params.h"
#include "vg/path.h"
#include "vg/path_query.h"
#include "vg/raster/rasterizer.h"
#include "vg/surface.h"
#include "vg/vg.h"

namespace vg {
namespace {

/// One call of vgDrawPath.
struct DrawCall {
    Context& context;
    Surface& surface;
    Path& path;
    VGbitfield modes;
};

raster::Affine pathMatrix(Context& context) noexcept {
    const auto& m = context.matrix(VG_MATRIX_PATH_USER_TO_SURFACE).value.m;
    return {m[0][0], m[0][1], m[0][2], m[1][0], m[1][1], m[1][2]};
}

int32_t pixelExtent(float low, float high) noexcept {
    constexpr double kLimit = 1e9;  // beyond any surface, within an integer
    const double floored = std::clamp(std::floor(static_cast<double>(low)), -kLimit, kLimit);
    const double ceiled = std::clamp(std::ceil(static_cast<double>(high)), -kLimit, kLimit);
    return static_cast<int32_t>(ceiled - floored);
}

/// The tolerance of this draw, kept in the context.
const FlatteningTolerance& updateTolerance(const DrawCall& call) noexcept {
    Context& context = call.context;
    UserMatrix& matrix = context.matrix(VG_MATRIX_PATH_USER_TO_SURFACE);
    matrix.update();
    StrokeTolerance stroke;
    const bool dependsOnStroke =
        (call.modes & VG_STROKE_PATH) != 0 && context.stroke.halfWidth > 1.0F;
    if (dependsOnStroke) {
        const PathBox box = transformedPathBounds(call.path, matrix.value);
        stroke.halfWidth = context.stroke.halfWidth;
        stroke.isDashed = context.stroke.dashTotal > 0.0F;
        stroke.boundsWidth = pixelExtent(box.minX, box.maxX);
        stroke.boundsHeight = pixelExtent(box.minY, box.maxY);
    }
    context.tolerance.set(drawTolerance(context.configuration.curvesTolerance, matrix.scales[0],
                                        dependsOnStroke ? &stroke : nullptr));
    return context.tolerance;
}

raster::FillParams commonParams(const DrawCall& call) noexcept {
    raster::FillParams params;
    params.userToSurface = pathMatrix(call.context);
    params.quality = static_cast<raster::Quality>(call.context.renderingQuality);
    params.surface = call.surface.view();
    params.clip = {0, 0, call.surface.width, call.surface.height};
    return params;
}

/// Fills with the paint of the mode. False when memory runs out.
bool fillWith(const DrawCall& call, VGPaintMode mode, raster::FillParams& params) noexcept {
    switch (setupPaintParams(call.context, call.surface, mode, params.paint)) {
        case PaintSetup::kReady:
            return call.context.rasterizer.fill(params);
        case PaintSetup::kDrawsNothing:
            return true;
        case PaintSetup::kOutOfMemory:
            break;
    }
    return false;
}

bool drawFill(const DrawCall& call, const FlattenedPath& flattened) noexcept {
    raster::FillParams params = commonParams(call);
    params.polygon = flattened.polygon();
    params.fillRule = static_cast<raster::FillRule>(call.context.fillRule);
    params.blendMode = call.context.fillBlendMode;
    return fillWith(call, VG_FILL_PATH, params);
}

StrokeParams strokeParams(const Context& context) noexcept {
    const StrokeState& state = context.stroke;
    StrokeParams params;
    params.halfWidth = state.halfWidth;
    params.startCap = state.startCap;
    params.endCap = state.endCap;
    params.join = state.join;
    params.miterLengthSquared = state.miterLengthSquared;
    params.flatness = context.tolerance.radius;
    params.dashes = state.effectiveDashes.data();
    params.dashCount = state.effectiveDashes.count();
    params.dashTotal = state.dashTotal;
    params.dashPhase = state.dashPhase;
    params.dashPhaseReset = state.dashPhaseReset;
    return params;
}

/// Strokes are made in user space, carried to the surface by the path matrix, and filled with the
/// non-zero rule whatever the fill rule is.
bool drawStroke(const DrawCall& call, const FlattenedPath& flattened) noexcept {
    Context& context = call.context;
    StrokeOutline& outline = context.strokeOutline;
    if (!context.stroker.stroke(flattened, strokeParams(context), outline)) return false;
    raster::FillParams params = commonParams(call);
    params.polygon = outline.polygon();
    params.fillRule = raster::FillRule::kNonZero;
    params.blendMode = context.strokeBlendMode;
    return fillWith(call, VG_STROKE_PATH, params);
}

/// Steps that were done before memory ran out are not done again.
struct DrawProgress {
    bool filled = false;
    bool stroked = false;
};

bool draw(const DrawCall& call, DrawProgress& progress) noexcept {
    const FlattenedPath* flattened = flattenedPath(call.path, updateTolerance(call));
    if (flattened == nullptr) return false;
    if ((call.modes & VG_FILL_PATH) != 0 && !progress.filled) {
        if (!drawFill(call, *flattened)) return false;
        progress.filled = true;
    }
    if ((call.modes & VG_STROKE_PATH) != 0 && !progress.stroked) {
        if (!drawStroke(call, *flattened)) return false;
        progress.stroked = true;
    }
    return true;
}

}  // namespace

bool drawPath(Context& context, Surface& surface, Path& path, VGbitfield paintModes) noexcept {
    DrawProgress progress;
    return draw({context, surface, path, paintModes}, progress);
}

}  // namespace vg

void vgDrawPath(VGPath handle, VGbitfield paintModes) {
    vg::Context* context = vg::currentPair();
    if (context == nullptr) return;
    vg::Path* path = context->findPath(handle);
    if (path == nullptr) return context->raise(VG_BAD_HANDLE_ERROR);
    constexpr VGbitfield kModes = VG_STROKE_PATH | VG_FILL_PATH;
    if (paintModes == 0 || (paintModes & ~kModes) != 0) {
        return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    }
    const vg::DrawCall call = {*context, *vg::currentSurface(), *path, paintModes};
    vg::DrawProgress progress;
    if (vg::draw(call, progress)) return;
    context->recoverMemory();
    if (!vg::draw(call, progress)) context->raise(VG_OUT_OF_MEMORY_ERROR);
}
