#pragma once

#include <cstdint>

#include "base/array.h"

namespace vg::raster {

// Surface coordinates are unsigned 16-bit integers with 5 fractional bits, y upwards.

inline constexpr int32_t kSubpixelBits = 5;
inline constexpr int32_t kSubpixels = 1 << kSubpixelBits;  ///< per pixel
inline constexpr int32_t kSubpixelMask = kSubpixels - 1;

/// The largest coordinate: 2047 pixels. On a side of 2048 pixels the outermost column and the top
/// row lie beyond it; only clears reach them.
inline constexpr int32_t kMaxCoordinate = 0xFFE0;

/// Pixel rows that coordinates can lie in, the border y = kMaxCoordinate included.
inline constexpr int32_t kRowCount = (kMaxCoordinate >> kSubpixelBits) + 1;

constexpr int32_t pixelOf(int32_t coordinate) noexcept { return coordinate >> kSubpixelBits; }
constexpr int32_t fractionOf(int32_t coordinate) noexcept { return coordinate & kSubpixelMask; }

struct FixedPoint {
    uint16_t x;
    uint16_t y;
};

/// Closed contours in surface coordinates, all inside the clip.
struct FixedPolygon {
    base::Array<FixedPoint> points;
    base::Array<int32_t> contourSizes;  ///< points of each contour

    void clear() noexcept {
        points.clear();
        contourSizes.clear();
    }
};

/// The smallest box that holds some points, both ends included.
struct FixedBox {
    int32_t minX, minY, maxX, maxY;
};

}  // namespace vg::raster
