// Recognises rectangles by their four corners, so that they need no sweep.

#include "vg/raster/geometry/aligned_rectangle.h"

#include <algorithm>

namespace vg::raster {
namespace {

bool isAligned(const FixedPoint& point) noexcept {
    return fractionOf(point.x) == 0 && fractionOf(point.y) == 0;
}

}  // namespace

bool isAlignedRectangle(const FixedPolygon& polygon, PixelRect& rect) noexcept {
    if (polygon.contourSizes.count() != 1 || polygon.points.count() != 4) return false;
    const FixedPoint* p = polygon.points.data();
    if (!std::all_of(p, p + 4, isAligned)) return false;
    // Sides alternate between the axes, starting with either.
    const bool startsAcross =
        p[0].y == p[1].y && p[1].x == p[2].x && p[2].y == p[3].y && p[3].x == p[0].x;
    const bool startsDown =
        p[0].x == p[1].x && p[1].y == p[2].y && p[2].x == p[3].x && p[3].y == p[0].y;
    if (!startsAcross && !startsDown) return false;
    const auto [left, right] = std::minmax(p[0].x, p[2].x);
    const auto [bottom, top] = std::minmax(p[0].y, p[2].y);
    rect = {pixelOf(left), pixelOf(bottom), pixelOf(right), pixelOf(top)};
    return true;
}

}  // namespace vg::raster
