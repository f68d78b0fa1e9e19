#pragma once

namespace vg {

/// A 3 x 3 matrix stored row by row; the third row holds the projective terms and is (0, 0, 1) in
/// an affine matrix.
struct Matrix3 {
    float m[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

    bool operator==(const Matrix3&) const noexcept = default;
};

/// a * b: b applies first.
Matrix3 multiply(const Matrix3& a, const Matrix3& b) noexcept;

/// The larger singular value of the linear part: how much it stretches a length at most.
float largestScale(const Matrix3& matrix) noexcept;

}  // namespace vg
