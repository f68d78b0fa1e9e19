#include "svg/matrix.h"

#include <cmath>

namespace quor {
namespace {

uint32_t kindOfRotation(float radians) noexcept {
    return radians == 0.0F ? SvgMatrix::kIdentity : SvgMatrix::kAnglePreserving;
}

uint32_t kindOfScaling(float sx, float sy) noexcept {
    if (sx != sy) return SvgMatrix::kGeneral;
    return sx == 1.0F ? SvgMatrix::kIdentity : SvgMatrix::kAnglePreserving;
}

}  // namespace

SvgMatrix SvgMatrix::translation(float tx, float ty) noexcept {
    const bool isNone = tx == 0.0F && ty == 0.0F;
    return {1.0F, 0.0F, tx, 0.0F, 1.0F, ty, isNone ? kIdentity : kAnglePreserving};
}

SvgMatrix SvgMatrix::scaling(float sx, float sy) noexcept {
    return {sx, 0.0F, 0.0F, 0.0F, sy, 0.0F, kindOfScaling(sx, sy)};
}

SvgMatrix SvgMatrix::rotation(float radians) noexcept {
    const float sine = std::sin(radians);
    const float cosine = std::cos(radians);
    return {cosine, -sine, 0.0F, sine, cosine, 0.0F, kindOfRotation(radians)};
}

SvgMatrix SvgMatrix::rotationAbout(float radians, float pivotX, float pivotY) noexcept {
    const float sine = std::sin(radians);
    const float cosine = std::cos(radians);
    const float m02 = (1.0F - cosine) * pivotX + sine * pivotY;
    const float m12 = (1.0F - cosine) * pivotY - sine * pivotX;
    return {cosine, -sine, m02, sine, cosine, m12, kindOfRotation(radians)};
}

SvgMatrix operator*(const SvgMatrix& a, const SvgMatrix& b) noexcept {
    return {a.m00 * b.m00 + a.m01 * b.m10,
            a.m00 * b.m01 + a.m01 * b.m11,
            a.m00 * b.m02 + a.m01 * b.m12 + a.m02,
            a.m10 * b.m00 + a.m11 * b.m10,
            a.m10 * b.m01 + a.m11 * b.m11,
            a.m10 * b.m02 + a.m11 * b.m12 + a.m12,
            a.kind & b.kind};
}

}  // namespace quor
