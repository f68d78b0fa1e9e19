#pragma once

#include "base/array.h"
#include "vg/raster/geometry/fixed.h"

namespace vg::raster {

/// One segment of a contour that is not horizontal, as the sweep from the top down meets it.
struct RasterEdge {
    const FixedPoint* upper;  ///< the end point with the larger y
    int32_t slope;            ///< change of x per unit of y downwards, 15 fractional bits
    int32_t next;  ///< the next edge that starts on the same sweep line; -1 ends the list
    uint16_t lowerY;
    int16_t direction;  ///< +1 when the segment runs down the sweep (y falls), -1 when up

    /// x at a height from lowerY to upper->y. The product fits 32 bits: |dy * slope| <= |dx| 2^15.
    int32_t xAt(int32_t y) const noexcept { return upper->x + (((upper->y - y) * slope) >> 15); }
};

/// Appends the edges of all contours; horizontal segments make none. False when memory runs out.
[[nodiscard]] bool buildEdges(const FixedPolygon& polygon, base::Array<RasterEdge>& edges) noexcept;

}  // namespace vg::raster
