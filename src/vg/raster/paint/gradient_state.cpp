// Turns a gradient in paint space into affine functions of surface pixels, in doubles.

#include "vg/raster/paint/gradient_state.h"

#include "vg/raster/paint/color_ramp.h"
#include "vg/raster/paint/conical_angles.h"

namespace vg::raster {
namespace {

/// x, y and constant: coefficients for the place in paint space of a pixel's centre.
PixelPlane planeOf(const SurfaceToPaint& m, double x, double y, double constant) noexcept {
    PixelPlane plane;
    plane.perX = m.m00 * x + m.m10 * y;
    plane.perY = m.m01 * x + m.m11 * y;
    plane.base = m.m02 * x + m.m12 * y + constant + (plane.perX + plane.perY) * 0.5;
    return plane;
}

/// a * first + b * second.
PixelPlane combine(double a, const PixelPlane& first, double b, const PixelPlane& second) noexcept {
    return {a * first.base + b * second.base, a * first.perX + b * second.perX,
            a * first.perY + b * second.perY};
}

PixelPlane divided(const PixelPlane& plane, double divisor) noexcept {
    return {plane.base / divisor, plane.perX / divisor, plane.perY / divisor};
}

/// The largest absolute value that the plane can have on any surface.
double largestOn(const PixelPlane& plane) noexcept {
    constexpr double kLargestSide = 2048.0;
    return std::fabs(plane.base) + (std::fabs(plane.perX) + std::fabs(plane.perY)) * kLargestSide;
}

GradientForm setupLinear(const GradientParams& params, GradientState& state) noexcept {
    const auto& [start, end] = params.geometry.points;
    const double dx = end[0] - start[0];
    const double dy = end[1] - start[1];
    const double squaredLength = dx * dx + dy * dy;
    if (!(squaredLength > 0.0)) return GradientForm::kLastColor;
    const double x = dx / squaredLength * 0x1p16;
    const double y = dy / squaredLength * 0x1p16;
    state.parameter = planeOf(params.surfaceToPaint, x, y, -(start[0] * x + start[1] * y));
    state.parameterPerX = toFixedParameter(state.parameter.perX);
    return GradientForm::kGradient;
}

/// The parameter of a place p is where the ray from the focus f through p reaches the circle:
///   (dot + sqrt(|p - f|^2 - cross^2)) / (1 - |e|^2)
/// in units of the radius. The focus is kept inside the circle; on it there would be no value.
GradientForm setupRadial(const GradientParams& params, GradientState& state) noexcept {
    constexpr double kFarthestFocus = 0.999;  // in radii
    constexpr double kFarthestPlace = 1e15;   // in radii; squares stay within float
    const double r = params.geometry.radius;
    if (!(r > 0.0)) return GradientForm::kLastColor;
    const auto& [center, focus] = params.geometry.points;
    double ex = (focus[0] - center[0]) / r;
    double ey = (focus[1] - center[1]) / r;
    const double distance = std::sqrt(ex * ex + ey * ey);
    if (distance > kFarthestFocus) {
        ex *= kFarthestFocus / distance;
        ey *= kFarthestFocus / distance;
    }
    const SurfaceToPaint& m = params.surfaceToPaint;
    state.u = planeOf(m, 1.0 / r, 0.0, -(center[0] / r + ex));
    state.v = planeOf(m, 0.0, 1.0 / r, -(center[1] / r + ey));
    // So far out, or with so small a circle, that no pixel is inside.
    if (largestOn(state.u) + largestOn(state.v) > kFarthestPlace) return GradientForm::kLastColor;
    state.dot = combine(ex, state.u, ey, state.v);
    state.cross = combine(ex, state.v, -ey, state.u);
    state.scale = static_cast<float>(0x1p20 / (1.0 - (ex * ex + ey * ey)));
    return GradientForm::kGradient;
}

GradientForm setupConical(const GradientParams& params, GradientState& state) noexcept {
    constexpr double kMostRepeats = 0x1p40;  // products with an angle stay within 64 bits
    constexpr double kFarthestCenter = 1e15;
    const auto& [center, target] = params.geometry.points;
    const double dx = target[0] - center[0];
    const double dy = target[1] - center[1];
    const double length = std::sqrt(dx * dx + dy * dy);
    const double cosine = length > 0.0 ? dx / length : 1.0;
    const double sine = length > 0.0 ? dy / length : 0.0;
    const SurfaceToPaint& m = params.surfaceToPaint;
    state.u = planeOf(m, cosine, sine, -(center[0] * cosine + center[1] * sine));
    state.v = planeOf(m, -sine, cosine, -(center[1] * cosine - center[0] * sine));
    // Only the direction counts, so the unit is chosen for float to hold the values.
    const double unit = std::max({std::fabs(state.u.perX) + std::fabs(state.u.perY),
                                  std::fabs(state.v.perX) + std::fabs(state.v.perY),
                                  std::fabs(state.u.base) / kFarthestCenter,
                                  std::fabs(state.v.base) / kFarthestCenter});
    state.u = divided(state.u, unit);
    state.v = divided(state.v, unit);
    state.repeats = std::clamp(params.geometry.repeats, -kMostRepeats, kMostRepeats);
    state.angles = conicalAngles();
    return GradientForm::kGradient;
}

}  // namespace

GradientForm setupGradient(PaintKind kind, const GradientParams& params,
                           GradientState& state) noexcept {
    state.ramp = params.ramp->pixels;
    state.spread = params.spread;
    switch (kind) {
        case PaintKind::kLinearGradient:
            return setupLinear(params, state);
        case PaintKind::kRadialGradient:
            return setupRadial(params, state);
        case PaintKind::kConicalGradient:
            return setupConical(params, state);
        case PaintKind::kColor:
        case PaintKind::kPattern:
            break;
    }
    return GradientForm::kLastColor;
}

}  // namespace vg::raster
