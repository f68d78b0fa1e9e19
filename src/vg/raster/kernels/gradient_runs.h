#pragma once

#include <cstdint>

#include "vg/raster/kernels/gradient_spreads.h"

namespace vg::raster {

// What the kernels of gradients work on: pixels along a row, and entries of a colour ramp.

/// Parameters in 16.16 fixed point: `first`, and `step` more for every pixel. They stay far inside
/// 64 bits.
struct LinearRun {
    const uint32_t* ramp;
    Spread spread;
    int64_t first, step;
};

/// A value along one row, in single precision.
struct RowLine {
    float start = 0.0F, step = 0.0F;

    [[gnu::always_inline]] float at(float k) const noexcept { return start + k * step; }
};

/// Parameters in 12.20 fixed point: (dot + sqrt(u u + v v - cross cross)) * scale, at step `first`
/// and those that follow.
struct RadialRun {
    const uint32_t* ramp;
    Spread spread;
    int32_t first;
    RowLine u, v, dot, cross;
    float scale;
};

/// How the colours of a ramp come about, and what surface it is for.
struct RampOptions {
    bool isMirrored = false;  ///< there and back: offsets 0 to 1 and on to 2
    bool isSmooth = false;    ///< a cubic Hermite spline through the stops
    bool interpolatesPremultiplied = false;
    bool isLinearSpace = false;             ///< the surface holds linear colours
    bool isPremultiplied = true;            ///< the pixels are
    const float* colorTransform = nullptr;  ///< four scales, four biases; null: none
};

/// One channel between two stops.
struct RampCurve {
    float start, end;
    float startSlope, endSlope;  ///< of the smooth ramp, over the whole distance
};

inline constexpr float kLastRampEntry = 1023.0F;

/// Some entries of a ramp that lie between two stops. Entry i is at i * span / kLastRampEntry.
struct RampRun {
    int32_t first, end;
    float span;
    float offset, distance;  ///< of the first stop; from there to the second, more than 0
    RampCurve channels[4];   ///< red, green, blue, alpha
};

}  // namespace vg::raster
