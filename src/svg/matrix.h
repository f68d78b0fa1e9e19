#pragma once

#include <cstdint>

namespace quor {

/// An affine map with a classification that only moves toward general in products.
/// A point maps to (m00 x + m01 y + m02, m10 x + m11 y + m12).
struct SvgMatrix {
    static constexpr uint32_t kGeneral = 0;          ///< non-uniform scale, skew, "matrix"
    static constexpr uint32_t kAnglePreserving = 2;  ///< translation, uniform scale, rotation
    static constexpr uint32_t kIdentity = 3;

    float m00 = 1.0F, m01 = 0.0F, m02 = 0.0F;
    float m10 = 0.0F, m11 = 1.0F, m12 = 0.0F;
    uint32_t kind = kIdentity;

    bool isIdentity() const noexcept { return kind == kIdentity; }
    bool isAnglePreserving() const noexcept { return (kind & kAnglePreserving) != 0; }
    float determinant() const noexcept { return m00 * m11 - m01 * m10; }

    static SvgMatrix translation(float tx, float ty) noexcept;
    static SvgMatrix scaling(float sx, float sy) noexcept;
    /// Radians, about the origin or a pivot.
    static SvgMatrix rotation(float radians) noexcept;
    static SvgMatrix rotationAbout(float radians, float pivotX, float pivotY) noexcept;

    void apply(float x, float y, float& mappedX, float& mappedY) const noexcept {
        mappedX = m00 * x + m01 * y + m02;
        mappedY = m10 * x + m11 * y + m12;
    }
};

inline constexpr float kRadiansPerDegree = 0.017453292F;

/// a * b: b applies first. Kinds are ANDed. Products are computed in float, in the order written.
SvgMatrix operator*(const SvgMatrix& a, const SvgMatrix& b) noexcept;

}  // namespace quor
