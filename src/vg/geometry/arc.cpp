// Arcs between their end point form and their centre form, as path data of SVG converts them, but
// computed from half angles so that neither short arcs of huge ellipses nor half turns lose
// digits.

#include "vg/geometry/arc.h"

#include <algorithm>
#include <utility>

#include "vg/geometry/trigonometry.h"

namespace vg {

namespace {

/// Maps the unit circle onto an ellipse about the origin, and back.
struct EllipseFrame {
    explicit EllipseFrame(const EllipseShape& ellipse) noexcept
        : turn(sinCosOfDegrees(ellipse.rotation)),
          radiusX(std::fabs(ellipse.radiusX)),
          radiusY(std::fabs(ellipse.radiusY)) {}

    Vector2 toEllipse(Vector2 a) const noexcept {
        const Vector2 scaled{a.x * radiusX, a.y * radiusY};
        return {turn.cos * scaled.x - turn.sin * scaled.y,
                turn.sin * scaled.x + turn.cos * scaled.y};
    }
    Vector2 toUnitCircle(Vector2 a) const noexcept {
        return {(turn.cos * a.x + turn.sin * a.y) / radiusX,
                (turn.cos * a.y - turn.sin * a.x) / radiusY};
    }

    SinCos turn;
    double radiusX, radiusY;
};

/// How far rounding the end points and radii to float may have moved the half chord on the unit
/// circle.
double roundingOfHalfChord(const EndpointArc& arc, const EllipseFrame& frame,
                           Vector2 halfChord) noexcept {
    constexpr double kHalfUnit = 1.0 / (1 << 24);
    const double magnitude = std::max(std::fabs(arc.from.x), std::fabs(arc.to.x)) +
                             std::max(std::fabs(arc.from.y), std::fabs(arc.to.y));
    return kHalfUnit * (magnitude * (std::fabs(halfChord.x) / frame.radiusX +
                                     std::fabs(halfChord.y) / frame.radiusY) +
                        2.0);
}

/// Brings an angle of the upward direction into the sweep's own: [0, 2 pi) or (-2 pi, 0].
double alongSweep(double angle, double sweep) noexcept {
    if (sweep > 0.0) return angle < 0.0 ? angle + 2.0 * kPi : angle;
    return angle > 0.0 ? angle - 2.0 * kPi : angle;
}

}  // namespace

// Written as a step away from `from`, so that a short arc of a huge ellipse keeps its digits:
// cos(a) - 1 = -2 sin(a/2)^2 and sin(a) = 2 sin(a/2) cos(a/2).
Vector2 CenterArc::at(double angle) const noexcept {
    const SinCos half = sinCos(angle * 0.5);
    return from + (sinAxis * half.cos - cosAxis * half.sin) * (2.0 * half.sin);
}

Vector2 CenterArc::velocity(double angle) const noexcept {
    const SinCos turn = sinCos(angle);
    return sinAxis * turn.cos - cosAxis * turn.sin;
}

int CenterArc::extremes(Vector2 direction, double angles[2]) const noexcept {
    const double first = angleOf(dot(cosAxis, direction), dot(sinAxis, direction));
    const double opposite = first > 0.0 ? first - kPi : first + kPi;
    int count = 0;
    for (const double angle : {alongSweep(first, sweep), alongSweep(opposite, sweep)}) {
        if (angle != 0.0 && std::fabs(angle) < std::fabs(sweep)) angles[count++] = angle;
    }
    if (count == 2 && std::fabs(angles[1]) < std::fabs(angles[0])) std::swap(angles[0], angles[1]);
    return count;
}

CenterArc CenterArc::transformed(const AffineMap& map) const noexcept {
    return {map.point(from), map.direction(cosAxis), map.direction(sinAxis), sweep, largerRadius};
}

// On the unit circle of the ellipse, with p = half of the chord from `to` to `from`:
//
//        from                 u = p - c points from the centre to `from`,
//       / |                   |p| = sin(half of the smaller sweep),
//      u  p                   c = the centre seen from the middle of the chord:
//     /   |                       at distance sqrt(1 - |p|^2), square to p.
//    C--c-+
//         |                   Where |p| >= 1 the centre is the middle, and u = p is longer than 1:
//         |                   mapping it back yields the radii scaled up.
//         to
//
// A chord that rounding alone may have made shorter than a diameter counts as one: two half turns
// must make a round circle, far from the origin too.
ArcKind toCenterForm(const EndpointArc& arc, CenterArc& center) noexcept {
    if (arc.from == arc.to) return ArcKind::kNothing;
    const EllipseFrame frame(arc.ellipse);
    if (frame.radiusX == 0.0 || frame.radiusY == 0.0) return ArcKind::kLine;

    const Vector2 p = frame.toUnitCircle((arc.from - arc.to) * 0.5);
    const double lengthSquared = dot(p, p);
    const bool isHalfTurn = lengthSquared >= 1.0 - 2.0 * roundingOfHalfChord(arc, frame, p);
    const double root = isHalfTurn ? 0.0 : std::sqrt(1.0 - lengthSquared);
    const double length = std::sqrt(lengthSquared);
    if (!(length > 0.0)) return ArcKind::kLine;  // too short beside the ellipse for any arithmetic

    const double side = arc.isLarge == arc.isCounterClockwise ? -root / length : root / length;
    const Vector2 u = p - Vector2{p.y, -p.x} * side;
    const double smallSweep = 2.0 * angleOf(root, length);
    const double magnitude = arc.isLarge ? 2.0 * kPi - smallSweep : smallSweep;

    center.from = arc.from;
    center.cosAxis = frame.toEllipse(u);
    center.sinAxis = frame.toEllipse(perpendicular(u));
    center.sweep = arc.isCounterClockwise ? magnitude : -magnitude;
    center.largerRadius = std::max(frame.radiusX, frame.radiusY) * (isHalfTurn ? length : 1.0);
    const double reach = center.largerRadius * std::min(magnitude, 2.0);
    return fitsFloat({reach, 0.0}) ? ArcKind::kArc : ArcKind::kLine;
}

// The singular values and left singular vectors of the 2 x 2 matrix that maps the unit circle onto
// the image.
EllipseShape transformed(const EllipseShape& ellipse, const AffineMap& map) noexcept {
    const EllipseFrame frame(ellipse);
    const Vector2 x = map.direction(frame.toEllipse({1.0, 0.0}));
    const Vector2 y = map.direction(frame.toEllipse({0.0, 1.0}));
    const Vector2 turning{(x.x + y.y) * 0.5, (x.y - y.x) * 0.5};
    const Vector2 mirroring{(x.x - y.y) * 0.5, (x.y + y.x) * 0.5};

    const double larger = lengthOf(turning) + lengthOf(mirroring);
    const double area = std::fabs(cross(x, y));
    double rotation = 0.5 * (angleOf(turning.x, turning.y) + angleOf(mirroring.x, mirroring.y));
    if (rotation > kPi / 2) rotation -= kPi;
    if (rotation <= -kPi / 2) rotation += kPi;
    return {larger, larger > 0.0 ? area / larger : 0.0, rotation * (180.0 / kPi)};
}

}  // namespace vg
