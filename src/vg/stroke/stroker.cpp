// Strokes by offset curves: one pass over the edges of a run writes the left side into the outline
// and the right side into a buffer, which is appended backwards at the end. Inner sides of joins
// and curves bent within half the width are completed so that the non-zero rule fills the union of
// what every edge sweeps.

#include "vg/stroke/stroker.h"

#include <algorithm>
#include <cmath>

#include "vg/path/path.h"
#include "vg/stroke/centre_line.h"
#include "vg/stroke/round_fan.h"
#include "vg/stroke/stroke_caps.h"
#include "vg/stroke/stroke_joins.h"

namespace vg {

namespace {

/// Writes the outlines of runs, one after the other.
class OutlineWriter {
public:
    OutlineWriter(const StrokeParams& params, base::Array<raster::Point>& right,
                  base::Array<raster::Point>& folds, Outline& outline) noexcept
        : params_(params),
          halfWidth_(static_cast<double>(params.halfWidth)),
          fan_(halfWidth_, static_cast<double>(params.flatness)),
          joiner_(halfWidth_, params.join, miterLengthSquared(params),
                  0.5 * static_cast<double>(params.flatness), fan_),
          left_(outline.points),
          right_(right),
          folds_(folds),
          contourSizes_(outline.contourSizes) {}

    void add(const StrokeRun& run) noexcept {
        right_.clear();
        folds_.clear();
        contourStart_ = left_.count();
        if (run.isClosed) {
            addClosed(run);
        } else {
            addOpen(run);
        }
        addFolds();
    }

    bool failed() const noexcept {
        return left_.failed() || right_.failed() || folds_.failed() || contourSizes_.failed();
    }

private:
    /// Where the normals of an edge's two ends meet within half the width, on the inner side.
    struct Fold {
        enum class Side { kNone, kLeft, kRight };
        Side side = Side::kNone;
        Vector2 apex;
    };

    /// Miters end where floats do: places of a run leave half of their range.
    static double miterLengthSquared(const StrokeParams& params) noexcept {
        constexpr double kRoom = CentreLineReader::kLargestCoordinate;
        return std::min(static_cast<double>(params.miterLengthSquared), kRoom * kRoom);
    }

    void addOpen(const StrokeRun& run) noexcept;
    void addClosed(const StrokeRun& run) noexcept;
    void addEdge(const StrokeEdge& edge, Vector2 end) noexcept;
    double addVertex(const StrokeEdge& before, const StrokeEdge& after) noexcept;
    void addSmooth(const StrokeEdge& before, const StrokeEdge& after) noexcept;
    double addJoin(const StrokeEdge& before, const StrokeEdge& after, double reach) noexcept;
    Fold foldOf(const StrokeEdge& edge, Vector2 end) const noexcept;
    void addFolds() noexcept;
    void addRightReversed() noexcept;
    void endContour() noexcept;

    /// To the left of a direction of length 1.
    Vector2 offset(Vector2 direction) const noexcept {
        return perpendicular(direction) * halfWidth_;
    }

