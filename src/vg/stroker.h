#pragma once

#include "base/array.h"
#include "vg/dasher.h"
#include "vg/flattened_path.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/stroke_run.h"
#include "vg/vg.h"

namespace vg {

/// How a path is stroked, in user space.
struct StrokeParams {
    float halfWidth = 0.5F;  ///< at or below 0: nothing
    VGint startCap = VG_CAP_BUTT;
    VGint endCap = VG_CAP_BUTT;
    VGint join = VG_JOIN_MITER;
    float miterLengthSquared = 4.0F;  ///< (halfWidth * miter limit)^2
    float flatness = 0.1F;            ///< r: largest distance of a round part from its circle
    const float* dashes = nullptr;    ///< on, off, on, off...; none negative
    int32_t dashCount = 0;            ///< even; 0: a solid stroke
    float dashTotal = 0.0F;           ///< sum of dashes
    float dashPhase = 0.0F;
    bool dashPhaseReset = false;  ///< the phase starts anew at each subpath
};

/// The outline of a stroke: closed contours to be filled with the non-zero rule.
struct StrokeOutline {
    base::Array<raster::Point> points;
    base::Array<int32_t> contourSizes;

    raster::Polygon polygon() const noexcept {
        return {points.data(), points.count(), contourSizes.data(), contourSizes.count()};
    }
    void clear() noexcept {
        points.clear();
        contourSizes.clear();
    }
    void shrinkToFit() noexcept {
        points.shrinkToFit();
        contourSizes.shrinkToFit();
    }
};

/// Makes outlines of strokes; keeps its work buffers from call to call.
///
/// Every contour runs the same way round what it adds, so that no two of them cancel out. An open
/// run makes one contour, a closed one two. Nothing is stroked when a point of the path is not
/// finite, or so large that its outline might not be. Per edge of the path and per dash there are
/// at most a few points; round parts add at most RoundFan::kMaxPoints.
class Stroker {
public:
    /// Replaces `outline` by the outline of the stroked path. False when memory runs out; the
    /// outline is then empty.
    [[nodiscard]] bool stroke(const FlattenedPath& path, const StrokeParams& params,
                              StrokeOutline& outline) noexcept;

    /// Gives unused memory back.
    void shrinkBuffers() noexcept;

private:
    bool addContours(const FlattenedPath& path, const StrokeParams& params, double largest,
                     StrokeOutline& outline) noexcept;

    Dasher dasher_;
    base::Array<StrokeEdge> edges_;         ///< of the current subpath
    base::Array<raster::Point> rightSide_;  ///< of the current run, from its start to its end
};

}  // namespace vg
