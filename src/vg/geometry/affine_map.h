#pragma once

#include "vg/geometry/matrix.h"
#include "vg/geometry/vector2.h"

namespace vg {

/// The affine part of a matrix, in double: (m00 x + m01 y + m02, m10 x + m11 y + m12).
struct AffineMap {
    double m00 = 1.0, m01 = 0.0, m02 = 0.0;
    double m10 = 0.0, m11 = 1.0, m12 = 0.0;

    AffineMap() noexcept = default;
    explicit AffineMap(const Matrix3& matrix) noexcept
        : m00(matrix.m[0][0]),
          m01(matrix.m[0][1]),
          m02(matrix.m[0][2]),
          m10(matrix.m[1][0]),
          m11(matrix.m[1][1]),
          m12(matrix.m[1][2]) {}

    Vector2 point(Vector2 a) const noexcept {
        return {m00 * a.x + m01 * a.y + m02, m10 * a.x + m11 * a.y + m12};
    }
    /// Maps a difference of points: no translation.
    Vector2 direction(Vector2 a) const noexcept {
        return {m00 * a.x + m01 * a.y, m10 * a.x + m11 * a.y};
    }
    /// Negative for maps that mirror.
    double determinant() const noexcept { return m00 * m11 - m01 * m10; }
};

}  // namespace vg
