#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/geometry/bezier.h"
#include "vg/path/segment_reader.h"
#include "vg/stroke/stroke_run.h"

namespace vg {

/// How curves are cut into the edges of a stroke.
struct StrokeSteps {
    double halfWidth;
    double flatness;  ///< the sides leave the offsets of a curve by no more than a third of it
    int32_t spare;    ///< edges that curves may still be cut into beyond one each

    /// What is no larger counts as a single place.
    double nearby() const noexcept { return flatness * (1.0 / 64); }
};

/// Reads the subpaths of a path as runs to be stroked, one at a time.
///
/// A curve becomes edges that know the curve's direction at their ends, so that offsets lie on its
/// true offset curve, and joins and caps follow its true tangent at every scale and width. Its
/// places inside lie a little outside of the curve, as those of a flattened path do (flatten.h).
///
/// A subpath without any extent is a dot towards +x; a lone move is nothing, a move followed at
/// once by a close is a dot. Subpaths so large that floats might not hold their outline are left
/// out.
class CentreLineReader {
public:
    /// Half of the largest float: the other half is left for what a stroke adds.
    static constexpr double kLargestCoordinate = 0x1p127;

    /// Works in `edges`, which must outlive the reader. Precondition: halfWidth > 0. A
    /// flatness that is not above 0 asks for the most steps.
    CentreLineReader(const Path& path, double halfWidth, double flatness,
                     base::Array<StrokeEdge>& edges) noexcept;

    /// Fetches the next subpath, valid until the next call. False at the end, and when memory runs
    /// out.
    bool next(StrokeRun& run) noexcept;

    bool failed() const noexcept { return edges_.failed(); }

private:
    bool readSubpath() noexcept;
    void add(const Segment& segment) noexcept;
    void addLine(Vector2 from) noexcept;
    void addBezier(Bezier curve) noexcept;
    void addArc(const Segment& segment) noexcept;
    bool makeRun(StrokeRun& run) noexcept;
    double largestCoordinate() const noexcept;
    int32_t keepDistinctEdges(double noise) noexcept;

    SegmentReader reader_;
    StrokeSteps steps_;
    base::Array<StrokeEdge>& edges_;  ///< of the subpath, and the entry that ends them
    bool followsMove_ = false;
    bool isClosed_ = false;
};

}  // namespace vg
