// Step counts from bounds on the second derivative: G. Wang, "The subdivision method for finding
// the intersection between two Bezier curves or surfaces", 1984, and a sharper one for curves
// along their chord.

#include "vg/geometry/curve_segments.h"

#include <algorithm>
#include <limits>

#include "vg/geometry/trigonometry.h"

namespace vg {

namespace {

/// The tolerance's radius in terms of the largest distance of a chord from its curve.
constexpr double kRadiusOverGap = 25.0 / 12.0;

/// Squared distance of p0 + a from the segment between p0 and p0 + chord.
double squaredDistanceFromChord(Vector2 a, Vector2 chord, double chordSquared) noexcept {
    const double along = dot(a, chord);
    if (along <= 0.0) return dot(a, a);
    if (along >= chordSquared) return dot(a - chord, a - chord);
    const double area = cross(a, chord);
    return area * area / chordSquared;
}

double segmentsFor(double secondDifference, const FlatteningTolerance& tolerance) noexcept {
    const double threeOverGap = static_cast<double>(tolerance.threeOverRadius) * kRadiusOverGap;
    return 0.5 * std::sqrt(threeOverGap * secondDifference);
}

}  // namespace

bool isFlat(const Bezier& curve, const FlatteningTolerance& tolerance) noexcept {
    const Vector2 chord = curve.p3 - curve.p0;
    const double chordSquared = dot(chord, chord);
    const double farthest =
        std::max(squaredDistanceFromChord(curve.p1 - curve.p0, chord, chordSquared),
                 squaredDistanceFromChord(curve.p2 - curve.p0, chord, chordSquared));
    return farthest * (9.0 * 9.0 / 16.0) <= static_cast<double>(tolerance.squared);
}

double uniformSegments(const Bezier& curve, const FlatteningTolerance& tolerance) noexcept {
    const Vector2 first = curve.firstDifference();
    const Vector2 last = curve.lastDifference();
    return segmentsFor(std::sqrt(std::max(dot(first, first), dot(last, last))), tolerance);
}

// Let w be the direction of the chord and phi the largest angle between w and a leg of the control
// polygon. The chord of every step lies within phi of w, too. What the curve leaves it by splits
// into a part square to w, counted in full, and a part along w, of which the chord's tilt shows at
// most sin(phi) <= tan(phi). Within 45 degrees no step ever runs back along its chord, so that the
// distance from the line through the chord is the distance from the chord itself.
double alignedSegments(const Bezier& curve, const FlatteningTolerance& tolerance) noexcept {
    const Vector2 chord = curve.p3 - curve.p0;
    double tilt = 0.0;
    for (const Vector2 leg : {curve.p1 - curve.p0, curve.p2 - curve.p1, curve.p3 - curve.p2}) {
        const double aside = std::fabs(cross(leg, chord));
        const double along = dot(leg, chord);
        if (!(aside <= along)) return std::numeric_limits<double>::infinity();
        if (along > 0.0) tilt = std::max(tilt, aside / along);
    }
    const double length = lengthOf(chord);
    if (!(length > 0.0)) return std::numeric_limits<double>::infinity();
    const auto bend = [&](Vector2 difference) {
        return std::fabs(cross(difference, chord)) + tilt * std::fabs(dot(difference, chord));
    };
    const double farthest = std::max(bend(curve.firstDifference()), bend(curve.lastDifference()));
    return segmentsFor(farthest / length, tolerance);
}

int32_t arcSegments(const CenterArc& arc, const FlatteningTolerance& tolerance) noexcept {
    // A tenth closer than it need be: rounding to 1/32 pixel shows most on circles.
    constexpr double kCloser = 1.1;
    const double step = std::sqrt(static_cast<double>(tolerance.sixtyFourRadius) /
                                  (8.0 * kCloser * kRadiusOverGap * arc.largerRadius));
    return roundUpSegments(std::fabs(arc.sweep) / std::min(step, kPi / 2));
}

int32_t roundUpSegments(double segments) noexcept {
    if (!(segments <= kMaxCurveSegments)) return kMaxCurveSegments;  // NaN, too
    const auto below = static_cast<int32_t>(segments);
    return std::max(1, static_cast<double>(below) < segments ? below + 1 : below);
}

}  // namespace vg
