// Transforms in floats, a point at a time without a branch; only when a point lies outside are the
// contours clipped one by one.

#include "vg/raster/geometry/to_fixed.h"

#include <algorithm>

namespace vg::raster {
namespace {

/// Rounding by the exponent: added to a float in 0..2^22, it leaves no bits for a fraction, so the
/// sum is rounded to the nearest integer, ties to even, whatever the compiler's instructions.
constexpr float kRoundingBias = 8388608.0F;  // 2^23

uint16_t roundToFixed(float coordinate) noexcept {
    return static_cast<uint16_t>((coordinate + kRoundingBias) - kRoundingBias);
}

ClipLimits limitsOf(const PixelRect& clip) noexcept {
    return {clip.x0 * kSubpixels, clip.y0 * kSubpixels,
            std::min(clip.x1 * kSubpixels, kMaxCoordinate),
            std::min(clip.y1 * kSubpixels, kMaxCoordinate)};
}

bool isEmpty(const ClipLimits& limits) noexcept {
    return limits.minX >= limits.maxX || limits.minY >= limits.maxY;
}

struct Extent {
    float minX, minY, maxX, maxY;

    /// False when nothing of a contour with this extent can lie inside, and for NaN.
    bool touches(const ClipLimits& limits) const noexcept {
        return maxX >= static_cast<float>(limits.minX) && minX <= static_cast<float>(limits.maxX) &&
               maxY >= static_cast<float>(limits.minY) && minY <= static_cast<float>(limits.maxY);
    }
};

Extent extentOf(const Point* points, int32_t count) noexcept {
    Extent extent = {points[0].x, points[0].y, points[0].x, points[0].y};
    for (int32_t i = 1; i < count; ++i) {
        extent.minX = std::min(extent.minX, points[i].x);
        extent.minY = std::min(extent.minY, points[i].y);
        extent.maxX = std::max(extent.maxX, points[i].x);
        extent.maxY = std::max(extent.maxY, points[i].y);
    }
    return extent;
}

bool areFinite(const Point* points, int32_t count) noexcept {
    float zero = 0.0F;  // stays 0 unless a NaN or an infinity comes along
    for (int32_t i = 0; i < count; ++i) zero += points[i].x * 0.0F + points[i].y * 0.0F;
    return zero == 0.0F;
}

}  // namespace

bool FixedTransform::run(const Polygon& polygon, const Affine& userToSurface, const PixelRect& clip,
                         FixedPolygon& fixed) noexcept {
    fixed.clear();
    const ClipLimits limits = limitsOf(clip);
    wasClipped_ = isEmpty(limits);
    if (wasClipped_ || polygon.pointCount == 0) return true;
    if (!scaled_.resize(polygon.pointCount)) return false;
    wasClipped_ = !transform(polygon, userToSurface, limits);
    return wasClipped_ ? clipContours(polygon, limits, fixed) : roundAll(polygon, fixed);
}

bool FixedTransform::transform(const Polygon& polygon, const Affine& m,
                               const ClipLimits& limits) noexcept {
    constexpr auto kScale = static_cast<float>(kSubpixels);
    const float m00 = m.m00 * kScale, m01 = m.m01 * kScale, m02 = m.m02 * kScale;
    const float m10 = m.m10 * kScale, m11 = m.m11 * kScale, m12 = m.m12 * kScale;
    const auto minX = static_cast<float>(limits.minX), maxX = static_cast<float>(limits.maxX);
    const auto minY = static_cast<float>(limits.minY), maxY = static_cast<float>(limits.maxY);
    const Point* source = polygon.points;
    Point* scaled = scaled_.data();
    uint32_t isInside = 1;  // NaN compares false, so it counts as outside
    for (int32_t i = 0; i < polygon.pointCount; ++i) {
        const float x = m00 * source[i].x + m01 * source[i].y + m02;
        const float y = m10 * source[i].x + m11 * source[i].y + m12;
        scaled[i] = {x, y};
        isInside &= static_cast<uint32_t>(x >= minX) & static_cast<uint32_t>(x <= maxX) &
                    static_cast<uint32_t>(y >= minY) & static_cast<uint32_t>(y <= maxY);
    }
    return isInside != 0;
}

bool FixedTransform::roundAll(const Polygon& polygon, FixedPolygon& fixed) noexcept {
    if (!fixed.points.resize(polygon.pointCount)) return false;
    if (!fixed.contourSizes.resize(polygon.contourCount)) return false;
    FixedPoint* rounded = fixed.points.data();
    const Point* scaled = scaled_.data();
    for (int32_t i = 0; i < polygon.pointCount; ++i) {
        rounded[i] = {roundToFixed(scaled[i].x), roundToFixed(scaled[i].y)};
    }
    std::copy_n(polygon.contourSizes, polygon.contourCount, fixed.contourSizes.data());
    return true;
}

bool FixedTransform::clipContours(const Polygon& polygon, const ClipLimits& limits,
                                  FixedPolygon& fixed) noexcept {
    const Point* contour = scaled_.data();
    for (int32_t i = 0; i < polygon.contourCount; ++i) {
        const int32_t size = polygon.contourSizes[i];
        // Trivial rejection: a contour wholly beyond one border winds around nothing inside.
        const bool mayTouch =
            size > 0 && (!areFinite(contour, size) || extentOf(contour, size).touches(limits));
        if (mayTouch && !clipper_.clipContour(contour, size, limits, fixed)) return false;
        contour += size;
    }
    return true;
}

void FixedTransform::shrinkToFit() noexcept {
    scaled_.shrinkToFit();
    clipper_.shrinkToFit();
}

}  // namespace vg::raster
