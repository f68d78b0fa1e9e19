#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/vector2.h"

namespace vg {

/// A straight piece of what is stroked.
struct StrokeEdge {
    Vector2 start;
    Vector2 direction;   ///< of length 1; kept when a dash cuts the edge, however short the rest
    double length;       ///< above 0
    bool isSmoothStart;  ///< the start lies inside one flattened curve
};

/// Edges to be stroked in one go, owned by whoever made the run.
///
/// Shape   edges[count] is one more entry: its start is the end of the run, which for a closed run
///         is the start again. A run without edges is a dot: its place and direction stand in
///         edges[0], and it is open.
struct StrokeRun {
    const StrokeEdge* edges = nullptr;
    int32_t count = 0;
    bool isClosed = false;
};

/// One contour of a flattened path.
struct ContourView {
    const raster::Point* points;
    const uint8_t* pointFlags;  ///< parallel to points; see FlattenedPath
    int32_t count;              ///< at least 1
    bool isClosed;
};

/// Makes the run of a contour, its edges in `edges`. Points that lie no farther than `noise` from
/// the point before them, in x and in y, make no edge: rounding alone gives such an edge its
/// direction. A contour without any edge is a dot towards +x. False when memory runs out.
[[nodiscard]] bool makeRun(const ContourView& contour, double noise, base::Array<StrokeEdge>& edges,
                           StrokeRun& run) noexcept;

}  // namespace vg
