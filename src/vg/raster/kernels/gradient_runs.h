#pragma once

#include <cstdint>

#include "vg/raster/kernels/gradient_spreads.h"

namespace vg::raster {

// Some pixels of a gradient along a row, for the kernels.

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

}  // namespace vg::raster
