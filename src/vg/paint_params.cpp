#include "vg/paint_params.h"

#include <algorithm>
#include <cmath>

#include "vg/affine_map.h"
#include "vg/context.h"
#include "vg/paint.h"
#include "vg/raster/paint_setup.h"
#include "vg/surface.h"

namespace vg {
namespace {

/// A pattern without an image, and a type that means nothing, paint in their colour.
raster::PaintKind kindOf(VGint paintType) noexcept {
    switch (paintType) {
        case VG_PAINT_TYPE_LINEAR_GRADIENT:
            return raster::PaintKind::kLinearGradient;
        case VG_PAINT_TYPE_RADIAL_GRADIENT:
            return raster::PaintKind::kRadialGradient;
        case VG_PAINT_TYPE_CONICAL_GRADIENT_KRN:
            return raster::PaintKind::kConicalGradient;
        default:
            return raster::PaintKind::kColor;
    }
}

/// a * b: b applies first.
AffineMap multiply(const AffineMap& a, const AffineMap& b) noexcept {
    AffineMap product;
    product.m00 = a.m00 * b.m00 + a.m01 * b.m10;
    product.m01 = a.m00 * b.m01 + a.m01 * b.m11;
    product.m02 = a.m00 * b.m02 + a.m01 * b.m12 + a.m02;
    product.m10 = a.m10 * b.m00 + a.m11 * b.m10;
    product.m11 = a.m10 * b.m01 + a.m11 * b.m11;
    product.m12 = a.m10 * b.m02 + a.m11 * b.m12 + a.m12;
    return product;
}

/// False without an inverse. A determinant that is nothing but the rounding of its two products
/// counts as 0. Products of floats, and quotients of those, stay within double.
bool invert(const AffineMap& map, raster::SurfaceToPaint& inverse) noexcept {
    constexpr double kRounding = 1e-14;
    const double determinant = map.determinant();
    const double size = std::fabs(map.m00 * map.m11) + std::fabs(map.m01 * map.m10);
    if (!(std::fabs(determinant) > kRounding * size)) return false;
    inverse.m00 = map.m11 / determinant;
    inverse.m01 = -map.m01 / determinant;
    inverse.m02 = (map.m01 * map.m12 - map.m11 * map.m02) / determinant;
    inverse.m10 = -map.m10 / determinant;
    inverse.m11 = map.m00 / determinant;
    inverse.m12 = (map.m10 * map.m02 - map.m00 * map.m12) / determinant;
    for (const double entry :
         {inverse.m00, inverse.m01, inverse.m02, inverse.m10, inverse.m11, inverse.m12}) {
        if (!(std::fabs(entry) <= raster::SurfaceToPaint::kLargestEntry)) return false;
    }
    return true;
}

bool setupMapping(Context& context, VGPaintMode mode, raster::SurfaceToPaint& inverse) noexcept {
    const VGMatrixMode paintMatrix =
        mode == VG_FILL_PATH ? VG_MATRIX_FILL_PAINT_TO_USER : VG_MATRIX_STROKE_PAINT_TO_USER;
    const AffineMap userToSurface(context.matrix(VG_MATRIX_PATH_USER_TO_SURFACE).value);
    const AffineMap paintToUser(context.matrix(paintMatrix).value);
    return invert(multiply(userToSurface, paintToUser), inverse);
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
                  raster::PaintKind kind) noexcept {
    RampKey key;
    // A conical gradient turns back in its index.
    key.isMirrored = paint.spreadMode == VG_COLOR_RAMP_SPREAD_REFLECT &&
                     kind != raster::PaintKind::kConicalGradient;
    key.isSmooth = paint.interpolation == VG_COLOR_RAMP_INTERPOLATION_SMOOTH_KRN;
    key.interpolatesPremultiplied = paint.interpolatesPremultiplied;
    key.isLinearSpace = surface.isLinear();
    key.isPremultiplied = raster::takesPremultipliedPaint(surface.format, raster::ImageMode::kNone);
    std::copy_n(context.effectiveColorTransform.values, 8, key.colorTransform);
    return key;
}

void setupColor(const Context& context, const Paint* paint, raster::PaintParams& params) noexcept {
    if (paint != nullptr) std::copy_n(paint->color, 4, params.color);
    params.colorTransformEnabled = context.colorTransformEnabled;
    std::copy_n(context.effectiveColorTransform.values, 8, params.colorTransform);
}

}  // namespace

PaintSetup setupPaintParams(Context& context, const Surface& surface, VGPaintMode mode,
                            raster::PaintParams& params) noexcept {
    Paint* paint = mode == VG_FILL_PATH ? context.fillPaint : context.strokePaint;
    params.kind = paint != nullptr ? kindOf(paint->type) : raster::PaintKind::kColor;
    if (params.kind == raster::PaintKind::kColor) {
        setupColor(context, paint, params);
        return PaintSetup::kReady;
    }
    raster::GradientParams& gradient = params.gradient;
    if (!setupMapping(context, mode, gradient.surfaceToPaint)) return PaintSetup::kDrawsNothing;
    gradient.spread = static_cast<raster::Spread>(paint->spreadMode);
    gradient.geometry = geometryOf(*paint, params.kind);
    gradient.ramp =
        paint->ramps.find(paint->stops, rampKeyOf(context, surface, *paint, params.kind));
    return gradient.ramp != nullptr ? PaintSetup::kReady : PaintSetup::kOutOfMemory;
}

}  // namespace vg
