#pragma once

#include "vg/geometry/affine_map.h"
#include "vg/geometry/bounds.h"
#include "vg/geometry/matrix.h"
#include "vg/path/path.h"

namespace vg {

/// The tight box of the image of a path: end points and the extremes of curves and arcs. Moves
/// count only where something is drawn from them, or when the path draws nothing at all.
Bounds boundsOf(const Path& path, const AffineMap& map) noexcept;

/// A box of floats; all zero for a path without segments.
struct PathBox {
    float minX = 0.0F, minY = 0.0F;
    float maxX = 0.0F, maxY = 0.0F;
};

/// The tight box of the path under the affine part of the matrix.
PathBox transformedPathBounds(const Path& path, const Matrix3& matrix) noexcept;

}  // namespace vg
