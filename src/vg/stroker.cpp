#include "vg/stroker.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/finite.h"
#include "vg/round_fan.h"
#include "vg/stroke_caps.h"
#include "vg/stroke_joins.h"

namespace vg {

namespace {

constexpr double kLargestFloat = std::numeric_limits<float>::max();

/// The largest absolute coordinate; infinite when one of them is not a finite number.
double largestCoordinate(const FlattenedPath& path) noexcept {
    float largest = 0.0F;
    bool isFinite = true;
    for (const raster::Point& point : path.points) {
        const float x = std::fabs(point.x);
        const float y = std::fabs(point.y);
        isFinite &= std::isfinite(x) && std::isfinite(y);
        largest = std::max(largest, std::max(x, y));
    }
    return isFinite ? static_cast<double>(largest) : std::numeric_limits<double>::infinity();
}

void clearFailures(StrokeOutline& outline) noexcept {
    outline.points.clearFailure();
    outline.contourSizes.clearFailure();
}

/// Writes the outlines of runs, one after the other.
class OutlineWriter {
public:
    /// Miters end where floats do: points of the path lie within `largest`.
    OutlineWriter(const StrokeParams& params, double largest, base::Array<raster::Point>& right,
                  StrokeOutline& outline) noexcept
        : params_(params),
          halfWidth_(static_cast<double>(params.halfWidth)),
          fan_(halfWidth_, static_cast<double>(params.flatness)),
          joiner_(halfWidth_, params.join, miterLengthSquared(params, largest), fan_),
          left_(outline.points),
          right_(right),
          contourSizes_(outline.contourSizes) {}

    void add(const StrokeRun& run) noexcept {
        right_.clear();
        contourStart_ = left_.count();
        if (run.isClosed) {
            addClosed(run);
        } else {
            addOpen(run);
        }
    }

    bool failed() const noexcept {
        return left_.failed() || right_.failed() || contourSizes_.failed();
    }

private:
    static double miterLengthSquared(const StrokeParams& params, double largest) noexcept {
        const double room = kLargestFloat - largest;
        return std::min(static_cast<double>(params.miterLengthSquared), room * room);
    }

    void addOpen(const StrokeRun& run) noexcept;
    void addClosed(const StrokeRun& run) noexcept;
    double addJoin(const StrokeEdge& before, const StrokeEdge& after, double reach) noexcept;
    void addRightReversed() noexcept;
    void endContour() noexcept;

    Vector2 offsetOf(const StrokeEdge& edge) const noexcept {
        return perpendicular(edge.direction) * halfWidth_;
    }

    const StrokeParams& params_;
    double halfWidth_;
    RoundFan fan_;
    StrokeJoiner joiner_;
    base::Array<raster::Point>& left_;  ///< the outline itself
    base::Array<raster::Point>& right_;
    base::Array<int32_t>& contourSizes_;
    int32_t contourStart_ = 0;
};

// Out along the left side, round the end, back along the right side, round the start.
void OutlineWriter::addOpen(const StrokeRun& run) noexcept {
    const bool isDot = run.count == 0;
    if (isDot && params_.startCap == VG_CAP_BUTT && params_.endCap == VG_CAP_BUTT) return;
    const Vector2 start = run.edges[0].start;
    const Vector2 end = run.edges[run.count].start;
    const Vector2 startOffset = offsetOf(run.edges[0]);
    const Vector2 endOffset = offsetOf(run.edges[std::max(run.count - 1, 0)]);
    if (!isDot) {
        left_.push(toPoint(start + startOffset));
        right_.push(toPoint(start - startOffset));
    }
    for (int32_t i = 1; i < run.count; ++i) {
        const StrokeEdge& before = run.edges[i - 1];
        const StrokeEdge& after = run.edges[i];
        addJoin(before, after, std::min(before.length, after.length));
    }
    left_.push(toPoint(end + endOffset));
    addCap(params_.endCap, end, endOffset, fan_, left_);
    right_.push(toPoint(end - endOffset));
    addRightReversed();
    addCap(params_.startCap, start, startOffset * -1.0, fan_, left_);
    endContour();
}

// Each kite that a side leaves out (see StrokeJoiner) takes one layer away where two edges overlap.
// A place in k kites is in more than k edges, so one layer stays, unless every corner of a closed
// run leaves out a kite on the same side and all of them have that place in common: the middle of
// a ring whose hole is closed by its own width. Two neighbours that share no length of the edge
// between them have nothing in common; failing that, the last corner keeps the long form.
void OutlineWriter::addClosed(const StrokeRun& run) noexcept {
    bool mayShareKites = true;
    double previousKite = 0.0;
    for (int32_t i = 1; i < run.count; ++i) {
        const StrokeEdge& before = run.edges[i - 1];
        const StrokeEdge& after = run.edges[i];
        const double kite = addJoin(before, after, std::min(before.length, after.length));
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

double OutlineWriter::addJoin(const StrokeEdge& before, const StrokeEdge& after,
                              double reach) noexcept {
    return joiner_.add({after.start, offsetOf(before), offsetOf(after), reach, after.isSmoothStart},
                       left_, right_);
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

bool Stroker::stroke(const FlattenedPath& path, const StrokeParams& params,
                     StrokeOutline& outline) noexcept {
    clearFailures(outline);
    outline.clear();
    rightSide_.clearFailure();
    const double largest = largestCoordinate(path);
    constexpr double kReach = 1.5;  // of any part but a miter, in half line widths
    const bool fits = largest + kReach * static_cast<double>(params.halfWidth) <= kLargestFloat;
    if (!(params.halfWidth > 0.0F) || !fits) return true;
    if (addContours(path, params, largest, outline)) return true;
    clearFailures(outline);
    outline.clear();
    return false;
}

bool Stroker::addContours(const FlattenedPath& path, const StrokeParams& params, double largest,
                          StrokeOutline& outline) noexcept {
    if (!dasher_.setPattern({params.dashes, params.dashCount, params.dashTotal, params.dashPhase,
                             params.dashPhaseReset})) {
        return false;
    }
    // Steps of a path add up their roundings: its ends may miss each other by a few of them.
    const double noise = 2.0 * static_cast<double>(base::kSmallestExtent) * largest;
    OutlineWriter writer(params, largest, rightSide_, outline);
    int32_t first = 0;
    for (int32_t i = 0; i < path.contourSizes.count(); ++i) {
        const int32_t size = path.contourSizes[i];
        const ContourView contour = {path.points.data() + first, path.pointFlags.data() + first,
                                     size, (path.contourFlags[i] & FlattenedPath::kClosed) != 0};
        StrokeRun run;
        if (!makeRun(contour, noise, edges_, run) || !dasher_.begin(run)) return false;
        for (StrokeRun dash; dasher_.next(dash);) writer.add(dash);
        if (writer.failed()) return false;
        first += size;
    }
    return true;
}

void Stroker::shrinkBuffers() noexcept {
    dasher_.shrinkBuffers();
    edges_.shrinkToFit();
    rightSide_.shrinkToFit();
}

}  // namespace vg
