// Cuts curves into steps by how much they turn: a step with the chord L that turns by a leaves its
// chord by L a / 8, and the offset curve at the distance h, whose chord is up to h a longer, by
// (L + h a) a / 8. That is exact for circles and good for short steps of any curve. Equal areas on
// both sides of the polyline (flatten.h) leave two thirds of it, so that a third of the flatness r
// is kept to while (L + h a) a <= 4 r.

#include "vg/stroke/centre_line.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

#include "base/finite.h"
#include "vg/geometry/arc.h"
#include "vg/geometry/curve_segments.h"
#include "vg/geometry/trigonometry.h"
#include "vg/path/flatten.h"

namespace vg {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// A place of a curve over its parameter t, with the first two derivatives.
struct CurvePlace {
    double t;
    Vector2 point, velocity, acceleration;
};

/// A Bezier curve, t from 0 to 1.
struct BezierCurve {
    BezierPolynomial polynomial;

    CurvePlace at(double t) const noexcept {
        return {t, polynomial.at(t), polynomial.velocity(t), polynomial.acceleration(t)};
    }

    /// Velocities between two places are a parabola: within the triangle of theirs and this one.
    static Vector2 middleVelocity(const CurvePlace& from, const CurvePlace& to) noexcept {
        return from.velocity + from.acceleration * (0.5 * (to.t - from.t));
    }
};

/// An arc, t the angle swept so far.
struct ArcCurve {
    const CenterArc& arc;
    double sign = arc.sweep < 0.0 ? -1.0 : 1.0;

    CurvePlace at(double t) const noexcept {
        const SinCos half = sinCos(0.5 * t * sign);
        const SinCos turn = {2.0 * half.sin * half.cos, 1.0 - 2.0 * half.sin * half.sin};
        const Vector2 point =
            arc.from + (arc.sinAxis * half.cos - arc.cosAxis * half.sin) * (2.0 * half.sin);
        const Vector2 velocity = (arc.sinAxis * turn.cos - arc.cosAxis * turn.sin) * sign;
        const Vector2 toCentre = (arc.cosAxis * turn.cos + arc.sinAxis * turn.sin) * -1.0;
        return {t, point, velocity, toCentre};
    }

    /// The same for the ellipse of velocities, but for the length. Precondition: within a quarter.
    static Vector2 middleVelocity(const CurvePlace& from, const CurvePlace& to) noexcept {
        return from.velocity + to.velocity;
    }
};

Vector2 unit(Vector2 a) noexcept { return a * (1.0 / lengthOf(a)); }
bool isZero(Vector2 a) noexcept { return a.x == 0.0 && a.y == 0.0; }

/// The angle between two directions, to about a hundredth; 0 where one of them is none, infinite
/// where it is much more than an eighth of a turn.
double turnBetween(Vector2 a, Vector2 b) noexcept {
    if (isZero(a) || isZero(b)) return 0.0;
    const double along = dot(a, b);
    const double aside = std::fabs(cross(a, b));
    if (!(aside <= 1.25 * along)) return kInfinity;
    const double tangent = aside / along;
    return tangent / (1.0 + 0.28 * tangent * tangent);
}

/// Appends the edges of one curve.
template <class Curve>
class CurveCutter {
public:
    CurveCutter(const Curve& curve, StrokeSteps& steps, base::Array<StrokeEdge>& edges) noexcept
        : curve_(curve), steps_(steps), edges_(edges), from_(curve.at(0.0)) {
        hasDirection_ = !isZero(from_.velocity);
        if (hasDirection_) direction_ = unit(from_.velocity);
    }

    /// Goes on to t = `end` in `count` equal steps, cut further where the curve asks for it.
    void cut(double end, int32_t count) noexcept {
        const double step = end / count;
        takeSteps(count);
        for (int32_t i = 1; i < count; ++i) addStep(step * i, kMaxDepth);
        addStep(end, kMaxDepth);
    }

private:
    static constexpr int kMaxDepth = 12;
    static constexpr double kMostPieces = 64.0;
    static constexpr double kSlack = 1.3;  // steps so much above the limit are not worth two

