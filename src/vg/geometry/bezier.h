#pragma once

#include "vg/geometry/vector2.h"

namespace vg {

/// A cubic Bezier curve by its control points.
struct Bezier {
    Vector2 p0, p1, p2, p3;

    /// The same curve as the quadratic with that control point.
    static Bezier fromQuadratic(Vector2 from, Vector2 control, Vector2 to) noexcept {
        constexpr double kTwoThirds = 2.0 / 3.0;
        return {from, from + (control - from) * kTwoThirds, to + (control - to) * kTwoThirds, to};
    }
    static Bezier fromLine(Vector2 from, Vector2 to) noexcept {
        const Vector2 third = (to - from) * (1.0 / 3.0);
        return {from, from + third, to - third, to};
    }

    /// P0 - 2 P1 + P2 and P1 - 2 P2 + P3: the second derivative at the ends, divided by 6. In
    /// between it is linear.
    Vector2 firstDifference() const noexcept { return (p0 - p1) + (p2 - p1); }
    Vector2 lastDifference() const noexcept { return (p1 - p2) + (p3 - p2); }

    /// Splits at t = 1/2 (de Casteljau).
    void halve(Bezier& left, Bezier& right) const noexcept {
        const Vector2 middle = (p1 + p2) * 0.5;
        left.p0 = p0;
        left.p1 = (p0 + p1) * 0.5;
        left.p2 = (left.p1 + middle) * 0.5;
        right.p3 = p3;
        right.p2 = (p2 + p3) * 0.5;
        right.p1 = (middle + right.p2) * 0.5;
        left.p3 = right.p0 = (left.p2 + right.p1) * 0.5;
    }
};

/// A Bezier curve as a polynomial in t, 0 <= t <= 1: c0 + c1 t + c2 t^2 + c3 t^3.
struct BezierPolynomial {
    explicit BezierPolynomial(const Bezier& b) noexcept
        : c0(b.p0),
          c1((b.p1 - b.p0) * 3.0),
          c2(b.firstDifference() * 3.0),
          c3((b.p3 - b.p0) + (b.p1 - b.p2) * 3.0) {}

    Vector2 at(double t) const noexcept { return c0 + (c1 + (c2 + c3 * t) * t) * t; }
    Vector2 velocity(double t) const noexcept { return c1 + (c2 * 2.0 + c3 * (3.0 * t)) * t; }
    Vector2 acceleration(double t) const noexcept { return (c2 + c3 * (3.0 * t)) * 2.0; }

    /// f - f'' * factor, once more a polynomial.
    BezierPolynomial withoutAcceleration(double factor) const noexcept {
        BezierPolynomial result = *this;
        result.c0 = c0 - c2 * (2.0 * factor);
        result.c1 = c1 - c3 * (6.0 * factor);
        return result;
    }

    Vector2 c0, c1, c2, c3;
};

}  // namespace vg
