#pragma once

#include "vg/geometry/vector2.h"
#include "vg/path/path.h"

// Lengths and places along the segments `first` to `first + count - 1` of a path.
namespace vg {

/// A place on a path and the direction of travel there.
struct PathPosition {
    Vector2 point;
    Vector2 tangent{1.0, 0.0};
};

double lengthOfSegments(const Path& path, VGint first, VGint count) noexcept;

/// Distances outside the path are those of its ends. Segments of no length are passed over; if
/// there are no others, the place is the last end point and the tangent (1, 0).
PathPosition positionAlong(const Path& path, VGint first, VGint count, double distance) noexcept;

}  // namespace vg
