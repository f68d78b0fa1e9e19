// Flattens curves into points at equal steps of their parameter, as many as Wang's bound asks for
// (curve_segments.h), after halving long curves by de Casteljau's algorithm where that saves
// points. Inner points are moved outwards to keep the enclosed area.

#include "vg/path/flatten.h"

#include <algorithm>
#include <cmath>

#include "vg/geometry/bezier.h"
#include "vg/geometry/curve_segments.h"
#include "vg/geometry/trigonometry.h"
#include "vg/path/segment_reader.h"

namespace vg {

namespace {

/// What of the second derivative at the start of a curve is square to it; none next to a cusp,
/// where a step turns by a radian or more.
Vector2 bendAt(const BezierPolynomial& curve, double step) noexcept {
    const Vector2 velocity = curve.velocity(0.0);
    const double bend = cross(velocity, curve.acceleration(0.0));
    const double square = dot(velocity, velocity);
    if (!(std::fabs(bend) * step < square)) return {};
    return perpendicular(velocity) * (bend / square);
}

class Flattener {
public:
    Flattener(const FlatteningTolerance& tolerance, Outline& result, int32_t segmentCount) noexcept
        : tolerance_(tolerance),
          result_(result),
          spareSegments_(2 * std::max(0, kMaxFlattenedPoints / 2 - segmentCount)) {}

    void add(const Segment& segment) noexcept;

    /// Ends the last contour. False when memory ran out on the way.
    bool finish() noexcept;

private:
    /// A part of a Bezier curve with its place in the whole one.
    struct Part {
        Bezier curve;
        double width;  ///< in the whole curve's parameter: a power of 1/2
        int32_t atLeast;
    };

    void addLine(const Segment& segment) noexcept;
    void addCurve(const Segment& segment, const Bezier& curve) noexcept;
    void addArc(const Segment& segment) noexcept;
    void addClose(const Segment& segment) noexcept;

    void addParts(const Part& part) noexcept;
    void addUniformly(const Part& part, int32_t wanted) noexcept;
    int32_t takeSegments(int32_t wanted) noexcept;

    void openContour(Vector2 start) noexcept;
    void endContour(bool isClosed) noexcept;
    void push(Vector2 point) noexcept { result_.points.push(toPoint(point)); }
    template <class PointAt>
    void pushInside(int32_t count, const PointAt& pointAt) noexcept;