    /// Goes on to t, in as many edges as that takes.
    void addStep(double t, int depth) noexcept {
        const CurvePlace to = curve_.at(t);
        const Vector2 middle = Curve::middleVelocity(from_, to);
        const double turn = turnTo(to, middle);
        const double chord = lengthOf(to.point - from_.point);
        const double excess = (chord + steps_.halfWidth * turn) * turn / (4.0 * steps_.flatness);
        const bool mayBeCut = depth > 0 && steps_.spare > 0 && used_ < kMaxCurveSegments;
        if (excess <= kSlack || turn == 0.0 || !mayBeCut) return addLastEdge(to, middle);
        if (turn < kInfinity) return addEvenSteps(t, std::ceil(std::sqrt(excess)), depth - 1);
        if (extent(to, middle) <= steps_.nearby()) return turnOnTheSpot(to);
        takeSteps(2);
        addStep(0.5 * (from_.t + t), depth - 1);
        addStep(t, depth - 1);
    }

    /// Precondition: from here to t the curve turns by less than half a turn in all.
    void addEvenSteps(double end, double count, int depth) noexcept {
        const double most = std::min(1.0 * steps_.spare + 1.0, kMostPieces);
        const auto steps = static_cast<int32_t>(count >= 2.0 ? std::min(count, most) : 2.0);  // NaN
        const double start = from_.t;
        const double step = (end - start) / steps;
        takeSteps(steps);
        for (int32_t i = 1; i <= steps; ++i) {
            const double t = i == steps ? end : start + step * i;
            if (!addShortStep(t)) addStep(t, depth);
        }
    }

    /// The same in one edge. False, with nothing done, when that is too long or comes to a stop.
    bool addShortStep(double t) noexcept {
        const CurvePlace to = curve_.at(t);
        if (!hasDirection_ || isZero(to.velocity)) return false;
        const Vector2 direction = unit(to.velocity);
        const Vector2 turn = direction - direction_;
        const Vector2 chord = to.point - from_.point;
        const double turnSquare = dot(turn, turn);
        const double excess =
            std::sqrt(dot(chord, chord) * turnSquare) + steps_.halfWidth * turnSquare;
        if (!(excess <= 4.0 * kSlack * steps_.flatness)) return false;
        addEdge(to, direction);
        hasDirection_ = true;
        return true;
    }

    void takeSteps(int32_t count) noexcept {
        steps_.spare -= count - 1;
        used_ += count - 1;
    }

    double turnTo(const CurvePlace& to, Vector2 middle) const noexcept {
        if (isZero(middle)) return turnBetween(from_.velocity, to.velocity);
        return turnBetween(from_.velocity, middle) + turnBetween(middle, to.velocity);
    }

    /// No less than the length of the curve up to a place.
    double extent(const CurvePlace& to, Vector2 middle) const noexcept {
        return (lengthOf(from_.velocity) + lengthOf(middle) + lengthOf(to.velocity)) *
               (to.t - from_.t);
    }

    /// Finds out the directions of an edge and appends it.
    void addLastEdge(const CurvePlace& to, Vector2 middle) noexcept {
        Vector2 arriving = to.velocity;
        if (isZero(arriving)) arriving = isZero(middle) ? from_.velocity : middle;
        if (!hasDirection_) direction_ = leaving(middle, arriving);
        addEdge(to, isZero(arriving) ? direction_ : unit(arriving));
        hasDirection_ = !isZero(to.velocity);
        if (!hasDirection_) stop();
    }

    Vector2 leaving(Vector2 middle, Vector2 arriving) const noexcept {
        for (const Vector2 velocity : {from_.velocity, middle, arriving}) {
            if (!isZero(velocity)) return unit(velocity);
        }
        return {1.0, 0.0};
    }

