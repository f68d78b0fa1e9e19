#pragma once

#include "base/array.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/geometry/polygon.h"

namespace vg::raster {

/// The clip in surface coordinates: both borders belong to it.
struct ClipLimits {
    int32_t minX, minY, maxX, maxY;
};

/// A point in 1/32 pixel before it is rounded.
struct ExactPoint {
    double x, y;
};

/// Cuts contours at the borders of a rectangle, one border after the other (Sutherland and
/// Hodgman, "Reentrant polygon clipping", 1974). The parts cut off become edges along the
/// border, so winding numbers inside the rectangle do not change.
class PolygonClipper {
public:
    /// Appends the clipped contour to `clipped` unless nothing is left of it. Points in 1/32
    /// pixel; those that are not finite are dropped. False when memory runs out.
    [[nodiscard]] bool clipContour(const Point* points, int32_t count, const ClipLimits& limits,
                                   FixedPolygon& clipped) noexcept;

    void shrinkToFit() noexcept;

private:
    [[nodiscard]] bool collectFinite(const Point* points, int32_t count) noexcept;

    base::Array<ExactPoint> contour_;
    base::Array<ExactPoint> cut_;
};

}  // namespace vg::raster
