// Tight boxes: end points, and the places where the derivative of a curve vanishes in x or in y.

#include "vg/path/path_bounds.h"

#include <cmath>

#include "base/finite.h"
#include "vg/geometry/bezier.h"
#include "vg/path/segment_reader.h"

namespace vg {

namespace {

/// Roots of a t^2 + b t + c, the second one as c / q so that nothing cancels (Numerical Recipes,
/// 5.6); returns their count.
/// Roots that do not exist may come out as infinities or NaN.
int solveQuadratic(double a, double b, double c, double roots[2]) noexcept {
    const double discriminant = b * b - 4.0 * a * c;
    if (!(discriminant >= 0.0)) return 0;
    const double q = -0.5 * (b + std::copysign(std::sqrt(discriminant), b));
    int count = 0;
    if (a != 0.0) roots[count++] = q / a;
    if (q != 0.0) roots[count++] = c / q;
    return count;
}

void includeExtremes(Bounds& bounds, const BezierPolynomial& curve,
                     double Vector2::*axis) noexcept {
    double roots[2];
    const int count =
        solveQuadratic(3.0 * (curve.c3.*axis), 2.0 * (curve.c2.*axis), curve.c1.*axis, roots);
    for (int i = 0; i < count; ++i) {
        if (0.0 < roots[i] && roots[i] < 1.0) bounds.include(curve.at(roots[i]));
    }
}

void includeCurve(Bounds& bounds, const Bezier& curve) noexcept {
    bounds.include(curve.p3);
    if (bounds.contains(curve.p1) && bounds.contains(curve.p2)) return;
    const BezierPolynomial polynomial(curve);
    includeExtremes(bounds, polynomial, &Vector2::x);
    includeExtremes(bounds, polynomial, &Vector2::y);
}

void includeArc(Bounds& bounds, const Segment& segment, const AffineMap& map) noexcept {
    CenterArc arc;
    if (toCenterForm(segment.arc(), arc) == ArcKind::kArc) {
        const CenterArc image = arc.transformed(map);
        for (const Vector2 axis : {Vector2{1.0, 0.0}, Vector2{0.0, 1.0}}) {
            double angles[2];
            const int count = image.extremes(axis, angles);
            for (int i = 0; i < count; ++i) bounds.include(image.at(angles[i]));
        }
    }
    bounds.include(map.point(segment.to));
}

void includeDrawn(Bounds& bounds, const Segment& segment, const AffineMap& map) noexcept {
    const Vector2 from = map.point(segment.from);
    const Vector2 to = map.point(segment.to);
    bounds.include(from);
    switch (segment.kind) {
        case Segment::Kind::kQuadratic:
            return includeCurve(bounds,
                                Bezier::fromQuadratic(from, map.point(segment.control1), to));
        case Segment::Kind::kCubic:
            return includeCurve(
                bounds, {from, map.point(segment.control1), map.point(segment.control2), to});
        case Segment::Kind::kArc:
            return includeArc(bounds, segment, map);
        default:
            return bounds.include(to);
    }
}

float toFinite(double value) noexcept { return base::finite(static_cast<float>(value)); }

}  // namespace

Bounds boundsOf(const Path& path, const AffineMap& map) noexcept {
    Bounds drawn;
    Bounds moves;
    for (SegmentReader reader(path); reader.next();) {
        const Segment& segment = reader.segment();
        if (segment.kind == Segment::Kind::kMove) {
            moves.include(map.point(segment.to));
        } else {
            includeDrawn(drawn, segment, map);
        }
    }
    return drawn.isEmpty() ? moves : drawn;
}

PathBox transformedPathBounds(const Path& path, const Matrix3& matrix) noexcept {
    const Bounds bounds = boundsOf(path, AffineMap(matrix));
    if (bounds.isEmpty()) return {};
    return {toFinite(bounds.low.x), toFinite(bounds.low.y), toFinite(bounds.high.x),
            toFinite(bounds.high.y)};
}

}  // namespace vg
