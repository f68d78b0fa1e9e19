#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "vg/raster/paint/gradient_params.h"

namespace vg::raster {

/// An affine function of pixels: base + perX x + perY y at the centre of column x in row y.
struct PixelPlane {
    double base = 0.0, perX = 0.0, perY = 0.0;

    double at(int32_t x, int32_t y) const noexcept { return base + perX * x + perY * y; }
};

/// The constants of a gradient on the surface, computed once per draw.
struct GradientState {
    const uint32_t* ramp = nullptr;
    Spread spread = Spread::kPad;

    // Linear
    PixelPlane parameter;       ///< in 1 / 65536
    int64_t parameterPerX = 0;  ///< the same, rounded

    // Radial: the place relative to the focus in radii. Conical: the place relative to the centre,
    // turned so that angle 0 points along +u, in a unit of about a pixel.
    PixelPlane u, v;

    // Radial, with e the vector from the centre to the focus, in radii
    PixelPlane dot;      ///< e . (u, v)
    PixelPlane cross;    ///< e x (u, v)
    float scale = 0.0F;  ///< 2^20 / (1 - |e|^2)

    // Conical
    double repeats = 1.0;
    const int32_t* angles = nullptr;
};

/// How a gradient is drawn.
enum class GradientForm {
    kGradient,   ///< with the state
    kLastColor,  ///< in the last stop's colour, the same everywhere
};

/// Fills the state. A linear gradient between coincident points and a radial one without a radius
/// are the colour of their last stop.
GradientForm setupGradient(PaintKind kind, const GradientParams& params,
                           GradientState& state) noexcept;

/// The nearest integer. Values stop where sums of 64 of them are still far inside 64 bits.
inline int64_t toFixedParameter(double value) noexcept {
    constexpr double kLargest = 0x1p52;
    return static_cast<int64_t>(std::floor(std::clamp(value, -kLargest, kLargest) + 0.5));
}

}  // namespace vg::raster