    // Where steps a and b meet, a b |f''| / 12 outwards gives the polyline the area of the curve.
    void addEdge(const CurvePlace& to, Vector2 endDirection) noexcept {
        const double step = to.t - from_.t;
        const Vector2 start = from_.point - from_.acceleration * (previousStep_ * step / 12.0);
        edges_.push({start, direction_, endDirection, 0.0, joint_, true});
        joint_ = StrokeJoint::kSmooth;
        direction_ = endDirection;
        previousStep_ = step;
        from_ = to;
    }

    /// Leaves out a step without extent, at a cusp.
    void turnOnTheSpot(const CurvePlace& to) noexcept {
        from_ = to;
        stop();
    }

    /// The curve may go on in any direction.
    void stop() noexcept {
        hasDirection_ = false;
        previousStep_ = 0.0;
        if (joint_ == StrokeJoint::kSmooth) joint_ = StrokeJoint::kRound;
    }

    const Curve& curve_;
    StrokeSteps& steps_;
    base::Array<StrokeEdge>& edges_;
    CurvePlace from_;
    Vector2 direction_;          ///< at from_, where it is known
    double previousStep_ = 0.0;  ///< 0 where the next edge starts on the curve
    int32_t used_ = 1;           ///< steps of this curve
    StrokeJoint joint_ = StrokeJoint::kCorner;
    bool hasDirection_ = false;
};

bool coincide(Vector2 a, Vector2 b, double distance) noexcept {
    return std::fabs(a.x - b.x) <= distance && std::fabs(a.y - b.y) <= distance;
}

/// Control points so near to an end that they might give the curve any direction there fall on it.
/// False when that leaves a line.
bool dropNearControls(Bezier& curve, double nearby) noexcept {
    if (coincide(curve.p1, curve.p0, nearby)) {
        curve.p1 = curve.p0;
        if (coincide(curve.p2, curve.p0, nearby)) curve.p2 = curve.p0;
    }
    if (coincide(curve.p2, curve.p3, nearby)) {
        curve.p2 = curve.p3;
        if (coincide(curve.p1, curve.p3, nearby)) curve.p1 = curve.p3;
    }
    const auto isEnd = [&](Vector2 control) { return control == curve.p0 || control == curve.p3; };
    return !isEnd(curve.p1) || !isEnd(curve.p2) || curve.p1 == curve.p2;
}

}  // namespace

CentreLineReader::CentreLineReader(const Path& path, double halfWidth, double flatness,
                                   base::Array<StrokeEdge>& edges) noexcept
    : reader_(path), steps_{halfWidth, flatness, kMaxFlattenedPoints}, edges_(edges) {
    assert(halfWidth > 0.0);
    edges.clearFailure();
}

bool CentreLineReader::next(StrokeRun& run) noexcept {
    while (readSubpath()) {
        if (makeRun(run)) return true;
    }
    return false;
}

/// Collects the edges of the next subpath that draws anything, and the entry that ends them.
bool CentreLineReader::readSubpath() noexcept {
    edges_.clear();
    isClosed_ = false;
    bool isDrawn = false;
    Vector2 end;
    while (!isClosed_ && reader_.next()) {
        const Segment& segment = reader_.segment();
        const bool followsMove = followsMove_;
        followsMove_ = segment.kind == Segment::Kind::kMove;
        if (followsMove_ && isDrawn) break;
        if (followsMove_) continue;
        isClosed_ = segment.kind == Segment::Kind::kClose && (isDrawn || followsMove);
        if (segment.kind == Segment::Kind::kClose && !isClosed_) continue;
        add(segment);
        end = segment.to;
        isDrawn = !edges_.isEmpty();
    }
    edges_.push({end, {1.0, 0.0}, {1.0, 0.0}, 0.0, StrokeJoint::kCorner, false});
    return isDrawn && !failed();
}

