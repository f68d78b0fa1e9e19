#pragma once

#include <cstdint>

namespace vg::raster {

/// A point in path user space.
struct Point {
    float x;
    float y;
};

/// Closed contours of straight segments. Contour i owns the next contourSizes[i] points; its last
/// point joins its first. Points may be any floats; non-finite ones are left out.
struct Polygon {
    const Point* points = nullptr;
    int32_t pointCount = 0;
    const int32_t* contourSizes = nullptr;
    int32_t contourCount = 0;
};

/// Maps path user space to surface pixels, y upwards: (m00 x + m01 y + m02, m10 x + m11 y + m12).
struct Affine {
    float m00 = 1.0F, m01 = 0.0F, m02 = 0.0F;
    float m10 = 0.0F, m11 = 1.0F, m12 = 0.0F;
};

/// Whole pixels, y upwards, x1 and y1 exclusive; empty when x1 <= x0 or y1 <= y0.
struct PixelRect {
    int32_t x0 = 0, y0 = 0, x1 = 0, y1 = 0;

    bool isEmpty() const noexcept { return x1 <= x0 || y1 <= y0; }
};

/// The values of VGFillRule.
enum class FillRule : int32_t { kEvenOdd = 0x1900, kNonZero = 0x1901 };

/// The values of VGRenderingQuality.
enum class Quality : int32_t {
    kNonAntialiased = 0x1200,  ///< one sample a pixel, in its centre
    kFaster = 0x1201,          ///< two scanlines a pixel row, exact along each
    kBetter = 0x1202,          ///< exact areas
};

}  // namespace vg::raster
