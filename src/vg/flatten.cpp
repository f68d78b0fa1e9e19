#include "vg/flatten.h"

#include <algorithm>
#include <cmath>

#include "vg/bezier.h"
#include "vg/curve_segments.h"
#include "vg/segment_reader.h"
#include "vg/trigonometry.h"

namespace vg {

namespace {

class Flattener {
public:
    Flattener(const FlatteningTolerance& tolerance, FlattenedPath& result,
              int32_t segmentCount) noexcept
        : tolerance_(tolerance),
          result_(result),
          spareSegments_(2 * std::max(0, kMaxFlattenedPoints / 2 - segmentCount)) {}

    void add(const Segment& segment) noexcept;

    /// Ends the last contour. False when memory ran out on the way.
    bool finish() noexcept;

private:
    void addLine(const Segment& segment) noexcept;
    void addCurve(const Segment& segment, const Bezier& curve) noexcept;
    void addArc(const Segment& segment) noexcept;
    void addClose(const Segment& segment) noexcept;

    void addPieces(const Bezier& curve, int32_t atLeast) noexcept;
    void addUniformly(const Bezier& curve, int32_t wanted) noexcept;
    int32_t takeSegments(int32_t wanted) noexcept;

    void openContour(Vector2 start) noexcept;
    void endContour(uint8_t flags) noexcept;
    void push(Vector2 point, uint8_t flags) noexcept;
    template <class PointAt>
    void pushInside(int32_t count, const PointAt& pointAt) noexcept;
    bool failed() const noexcept {
        return result_.points.failed() || result_.pointFlags.failed() ||
               result_.contourSizes.failed() || result_.contourFlags.failed();
    }

    const FlatteningTolerance& tolerance_;
    FlattenedPath& result_;
    int32_t spareSegments_;  ///< that curves may still be cut into beyond one each
    int32_t contourStart_ = 0;
    bool isOpen_ = false;
    bool followsMove_ = false;
};

void Flattener::add(const Segment& segment) noexcept {
    switch (segment.kind) {
        case Segment::Kind::kMove:
            endContour(0);
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
    endContour(0);
    return !failed();
}

void Flattener::addLine(const Segment& segment) noexcept {
    openContour(segment.from);
    push(segment.to, 0);
}

void Flattener::addCurve(const Segment& segment, const Bezier& curve) noexcept {
    openContour(segment.from);
    if (isFlat(curve, tolerance_)) return push(segment.to, 0);
    addPieces(curve, std::min(tolerance_.minimumSubdivisions, kMaxCurveSegments));
    if (failed()) return;
    result_.points.last() = toPoint(segment.to);
    result_.pointFlags.last() = 0;
}

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
        pushInside(segments - 1, [&](int32_t i) { return arc.at(i * step); });
    }
    push(segment.to, 0);
}

void Flattener::addClose(const Segment& segment) noexcept {
    if (followsMove_) openContour(segment.from);
    endContour(FlattenedPath::kClosed);
}

// Halving spends segments where the curve bends; cutting uniformly is cheaper per segment. Halves
// need at most half of the uniform count, which bounds the depth at log2(kMaxHalvedSegments).
void Flattener::addPieces(const Bezier& curve, int32_t atLeast) noexcept {
    constexpr double kMaxHalvedSegments = 1024.0;
    constexpr double kFewSegments = 4.0;
    if (isFlat(curve, tolerance_)) return addUniformly(curve, atLeast);
    const double uniform = uniformSegments(curve, tolerance_);
    double wanted = std::max(uniform, 2.0);
    if (uniform > 2.0) {
        wanted = std::min(uniform, alignedSegments(curve, tolerance_));
        if (wanted > kFewSegments &&
            uniform <= std::min(kMaxHalvedSegments, 1.0 * spareSegments_)) {
            Bezier left;
            Bezier right;
            curve.halve(left, right);
            --spareSegments_;
            addPieces(left, (atLeast + 1) / 2);
            return addPieces(right, (atLeast + 1) / 2);
        }
    }
    addUniformly(curve, std::max(atLeast, roundUpSegments(wanted)));
}

void Flattener::addUniformly(const Bezier& curve, int32_t wanted) noexcept {
    const int32_t segments = takeSegments(wanted);
    const BezierPolynomial polynomial(curve);
    const double step = 1.0 / segments;
    pushInside(segments - 1, [&](int32_t i) { return polynomial.at(i * step); });
    push(curve.p3, FlattenedPath::kInsideCurve);
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
    push(start, 0);
}

void Flattener::endContour(uint8_t flags) noexcept {
    if (!isOpen_ || failed()) return;
    isOpen_ = false;
    base::Array<raster::Point>& points = result_.points;
    int32_t size = points.count() - contourStart_;
    const raster::Point first = points[contourStart_];
    const bool returns = first.x == points.last().x && first.y == points.last().y;
    if (flags == FlattenedPath::kClosed && returns && size > 1) {
        points.pop();
        result_.pointFlags.pop();
        --size;
    }
    result_.contourSizes.push(size);
    result_.contourFlags.push(flags);
}

void Flattener::push(Vector2 point, uint8_t flags) noexcept {
    result_.points.push(toPoint(point));
    result_.pointFlags.push(flags);
}

/// Appends pointAt(1) to pointAt(count).
template <class PointAt>
void Flattener::pushInside(int32_t count, const PointAt& pointAt) noexcept {
    const int32_t before = result_.points.count();
    if (!result_.points.resize(before + count) || !result_.pointFlags.resize(before + count)) {
        return;
    }
    raster::Point* points = result_.points.data() + before;
    for (int32_t i = 0; i < count; ++i) points[i] = toPoint(pointAt(i + 1));
    std::fill_n(result_.pointFlags.data() + before, count, FlattenedPath::kInsideCurve);
}

void clearFailures(FlattenedPath& path) noexcept {
    path.points.clearFailure();
    path.pointFlags.clearFailure();
    path.contourSizes.clearFailure();
    path.contourFlags.clearFailure();
}

}  // namespace

bool flatten(const Path& path, const FlatteningTolerance& tolerance,
             FlattenedPath& result) noexcept {
    clearFailures(result);
    result.clear();
    Flattener flattener(tolerance, result, path.segments.count());
    for (SegmentReader reader(path); reader.next();) flattener.add(reader.segment());
    if (flattener.finish()) return true;
    clearFailures(result);
    result.clear();
    return false;
}

}  // namespace vg
