#pragma once

#include <cstdint>

namespace vg {

/// A 3 x 3 matrix stored row by row; the third row holds the projective terms and is (0, 0, 1) in
/// an affine matrix.
struct Matrix3 {
    float m[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
};

/// One of the context's user-to-surface or paint-to-user matrices with the values derived from it.
struct UserMatrix {
    Matrix3 value;

    Matrix3 inverse;                 ///< valid while kInverseStale is clear and !isSingular
    float scales[2] = {1.0F, 1.0F};  ///< singular values of the linear part, larger first
    bool isSingular = false;
    uint32_t staleFlags = 0;

    static constexpr uint32_t kInverseStale = 0x1;
    static constexpr uint32_t kScalesStale = 0x2;

    void setIdentity() noexcept;

    /// Brings inverse, isSingular and scales up to date if they are stale. Computed in double.
    void update() noexcept;

    /// Brings the scales alone up to date.
    void updateScales() noexcept;
};

/// a * b: b applies first.
Matrix3 multiply(const Matrix3& a, const Matrix3& b) noexcept;

}  // namespace vg