    const StrokeParams& params_;
    double halfWidth_;
    RoundFan fan_;
    StrokeJoiner joiner_;
    base::Array<raster::Point>& left_;  ///< the outline itself
    base::Array<raster::Point>& right_;
    base::Array<raster::Point>& folds_;
    base::Array<int32_t>& contourSizes_;
    int32_t contourStart_ = 0;
    Fold::Side lastFold_ = Fold::Side::kNone;  ///< of the edge before, in the same curve
};

// Out along the left side, round the end, back along the right side, round the start.
void OutlineWriter::addOpen(const StrokeRun& run) noexcept {
    const bool isDot = run.count == 0;
    if (isDot && params_.startCap == VG_CAP_BUTT && params_.endCap == VG_CAP_BUTT) return;
    const Vector2 start = run.edges[0].start;
    const Vector2 end = run.edges[run.count].start;
    const Vector2 startOffset = offset(run.edges[0].direction);
    const Vector2 endOffset = isDot ? startOffset : offset(run.edges[run.count - 1].endDirection);
    if (!isDot) {
        left_.push(toPoint(start + startOffset));
        right_.push(toPoint(start - startOffset));
        addEdge(run.edges[0], run.endOf(0));
    }
    for (int32_t i = 1; i < run.count; ++i) {
        addVertex(run.edges[i - 1], run.edges[i]);
        addEdge(run.edges[i], run.endOf(i));
    }
    left_.push(toPoint(end + endOffset));
    addCap(params_.endCap, end, endOffset, fan_, left_);
    right_.push(toPoint(end - endOffset));
    addRightReversed();
    addCap(params_.startCap, start, startOffset * -1.0, fan_, left_);
    endContour();
}

// Each kite that a side leaves out (see StrokeJoiner) takes one layer away where two edges overlap.
// A place in k kites is in more than k edges, so one layer stays, unless every vertex of a closed
// run leaves out a kite on the same side and all of them have that place in common: the middle of
// a ring whose hole is closed by its own width. Two neighbours that share no length of the edge
// between them have nothing in common; failing that, the last corner keeps the long form.
void OutlineWriter::addClosed(const StrokeRun& run) noexcept {
    bool mayShareKites = true;
    double previousKite = 0.0;
    addEdge(run.edges[0], run.endOf(0));
    for (int32_t i = 1; i < run.count; ++i) {
        const StrokeEdge& before = run.edges[i - 1];
        const double kite = addVertex(before, run.edges[i]);
        addEdge(run.edges[i], run.endOf(i));
        const bool isFirst = i == 1;
        const bool overlaps =
            isFirst ? kite != 0.0
                    : kite * previousKite > 0.0 && std::fabs(kite + previousKite) > before.length;
        mayShareKites &= overlaps;
        previousKite = kite;
    }
    const StrokeEdge& before = run.edges[run.count - 1];
    const StrokeEdge& after = run.edges[0];
    addJoin(before, after, mayShareKites ? 0.0 : std::min(before.length, after.length));
    endContour();
    addRightReversed();
    endContour();
}

// Where an edge bends within half the width, the inner end of its normal runs back:
//
//       start ______ end           The side goes by way of the apex, where the normals meet. What
//             \    /               they sweep beyond it is a triangle of its own, the other way
//              \  /                round: in the outline it would count against other edges.
//               \/ apex
//               /\                                                                              .
//      end + n /__\ start + n
//
// With the step D from start to end and unit tangents T0, T1 the normals meet at the distance
// D.T1 / (T0 x T1) from the start and D.T0 / (T0 x T1) from the end.
OutlineWriter::Fold OutlineWriter::foldOf(const StrokeEdge& edge, Vector2 end) const noexcept {
    const Vector2 step = end - edge.start;
    const double turn = cross(edge.direction, edge.endDirection);
    const double fromStart = dot(step, edge.endDirection);
    const double fromEnd = dot(step, edge.direction);
    const double width = std::fabs(turn) * halfWidth_;
    if (!(std::max(fromStart, fromEnd) < width && std::min(fromStart, fromEnd) > 0.0)) return {};
    return {turn > 0.0 ? Fold::Side::kLeft : Fold::Side::kRight,
            edge.start + perpendicular(edge.direction) * (fromStart / turn)};
}

void OutlineWriter::addEdge(const StrokeEdge& edge, Vector2 end) noexcept {
    if (!edge.isCurved) return;
    const Fold fold = foldOf(edge, end);
    const bool goesOn = edge.joint == StrokeJoint::kSmooth && fold.side == lastFold_;
    lastFold_ = fold.side;
    if (fold.side == Fold::Side::kNone) return;
    const bool isLeft = fold.side == Fold::Side::kLeft;
    base::Array<raster::Point>& inner = isLeft ? left_ : right_;
    if (goesOn) inner.pop();  // from apex to apex: out along the normal and back is nothing
    inner.push(toPoint(fold.apex));
    const double sign = isLeft ? 1.0 : -1.0;
    const Vector2 atStart = edge.start + offset(edge.direction) * sign;
    const Vector2 atEnd = end + offset(edge.endDirection) * sign;
    folds_.push(toPoint(fold.apex));
    folds_.push(toPoint(isLeft ? atEnd : atStart));
    folds_.push(toPoint(isLeft ? atStart : atEnd));
}

double OutlineWriter::addVertex(const StrokeEdge& before, const StrokeEdge& after) noexcept {
    if (after.joint != StrokeJoint::kSmooth) {
        return addJoin(before, after, std::min(before.length, after.length));
    }
    addSmooth(before, after);
    return 0.0;
}

// Points of the offset curve lie outside of it by a twelfth of the squared turn of a step, too, as
// those of the centre line do; both steps together turn by twice that angle.
void OutlineWriter::addSmooth(const StrokeEdge& before, const StrokeEdge& after) noexcept {
    const double cosine = std::max(dot(before.direction, after.endDirection), 0.0);
    const Vector2 normal = offset(after.direction) * (1.0 + (1.0 - cosine) * (1.0 / 24.0));
    left_.push(toPoint(after.start + normal));
    right_.push(toPoint(after.start - normal));
}

double OutlineWriter::addJoin(const StrokeEdge& before, const StrokeEdge& after,
                              double reach) noexcept {
    return joiner_.add({after.start, offset(before.endDirection), offset(after.direction), reach,
                        after.joint == StrokeJoint::kRound, before.isCurved || after.isCurved},
                       left_, right_);
}

void OutlineWriter::addFolds() noexcept {
    const int32_t count = left_.count();
    if (folds_.isEmpty() || !left_.resize(count + folds_.count())) return;
    std::copy(folds_.begin(), folds_.end(), left_.begin() + count);
    for (int32_t i = 0; i < folds_.count(); i += 3) contourSizes_.push(3);
}

void OutlineWriter::addRightReversed() noexcept {
    const int32_t count = left_.count();
    if (!left_.resize(count + right_.count())) return;
    std::reverse_copy(right_.begin(), right_.end(), left_.begin() + count);
}

void OutlineWriter::endContour() noexcept {
    contourSizes_.push(left_.count() - contourStart_);
    contourStart_ = left_.count();
}

}  // namespace

bool Stroker::stroke(const Path& path, const StrokeParams& params, Outline& outline) noexcept {
    outline.clear();
    rightSide_.clearFailure();
    folds_.clearFailure();
    const bool isDrawn = params.halfWidth > 0.0F && std::isfinite(params.halfWidth);
    if (!isDrawn || addRuns(path, params, outline)) return true;
    outline.clear();
    return false;
}

bool Stroker::addRuns(const Path& path, const StrokeParams& params, Outline& outline) noexcept {
    if (!dasher_.setPattern({params.dashes, params.dashCount, params.dashTotal, params.dashPhase,
                             params.dashPhaseReset})) {
        return false;
    }
    OutlineWriter writer(params, rightSide_, folds_, outline);
    CentreLineReader reader(path, static_cast<double>(params.halfWidth),
                            static_cast<double>(params.flatness), edges_);
    for (StrokeRun run; reader.next(run);) {
        if (!dasher_.begin(run)) return false;
        for (StrokeRun dash; dasher_.next(dash);) writer.add(dash);
        if (writer.failed()) return false;
    }
    return !reader.failed();
}

void Stroker::shrinkBuffers() noexcept {
    dasher_.shrinkBuffers();
    edges_.shrinkToFit();
    rightSide_.shrinkToFit();
    folds_.shrinkToFit();
}

}  // namespace vg
