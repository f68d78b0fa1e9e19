#pragma once

#include <cstdint>

#include "vg/raster/geometry/fixed.h"

namespace vg::raster {

// The scanlines that edges are intersected with. kFractions has bit f for a line at f/32 of each
// row.

/// One scanline per pixel row, through the centres. A pixel whose centre lies on an edge
/// belongs to what is to the right of the edge.
struct CentreSample {
    static constexpr uint32_t kFractions = 1U << 16;

    static int32_t columnOf(int32_t x) noexcept {
        return pixelOf(x) + (fractionOf(x) > 16 ? 1 : 0);
    }
};

/// Two scanlines per pixel row, half a row each, with exact horizontal coverage.
struct HalfRowSample {
    static constexpr uint32_t kFractions = 1U << 24 | 1U << 8;
};

/// What a left and a right edge multiply coverage with, modulo 2^32.
inline constexpr uint32_t kPlus = 1;
inline constexpr uint32_t kMinus = 0xFFFFFFFF;

}  // namespace vg::raster
