#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/raster/geometry/polygon.h"

namespace vg {

/// A path as straight segments in user space, for filling and for stroking.
///
/// One contour per subpath that has at least one drawing segment; a lone move makes none. A
/// contour holds its points in order; for a closed subpath the first point is not repeated at the
/// end. Contours of zero length are kept (round and square caps show them).
struct FlattenedPath {
    base::Array<raster::Point> points;
    base::Array<uint8_t> pointFlags;    ///< parallel to points
    base::Array<int32_t> contourSizes;  ///< points of each contour, at least 1
    base::Array<uint8_t> contourFlags;  ///< parallel to contourSizes

    /// The point lies inside one flattened curve: the path is smooth there.
    static constexpr uint8_t kInsideCurve = 0x1;
    /// The subpath ends with a close command.
    static constexpr uint8_t kClosed = 0x1;

    raster::Polygon polygon() const noexcept {
        return {points.data(), points.count(), contourSizes.data(), contourSizes.count()};
    }
    void clear() noexcept {
        points.clear();
        pointFlags.clear();
        contourSizes.clear();
        contourFlags.clear();
    }
};

}  // namespace vg
