#pragma once

#include <cstddef>
#include <cstdint>

#include "base/array.h"
#include "vg/raster/geometry/polygon.h"

namespace vg {

/// Closed contours of straight edges, as the rasterizer takes them: a flattened path to be filled,
/// or the outline of a stroke.
struct Outline {
    base::Array<raster::Point> points;
    base::Array<int32_t> contourSizes;  ///< points of each contour, at least 1

    raster::Polygon polygon() const noexcept {
        return {points.data(), points.count(), contourSizes.data(), contourSizes.count()};
    }
    size_t byteCount() const noexcept {
        return base::byteCount(points) + base::byteCount(contourSizes);
    }
    bool failed() const noexcept { return points.failed() || contourSizes.failed(); }

    /// Forgets contours and failures, keeps the memory.
    void clear() noexcept {
        points.clear();
        points.clearFailure();
        contourSizes.clear();
        contourSizes.clearFailure();
    }
    void shrinkToFit() noexcept {
        points.shrinkToFit();
        contourSizes.shrinkToFit();
    }
};

}  // namespace vg
