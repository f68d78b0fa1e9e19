// Draws a path: the tolerance from the matrix, then for the fill and for the stroke the polygon
// (kept or made), the paint, and the rasterizer by way of the path's band cache.

#include "vg/draw/draw_path.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "vg/context.h"
#include "vg/draw/paint_params.h"
#include "vg/draw/path_cache.h"
#include "vg/draw/scissored_fill.h"
#include "vg/path/path.h"
#include "vg/surface.h"
#include "vg/vg.h"

namespace vg {
namespace {

/// One call of vgDrawPath. The path has its cache.
struct DrawCall {
    Context& context;
    Surface& surface;
    Path& path;
    VGbitfield modes;

    PathCache& cache() const noexcept { return *cacheOf(path); }
};

/// What is filled: the path or its stroke.
struct Shape {
    DrawOutline outline;
    raster::BandCache& bands;
};

raster::Affine pathMatrix(Context& context) noexcept {
    const auto& m = context.matrix(VG_MATRIX_PATH_USER_TO_SURFACE).m;
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
    const Matrix3& matrix = context.matrix(VG_MATRIX_PATH_USER_TO_SURFACE);
    StrokeTolerance stroke;
    const bool dependsOnStroke =
        (call.modes & VG_STROKE_PATH) != 0 && context.stroke.halfWidth > 1.0F;
    if (dependsOnStroke) {
        const PathBox box = call.cache().boundsUnder(call.path, matrix);
        stroke.halfWidth = context.stroke.halfWidth;
        stroke.isDashed = context.stroke.dashTotal > 0.0F;
        stroke.boundsWidth = pixelExtent(box.minX, box.maxX);
        stroke.boundsHeight = pixelExtent(box.minY, box.maxY);
    }
    context.tolerance.set(drawTolerance(context.configuration.curvesTolerance, largestScale(matrix),
                                        dependsOnStroke ? &stroke : nullptr));
    return context.tolerance;
}

raster::BandCacheRules bandCacheRules(const Context& context) noexcept {
    const Configuration& settings = context.configuration;
    const bool allowSnap = context.renderingQuality == VG_RENDERING_QUALITY_BETTER
                               ? settings.allowVerticalSnapBetter
                           : context.renderingQuality == VG_RENDERING_QUALITY_FASTER
                               ? settings.allowVerticalSnapFaster
                               : settings.allowVerticalSnapNonAntialiased;
    return {settings.maxCachingBoxWidth, settings.maxCachingBoxHeight, allowSnap};
}

/// Bands are neither recorded nor replayed while there is a scissor. False when memory runs out.
bool fillShape(const DrawCall& call, const Shape& shape, raster::FillParams& params) noexcept {
    Context& context = call.context;
    if (context.scissoring || shape.outline.serial == 0) {
        return fillScissored(context, call.surface, params);
    }
    params.clip = {0, 0, call.surface.width, call.surface.height};
    return shape.bands.draw(context.rasterizer, params, shape.outline.serial,
                            bandCacheRules(context));
}

/// Fills the shape with the paint of the mode. False when memory runs out.
bool paintShape(const DrawCall& call, VGPaintMode mode, const Shape& shape,
                raster::FillParams& params) noexcept {
    params.polygon = shape.outline.polygon;
    params.userToSurface = pathMatrix(call.context);
    params.quality = static_cast<raster::Quality>(call.context.renderingQuality);
    params.surface = call.surface.drawTarget();
    params.mask = activeMask(call.context, call.surface);
    switch (setupPaintParams(call.context, call.surface, mode, params.paint)) {
        case PaintSetup::kReady:
            return fillShape(call, shape, params);
        case PaintSetup::kDrawsNothing:
            return true;
        case PaintSetup::kOutOfMemory:
            break;
    }
    return false;
}

/// The path as segments. False when memory runs out.
bool findFill(const DrawCall& call, const FlatteningTolerance& tolerance,
              DrawOutline& outline) noexcept {
    const KeptFlattening* const flattening = call.cache().flatten(call.path, tolerance);
    if (flattening == nullptr) return false;
    outline = {flattening->outline.polygon(), flattening->serial};
    return true;
}

bool drawFill(const DrawCall& call, const FlatteningTolerance& tolerance) noexcept {
    Shape shape = {{}, call.cache().fillBands};
    if (!findFill(call, tolerance, shape.outline)) return false;
    raster::FillParams params;
    params.fillRule = static_cast<raster::FillRule>(call.context.fillRule);
    params.blendMode = call.context.fillBlendMode;
    return paintShape(call, VG_FILL_PATH, shape, params);
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

/// The outline of the stroke, in user space: kept from an earlier draw, or made and, unless it is
/// too large, kept. False when memory runs out.
bool findStroke(const DrawCall& call, const FlatteningTolerance& tolerance,
                DrawOutline& result) noexcept {
    PathCache& cache = call.cache();
    const StrokeParams params = strokeParams(call.context);
    const KeptStroke* kept = cache.findStroke(params, tolerance.squared);
    Outline& outline = call.context.strokeOutline;
    if (kept == nullptr) {
        if (!call.context.stroker.stroke(call.path, params, outline)) return false;
        kept = cache.keepStroke(params, tolerance.squared, outline);
    }
    result.polygon = kept != nullptr ? kept->outline.polygon() : outline.polygon();
    result.serial = kept != nullptr ? kept->serial : 0;
    return true;
}

/// Strokes are made in user space, carried to the surface by the path matrix, and filled with the
/// non-zero rule whatever the fill rule is.
bool drawStroke(const DrawCall& call, const FlatteningTolerance& tolerance) noexcept {
    Shape shape = {{}, call.cache().strokeBands};
    if (!findStroke(call, tolerance, shape.outline)) return false;
    raster::FillParams params;
    params.fillRule = raster::FillRule::kNonZero;
    params.blendMode = call.context.strokeBlendMode;
    return paintShape(call, VG_STROKE_PATH, shape, params);
}

bool draw(const DrawCall& call, DrawProgress& progress) noexcept {
    if (!ensureCache(call.path)) return false;
    const FlatteningTolerance& tolerance = updateTolerance(call);
    if ((call.modes & VG_FILL_PATH) != 0 && !progress.filled) {
        if (!drawFill(call, tolerance)) return false;
        progress.filled = true;
    }
    if ((call.modes & VG_STROKE_PATH) != 0 && !progress.stroked) {
        if (!drawStroke(call, tolerance)) return false;
        progress.stroked = true;
    }
    return true;
}

}  // namespace

bool findOutline(Context& context, Surface& surface, Path& path, VGbitfield paintModes,
                 VGPaintMode mode, DrawOutline& outline) noexcept {
    if (!ensureCache(path)) return false;
    const DrawCall call = {context, surface, path, paintModes};
    const FlatteningTolerance& tolerance = updateTolerance(call);
    return mode == VG_FILL_PATH ? findFill(call, tolerance, outline)
                                : findStroke(call, tolerance, outline);
}

bool drawPath(Context& context, Surface& surface, Path& path, VGbitfield paintModes,
              DrawProgress& progress) noexcept {
    assert((paintModes & (VG_FILL_PATH | VG_STROKE_PATH)) == paintModes && paintModes != 0);
    return draw({context, surface, path, paintModes}, progress);
}

}  // namespace vg
