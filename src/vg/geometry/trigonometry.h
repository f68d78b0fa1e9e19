#pragma once

// Trigonometry from basic arithmetic and square roots alone: the same bits on every machine, which
// the C library does not promise.

#include <cmath>

namespace vg {

inline constexpr double kPi = 3.14159265358979323846;

struct SinCos {
    double sin;
    double cos;
};

/// Both for |x| <= pi / 4, by their Taylor series: the first term left out is below 2^-53.
inline SinCos sinCosOfEighthTurn(double x) noexcept {
    constexpr double kSin[] = {
        -1.0 / 6,        1.0 / 120,          -1.0 / 5040,           1.0 / 362880,
        -1.0 / 39916800, 1.0 / 6227020800.0, -1.0 / 1307674368000.0};
    constexpr double kCos[] = {
        -1.0 / 2,       1.0 / 24,        -1.0 / 720,           1.0 / 40320,
        -1.0 / 3628800, 1.0 / 479001600, -1.0 / 87178291200.0, 1.0 / 20922789888000.0};
    const double square = x * x;
    double sinSeries = 0.0;
    for (int i = 6; i >= 0; --i) sinSeries = (sinSeries + kSin[i]) * square;
    double cosSeries = 0.0;
    for (int i = 7; i >= 0; --i) cosSeries = (cosSeries + kCos[i]) * square;
    return {x + x * sinSeries, 1.0 + cosSeries};
}

/// Turns the result by whole quarter turns.
inline SinCos turnedByQuarters(SinCos value, int quarters) noexcept {
    switch (quarters & 3) {
        case 0:
            return value;
        case 1:
            return {value.cos, -value.sin};
        case 2:
            return {-value.sin, -value.cos};
        default:
            return {-value.cos, value.sin};
    }
}

/// For angles of a few turns, in radians; pi / 2 is subtracted in two parts (Cody and Waite).
inline SinCos sinCos(double radians) noexcept {
    constexpr double kHalfPi = kPi / 2;
    constexpr double kHalfPiRest = 6.123233995736766e-17;  // pi / 2 - kHalfPi
    const double quarters = std::nearbyint(radians * (1.0 / kHalfPi));
    const double rest = (radians - quarters * kHalfPi) - quarters * kHalfPiRest;
    return turnedByQuarters(sinCosOfEighthTurn(rest), static_cast<int>(quarters));
}

/// For any finite angle; exact at multiples of 90 degrees.
inline SinCos sinCosOfDegrees(double degrees) noexcept {
    const double inTurn = std::fmod(degrees, 360.0);
    const double quarters = std::nearbyint(inTurn * (1.0 / 90.0));
    const double rest = (inTurn - quarters * 90.0) * (kPi / 180.0);
    return turnedByQuarters(sinCosOfEighthTurn(rest), static_cast<int>(quarters));
}

/// The angle of a direction from +x towards +y, within [-pi, pi]; 0 for no direction.
inline double angleOf(double x, double y) noexcept {
    const double span = std::sqrt(x * x + y * y) + std::fabs(x);
    if (!(span > 0.0)) return 0.0;
    // tan(a/2) = sin a / (1 + cos a), three times over, leaves at most tan(pi / 16) < 0.2: the
    // first term of the series that is left out is below 2^-55 of the sum.
    double tangent = y / span;
    tangent /= 1.0 + std::sqrt(1.0 + tangent * tangent);
    tangent /= 1.0 + std::sqrt(1.0 + tangent * tangent);
    const double square = tangent * tangent;
    double series = 0.0;
    for (int odd = 21; odd > 1; odd -= 2) series = (1.0 / odd - series) * square;
    const double angle = 8.0 * (tangent - tangent * series);
    return x < 0.0 ? std::copysign(kPi, y) - angle : angle;
}

}  // namespace vg
