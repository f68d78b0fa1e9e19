// Sutherland and Hodgman's clip, in doubles, one half-plane after the other.

#include "vg/raster/geometry/polygon_clip.h"

#include <cmath>

namespace vg::raster {
namespace {

enum class Axis { kX, kY };

/// The half-plane on the inner side of one border.
template <Axis kAxis, int kSign>
struct HalfPlane {
    double limit;

    static double along(const ExactPoint& p) noexcept { return kAxis == Axis::kX ? p.x : p.y; }

    bool holds(const ExactPoint& p) const noexcept {
        return kSign > 0 ? along(p) >= limit : along(p) <= limit;
    }

    /// Where the segment meets the border. Always computed from the inner end, so that a segment
    /// is cut at the same point whichever way it runs.
    ExactPoint cut(const ExactPoint& inner, const ExactPoint& outer) const noexcept {
        const double t = (limit - along(inner)) / (along(outer) - along(inner));
        if (kAxis == Axis::kX) return {limit, inner.y + t * (outer.y - inner.y)};
        return {inner.x + t * (outer.x - inner.x), limit};
    }
};

/// One pass: `contour` cut at one border into `cut`. Each point makes at most two.
template <class Plane>
bool cutAt(const Plane& plane, base::Array<ExactPoint>& contour,
           base::Array<ExactPoint>& cut) noexcept {
    cut.clear();
    if (contour.isEmpty()) return true;
    if (!cut.reserveMore(2 * contour.count())) return false;
    ExactPoint previous = contour.last();
    bool previousInside = plane.holds(previous);
    for (const ExactPoint& point : contour) {
        const bool inside = plane.holds(point);
        if (inside && !previousInside) cut.pushReserved(plane.cut(point, previous));
        if (!inside && previousInside) cut.pushReserved(plane.cut(previous, point));
        if (inside) cut.pushReserved(point);
        previous = point;
        previousInside = inside;
    }
    contour.swap(cut);
    return true;
}

/// To nearest, ties to even, kept inside the limits against the rounding of cuts.
uint16_t toFixed(double coordinate, int32_t low, int32_t high) noexcept {
    const auto rounded = static_cast<int32_t>(std::nearbyint(coordinate));
    return static_cast<uint16_t>(rounded < low ? low : rounded > high ? high : rounded);
}

}  // namespace

bool PolygonClipper::collectFinite(const Point* points, int32_t count) noexcept {
    contour_.clear();
    if (!contour_.reserveMore(count)) return false;
    for (int32_t i = 0; i < count; ++i) {
        if (std::isfinite(points[i].x) && std::isfinite(points[i].y)) {
            contour_.pushReserved({points[i].x, points[i].y});
        }
    }
    return true;
}

bool PolygonClipper::clipContour(const Point* points, int32_t count, const ClipLimits& limits,
                                 FixedPolygon& clipped) noexcept {
    if (!collectFinite(points, count)) return false;
    const bool enoughMemory =
        cutAt(HalfPlane<Axis::kY, +1>{static_cast<double>(limits.minY)}, contour_, cut_) &&
        cutAt(HalfPlane<Axis::kY, -1>{static_cast<double>(limits.maxY)}, contour_, cut_) &&
        cutAt(HalfPlane<Axis::kX, +1>{static_cast<double>(limits.minX)}, contour_, cut_) &&
        cutAt(HalfPlane<Axis::kX, -1>{static_cast<double>(limits.maxX)}, contour_, cut_);
    if (!enoughMemory) return false;
    if (contour_.isEmpty()) return true;
    if (!clipped.points.reserveMore(contour_.count())) return false;
    if (!clipped.contourSizes.push(contour_.count())) return false;
    for (const ExactPoint& point : contour_) {
        clipped.points.pushReserved({toFixed(point.x, limits.minX, limits.maxX),
                                     toFixed(point.y, limits.minY, limits.maxY)});
    }
    return true;
}

void PolygonClipper::shrinkToFit() noexcept {
    contour_.shrinkToFit();
    cut_.shrinkToFit();
}

}  // namespace vg::raster
