// Turns a paint object and the context's matrices into what the rasterizer wants: inverse matrix,
// geometry and colour ramp of a gradient, or a texture.

#include "vg/draw/paint_params.h"

#include <algorithm>

#include "vg/context.h"
#include "vg/image/image.h"
#include "vg/paint/inverse_map.h"
#include "vg/paint/paint.h"
#include "vg/raster/paint_setup.h"
#include "vg/surface.h"

namespace vg {
namespace {

/// A pattern without an image, and a type that means nothing, paint in their colour.
raster::PaintKind kindOf(const Paint& paint) noexcept {
    switch (paint.type) {
        case VG_PAINT_TYPE_LINEAR_GRADIENT:
            return raster::PaintKind::kLinearGradient;
        case VG_PAINT_TYPE_RADIAL_GRADIENT:
            return raster::PaintKind::kRadialGradient;
        case VG_PAINT_TYPE_CONICAL_GRADIENT_KRN:
            return raster::PaintKind::kConicalGradient;
        case VG_PAINT_TYPE_PATTERN:
            return paint.pattern != nullptr ? raster::PaintKind::kPattern
                                            : raster::PaintKind::kColor;
        default:
            return raster::PaintKind::kColor;
    }
}

AffineMap paintToSurface(Context& context, const PaintUse& use) noexcept {
    const VGMatrixMode paintMatrix =
        use.mode == VG_FILL_PATH ? VG_MATRIX_FILL_PAINT_TO_USER : VG_MATRIX_STROKE_PAINT_TO_USER;
    return multiply(AffineMap(context.matrix(use.userMatrix)),
                    AffineMap(context.matrix(paintMatrix)));
}

raster::GradientGeometry geometryOf(const Paint& paint, raster::PaintKind kind) noexcept {
    raster::GradientGeometry geometry;
    const float* values = paint.linearGradient;
    if (kind == raster::PaintKind::kRadialGradient) {
        values = paint.radialGradient;
        geometry.radius = values[4];
    } else if (kind == raster::PaintKind::kConicalGradient) {
        values = paint.conicalGradient;
        geometry.repeats = values[4];
    }
    for (int i = 0; i < 4; ++i) geometry.points[i / 2][i % 2] = values[i];
    return geometry;
}

RampKey rampKeyOf(const Context& context, const Surface& surface, const Paint& paint,
                  raster::PaintKind kind, const PaintUse& use) noexcept {
    RampKey key;
    // A conical gradient turns back in its index.
    key.isMirrored = paint.spreadMode == VG_COLOR_RAMP_SPREAD_REFLECT &&
                     kind != raster::PaintKind::kConicalGradient;
    key.isSmooth = paint.interpolation == VG_COLOR_RAMP_INTERPOLATION_SMOOTH_KRN;
    key.interpolatesPremultiplied = paint.interpolatesPremultiplied;
    key.isLinearSpace = surface.isLinear();
    key.isPremultiplied = raster::takesPremultipliedPaint(surface.format, use.imageMode);
    if (use.transformsColors) {
        std::copy_n(context.effectiveColorTransform.values, 8, key.colorTransform);
    }
    return key;
}

/// Of PaintParams or TextureParams.
template <class Params>
void setupColorTransform(const Context& context, Params& params) noexcept {
    params.colorTransformEnabled = context.colorTransformEnabled;
    std::copy_n(context.effectiveColorTransform.values, 8, params.colorTransform);
}

PaintSetup setupGradient(Context& context, const Surface& surface, Paint& paint,
                         const PaintUse& use, raster::PaintParams& params) noexcept {
    raster::GradientParams& gradient = params.gradient;
    if (!invert(paintToSurface(context, use), gradient.surfaceToPaint)) {
        return PaintSetup::kDrawsNothing;
    }
    gradient.spread = static_cast<raster::Spread>(paint.spreadMode);
    gradient.geometry = geometryOf(paint, params.kind);
    gradient.ramp =
        paint.ramps.find(paint.stops, rampKeyOf(context, surface, paint, params.kind, use));
    return gradient.ramp != nullptr ? PaintSetup::kReady : PaintSetup::kOutOfMemory;
}

/// One unit of paint space to a pixel of the image.
PaintSetup setupPattern(Context& context, const Paint& paint, const PaintUse& use,
                        raster::TextureParams& pattern) noexcept {
    if (!invert(paintToSurface(context, use), pattern.surfaceToTexture)) {
        return PaintSetup::kDrawsNothing;
    }
    setupTexture(context, *paint.pattern, use.transformsColors, pattern);
    pattern.tiling = static_cast<raster::TilingMode>(paint.tilingMode);
    std::copy_n(context.tileFillColor, 4, pattern.tileFill);
    return PaintSetup::kReady;
}

}  // namespace

void setupTexture(const Context& context, const Image& image, bool transformsColors,
                  raster::TextureParams& texture) noexcept {
    texture.image = image.sampled();
    texture.quality = image.limitQuality(context.imageQuality);
    if (transformsColors) setupColorTransform(context, texture);
}

PaintSetup setupPaintParams(Context& context, const Surface& surface, const PaintUse& use,
                            raster::PaintParams& params) noexcept {
    Paint* paint = use.mode == VG_FILL_PATH ? context.fillPaint : context.strokePaint;
    params.kind = paint != nullptr ? kindOf(*paint) : raster::PaintKind::kColor;
    switch (params.kind) {
        case raster::PaintKind::kColor:
            if (paint != nullptr) std::copy_n(paint->color, 4, params.color);
            if (use.transformsColors) setupColorTransform(context, params);
            return PaintSetup::kReady;
        case raster::PaintKind::kPattern:
            return setupPattern(context, *paint, use, params.pattern);
        default:
            return setupGradient(context, surface, *paint, use, params);
    }
}

}  // namespace vg
