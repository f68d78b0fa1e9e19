#pragma once

#include "vg/matrix.h"
#include "vg/path.h"

namespace vg {

/// A box of floats; all zero for a path without segments.
struct PathBox {
    float minX = 0.0F, minY = 0.0F;
    float maxX = 0.0F, maxY = 0.0F;
};

/// The tight box of the path under the affine part of the matrix.
PathBox transformedPathBounds(const Path& path, const Matrix3& matrix) noexcept;

}  // namespace vg
