// Arc lengths by adaptive Gauss-Legendre quadrature of the speed; the parameter at a length by
// bisection.

#include "vg/path/measured_curve.h"

#include <algorithm>
#include <cassert>

namespace vg {

namespace {

Bezier bezierOf(const Segment& segment) noexcept {
    switch (segment.kind) {
        case Segment::Kind::kQuadratic:
            return Bezier::fromQuadratic(segment.from, segment.control1, segment.to);
        case Segment::Kind::kCubic:
            return {segment.from, segment.control1, segment.control2, segment.to};
        default:
            return Bezier::fromLine(segment.from, segment.to);
    }
}

}  // namespace

MeasuredCurve::MeasuredCurve(const Segment& segment) noexcept
    : from_(segment.from), to_(segment.to), polynomial_(bezierOf(segment)) {
    assert(segment.kind != Segment::Kind::kMove);
    isArc_ =
        segment.kind == Segment::Kind::kArc && toCenterForm(segment.arc(), arc_) == ArcKind::kArc;
    isLine_ = !isArc_ && segment.kind != Segment::Kind::kQuadratic &&
              segment.kind != Segment::Kind::kCubic;
}

Vector2 MeasuredCurve::at(double u) const noexcept {
    if (u <= 0.0) return from_;
    if (u >= 1.0) return to_;
    return isArc_ ? arc_.at(arc_.sweep * u) : polynomial_.at(u);
}

Vector2 MeasuredCurve::velocity(double u) const noexcept {
    return isArc_ ? arc_.velocity(arc_.sweep * u) * arc_.sweep : polynomial_.velocity(u);
}

Vector2 MeasuredCurve::tangentAt(double u) const noexcept {
    // A control point on an end point stops the curve there: look at its neighbourhood.
    for (const double step : {0.0, 1e-3, -1e-3}) {
        const Vector2 direction = velocity(std::clamp(u + step, 0.0, 1.0));
        const double length = lengthOf(direction);
        if (length > 0.0) return direction * (1.0 / length);
    }
    return {1.0, 0.0};
}

double MeasuredCurve::length() const noexcept { return lengthUpTo(1.0); }

double MeasuredCurve::lengthUpTo(double u) const noexcept {
    if (isLine_) return lengthOf(to_ - from_) * u;
    return lengthBetween(0.0, u, lengthOfStep(0.0, u), 0);
}

// Five-point Gauss-Legendre quadrature of the speed.
double MeasuredCurve::lengthOfStep(double u0, double u1) const noexcept {
    constexpr double kNodes[] = {0.5384693101056831, 0.9061798459386640};
    constexpr double kWeights[] = {0.4786286704993665, 0.2369268850561891};
    constexpr double kMiddleWeight = 0.5688888888888889;
    const double middle = 0.5 * (u0 + u1);
    const double half = 0.5 * (u1 - u0);
    double sum = kMiddleWeight * speed(middle);
    for (int i = 0; i < 2; ++i) {
        sum += kWeights[i] * (speed(middle - half * kNodes[i]) + speed(middle + half * kNodes[i]));
    }
    return half * sum;
}

// Halves until both halves agree with the whole. Only a cusp or a sharp bend goes deep, and there
// one half settles at once, so that the work stays near kMaxDepth steps.
double MeasuredCurve::lengthBetween(double u0, double u1, double estimate,
                                    int depth) const noexcept {
    constexpr int kMaxDepth = 12;
    constexpr double kPrecision = 1e-7;
    const double middle = 0.5 * (u0 + u1);
    const double left = lengthOfStep(u0, middle);
    const double right = lengthOfStep(middle, u1);
    const double sum = left + right;
    if (depth == kMaxDepth || std::fabs(sum - estimate) <= kPrecision * sum) return sum;
    return lengthBetween(u0, middle, left, depth + 1) + lengthBetween(middle, u1, right, depth + 1);
}

double MeasuredCurve::parameterAt(double distance) const noexcept {
    const double whole = length();
    assert(0.0 <= distance && distance <= whole);
    if (!(whole > 0.0)) return 0.0;
    if (isLine_) return distance / whole;
    double low = 0.0;
    double high = 1.0;
    for (int i = 0; i < 40; ++i) {  // bisection: a float has 24 bits, its exponent a few more
        const double middle = 0.5 * (low + high);
        (lengthUpTo(middle) < distance ? low : high) = middle;
    }
    return 0.5 * (low + high);
}

}  // namespace vg