void CentreLineReader::add(const Segment& segment) noexcept {
    switch (segment.kind) {
        case Segment::Kind::kQuadratic:
            return addBezier(Bezier::fromQuadratic(segment.from, segment.control1, segment.to));
        case Segment::Kind::kCubic:
            return addBezier({segment.from, segment.control1, segment.control2, segment.to});
        case Segment::Kind::kArc:
            return addArc(segment);
        case Segment::Kind::kLine:
        case Segment::Kind::kClose:
        case Segment::Kind::kMove:
            return addLine(segment.from);
    }
}

void CentreLineReader::addLine(Vector2 from) noexcept {
    edges_.push({from, {}, {}, 0.0, StrokeJoint::kCorner, false});
}

void CentreLineReader::addBezier(Bezier curve) noexcept {
    if (!dropNearControls(curve, steps_.nearby())) return addLine(curve.p0);
    const BezierCurve bezier = {BezierPolynomial(curve)};
    CurveCutter(bezier, steps_, edges_).cut(1.0, 1);
}

void CentreLineReader::addArc(const Segment& segment) noexcept {
    CenterArc arc;
    const ArcKind kind = toCenterForm(segment.arc(), arc);
    if (kind == ArcKind::kLine) return addLine(segment.from);
    if (kind == ArcKind::kNothing) return;
    const double sweep = std::fabs(arc.sweep);
    const double outerRadius = arc.largerRadius + steps_.halfWidth;
    const double step = std::min(std::sqrt(4.0 * steps_.flatness / outerRadius), kPi / 4);
    const int32_t wanted = roundUpSegments(sweep / step);
    CurveCutter(ArcCurve{arc}, steps_, edges_).cut(sweep, std::min(wanted, steps_.spare + 1));
}

/// False for a subpath that is too large.
bool CentreLineReader::makeRun(StrokeRun& run) noexcept {
    constexpr double kReach = 1.5;  // of any part but a miter, in half line widths
    const double largest = largestCoordinate();
    if (!(largest + kReach * steps_.halfWidth <= kLargestCoordinate)) return false;
    // Steps of a path add up their roundings: its ends may miss each other by a few of them.
    const int32_t count =
        keepDistinctEdges(2.0 * static_cast<double>(base::kSmallestExtent) * largest);
    const bool isClosed = isClosed_ && count > 1;
    if (isClosed) edges_[count] = edges_[0];
    run = {edges_.data(), count, isClosed};
    return true;
}

double CentreLineReader::largestCoordinate() const noexcept {
    double largest = 0.0;
    for (const StrokeEdge& edge : edges_) {
        largest = std::max({largest, std::fabs(edge.start.x), std::fabs(edge.start.y)});
    }
    return largest;
}

/// Takes out edges no longer than `noise` in x and in y, whose direction is that of rounding alone,
/// completes the others, and returns how many they are.
int32_t CentreLineReader::keepDistinctEdges(double noise) noexcept {
    const int32_t count = edges_.count() - 1;
    Vector2 at = edges_[0].start;
    StrokeJoint joint = StrokeJoint::kSmooth;
    int32_t kept = 0;
    for (int32_t i = 0; i < count; ++i) {
        StrokeEdge edge = edges_[i];
        const Vector2 end = edges_[i + 1].start;
        joint = std::max(joint, edge.joint);
        if (coincide(at, end, noise)) {
            joint = std::max(joint, StrokeJoint::kRound);
            continue;
        }
        edge.start = at;
        edge.joint = joint;
        edge.length = lengthOf(end - at);
        if (!edge.isCurved) edge.direction = edge.endDirection = unit(end - at);
        edges_[kept++] = edge;
        joint = StrokeJoint::kSmooth;
        at = end;
    }
    edges_[kept] = {at, {1.0, 0.0}, {1.0, 0.0}, 0.0, StrokeJoint::kCorner, false};
    return kept;
}

}  // namespace vg