    const FlatteningTolerance& tolerance_;
    Outline& result_;
    int32_t spareSegments_;  ///< that curves may still be cut into beyond one each
    int32_t contourStart_ = 0;
    double previousStep_ = 0.0;  ///< of the whole curve's parameter; 0 at its start
    bool isOpen_ = false;
    bool followsMove_ = false;
};

void Flattener::add(const Segment& segment) noexcept {
    switch (segment.kind) {
        case Segment::Kind::kMove:
            endContour(false);
            break;
        case Segment::Kind::kClose:
            addClose(segment);
            break;
        case Segment::Kind::kLine:
            addLine(segment);
            break;
        case Segment::Kind::kQuadratic:
            addCurve(segment, Bezier::fromQuadratic(segment.from, segment.control1, segment.to));
            break;
        case Segment::Kind::kCubic:
            addCurve(segment, {segment.from, segment.control1, segment.control2, segment.to});
            break;
        case Segment::Kind::kArc:
            addArc(segment);
            break;
    }
    followsMove_ = segment.kind == Segment::Kind::kMove;
}

bool Flattener::finish() noexcept {
    endContour(false);
    return !result_.failed();
}

void Flattener::addLine(const Segment& segment) noexcept {
    openContour(segment.from);
    push(segment.to);
}

void Flattener::addCurve(const Segment& segment, const Bezier& curve) noexcept {
    openContour(segment.from);
    if (isFlat(curve, tolerance_)) return push(segment.to);
    previousStep_ = 0.0;
    addParts({curve, 1.0, std::min(tolerance_.minimumSubdivisions, kMaxCurveSegments)});
    if (!result_.failed()) result_.points.last() = toPoint(segment.to);
}

// A step s of a circle with the radius R leaves out R^2 s^3 / 12 of its area; points inside at the
// radius R (1 + s^2 / 12) put that back.
void Flattener::addArc(const Segment& segment) noexcept {
    CenterArc arc;
    const ArcKind kind = toCenterForm(segment.arc(), arc);
    if (kind == ArcKind::kNothing) return;
    openContour(segment.from);
    if (kind == ArcKind::kArc) {
        const int32_t wanted = arcSegments(arc, tolerance_);
        const int32_t segments =
            takeSegments(wanted > 1 ? std::max(wanted, tolerance_.minimumSubdivisions) : 1);
        const double step = arc.sweep / segments;
        const CenterArc outer = arc.enlarged(step * step / 12.0);
        pushInside(segments - 1, [&](int32_t i) { return outer.at(i * step); });
    }
    push(segment.to);
}

void Flattener::addClose(const Segment& segment) noexcept {
    if (followsMove_) openContour(segment.from);
    endContour(true);
}

// Halving spends segments where the curve bends; cutting uniformly is cheaper per segment. Halves
// need at most half of the uniform count, which bounds the depth at log2(kMaxHalvedSegments).
void Flattener::addParts(const Part& part) noexcept {
    constexpr double kMaxHalvedSegments = 1024.0;
    constexpr double kFewSegments = 8.0;
    const Bezier& curve = part.curve;
    if (isFlat(curve, tolerance_)) return addUniformly(part, part.atLeast);
    const double uniform = uniformSegments(curve, tolerance_);
    double wanted = std::max(uniform, 2.0);
    if (uniform > 2.0) {
        wanted = std::min(uniform, alignedSegments(curve, tolerance_));
        if (wanted > kFewSegments &&
            uniform <= std::min(kMaxHalvedSegments, 1.0 * spareSegments_)) {
            Part left;
            Part right;
            curve.halve(left.curve, right.curve);
            left.width = right.width = 0.5 * part.width;
            left.atLeast = right.atLeast = (part.atLeast + 1) / 2;
            --spareSegments_;
            addParts(left);
            return addParts(right);
        }
    }
    addUniformly(part, std::max(part.atLeast, roundUpSegments(wanted)));
}

// Between points a step s apart a curve f leaves out an area as if it were |f''| s^2 / 12 away from
// its chord all along. Points moved outwards by that much, f - f'' s^2 / 12, put it back; where a
// step s meets another one t, by what of f'' s t / 12 is square to the curve. With f a polynomial
// so is the moved curve.
void Flattener::addUniformly(const Part& part, int32_t wanted) noexcept {
    const int32_t segments = takeSegments(wanted);
    const double step = 1.0 / segments;
    const BezierPolynomial polynomial(part.curve);
    if (previousStep_ > 0.0 && !result_.failed()) {
        const double steps = previousStep_ / part.width * step;
        result_.points.last() = toPoint(part.curve.p0 - bendAt(polynomial, step) * (steps / 12.0));
    }
    const BezierPolynomial moved = polynomial.withoutAcceleration(step * step / 12.0);
    pushInside(segments - 1, [&](int32_t i) { return moved.at(i * step); });
    push(part.curve.p3);
    previousStep_ = step * part.width;
}

int32_t Flattener::takeSegments(int32_t wanted) noexcept {
    const int32_t segments = std::min({wanted, kMaxCurveSegments, spareSegments_ + 1});
    spareSegments_ -= segments - 1;
    return segments;
}

void Flattener::openContour(Vector2 start) noexcept {
    if (isOpen_) return;
    isOpen_ = true;
    contourStart_ = result_.points.count();
    push(start);
}

void Flattener::endContour(bool isClosed) noexcept {
    if (!isOpen_ || result_.failed()) return;
    isOpen_ = false;
    base::Array<raster::Point>& points = result_.points;
    const raster::Point first = points[contourStart_];
    const bool returns = first.x == points.last().x && first.y == points.last().y;
    if (isClosed && returns && points.count() - contourStart_ > 1) points.pop();
    result_.contourSizes.push(points.count() - contourStart_);
}

/// Appends pointAt(1) to pointAt(count).
template <class PointAt>
void Flattener::pushInside(int32_t count, const PointAt& pointAt) noexcept {
    const int32_t before = result_.points.count();
    if (!result_.points.resize(before + count)) return;
    raster::Point* points = result_.points.data() + before;
    for (int32_t i = 0; i < count; ++i) points[i] = toPoint(pointAt(i + 1));
}

}  // namespace

bool flatten(const Path& path, const FlatteningTolerance& tolerance, Outline& result) noexcept {
    result.clear();
    Flattener flattener(tolerance, result, path.segments.count());
    for (SegmentReader reader(path); reader.next();) flattener.add(reader.segment());
    if (flattener.finish()) return true;
    result.clear();
    return false;
}

}  // namespace vg
