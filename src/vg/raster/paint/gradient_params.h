#pragma once

#include <cstdint>

#include "vg/raster/kernels/gradient_spreads.h"

namespace vg::raster {

struct ColorRamp;

enum class PaintKind : uint8_t {
    kColor,
    kLinearGradient,
    kRadialGradient,
    kConicalGradient,
    kPattern,
};

/// A gradient in paint space; entries are floats as set by the application, and finite.
///
/// linear   points[0] to points[1]
/// radial   points[0] the centre, points[1] the focus, radius
/// conical  points[0] the centre, points[1] where angle 0 points to, repeats
struct GradientGeometry {
    double points[2][2] = {{0, 0}, {1, 0}};  ///< x, y each
    double radius = 1.0;
    double repeats = 1.0;
};

/// The affine map from surface pixels, y upwards, to paint space:
/// (m00 x + m01 y + m02, m10 x + m11 y + m12).
struct SurfaceToPaint {
    /// No entry is larger, so that what is computed from them stays far inside double.
    static constexpr double kLargestEntry = 1e100;

    double m00 = 1.0, m01 = 0.0, m02 = 0.0;
    double m10 = 0.0, m11 = 1.0, m12 = 0.0;
};

/// A gradient paint as the rasterizer takes it.
struct GradientParams {
    Spread spread = Spread::kPad;
    GradientGeometry geometry;
    SurfaceToPaint surfaceToPaint;
    /// The pixels along the gradient: mirrored for a reflected linear or radial one.
    const ColorRamp* ramp = nullptr;
};

}  // namespace vg::raster
