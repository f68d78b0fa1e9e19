#pragma once

#include "vg/raster/coverage_row.h"

namespace vg::raster {

// What an edge adds to a coverage row where it crosses a sample line. `sign` is 1 for a left edge
// and -1, modulo 2^32, for a right one. kFractions has bit f for a line at f/32 of each row.

/// One sample line per pixel row, through the centres. A pixel whose centre lies on an edge
/// belongs to what is to the right of the edge.
struct CentreSample {
    static constexpr uint32_t kFractions = 1U << 16;

    static int32_t columnOf(int32_t x) noexcept {
        return pixelOf(x) + (fractionOf(x) > 16 ? 1 : 0);
    }

    static void add(CoverageRow& row, int32_t x, uint32_t sign) noexcept {
        const int32_t column = columnOf(x);
        row.add(column, kFullCoverage * sign);
        row.touch(column << kSubpixelBits, column << kSubpixelBits);
    }
};

/// Two sample lines per pixel row, half a row each, with exact horizontal coverage.
struct HalfRowSample {
    static constexpr uint32_t kFractions = 1U << 24 | 1U << 8;

    static void add(CoverageRow& row, int32_t x, uint32_t sign) noexcept {
        const auto fraction = static_cast<uint32_t>(fractionOf(x));
        row.add(pixelOf(x), (32 - fraction) * (1U << 24) * sign);
        row.add(pixelOf(x) + 1, fraction * (1U << 24) * sign);
        row.touch(x, x);
    }
};

inline constexpr uint32_t kPlus = 1;
inline constexpr uint32_t kMinus = 0xFFFFFFFF;

}  // namespace vg::raster
