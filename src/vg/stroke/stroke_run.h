#pragma once

#include <cstdint>

#include "vg/geometry/vector2.h"

namespace vg {

/// How an edge meets the one before it.
enum class StrokeJoint : uint8_t {
    kSmooth,  ///< inside a curve: both have the same direction there
    kRound,   ///< inside a curve that turns on the spot: rounded whatever the join style is
    kCorner,  ///< between two segments of the path: joined as the join style says
};

/// A piece of what is stroked: a line, or a step along a curve that the chord and the curve's own
/// directions at both ends stand for.
struct StrokeEdge {
    Vector2 start;
    Vector2 direction;     ///< of length 1, at the start
    Vector2 endDirection;  ///< of length 1, at the end; `direction` where the edge is straight
    double length;         ///< of the chord, above 0
    StrokeJoint joint;     ///< at the start
    bool isCurved;

    /// The place so far along the chord. `end` is the edge's end.
    Vector2 pointAt(double distance, Vector2 end) const noexcept {
        return isCurved ? start + (end - start) * (distance / length)
                        : start + direction * distance;
    }

    /// The direction there, of length 1: the directions of the ends, mixed by the distance.
    Vector2 directionAt(double distance) const noexcept {
        if (!isCurved) return direction;
        const Vector2 mixed = direction + (endDirection - direction) * (distance / length);
        const double mixedLength = lengthOf(mixed);
        return mixedLength > 0.0 ? mixed * (1.0 / mixedLength) : direction;
    }
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

    Vector2 endOf(int32_t edge) const noexcept { return edges[edge + 1].start; }
};

}  // namespace vg
