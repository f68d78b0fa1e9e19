#pragma once

#include "base/array.h"
#include "vg/geometry/outline.h"
#include "vg/stroke/dasher.h"
#include "vg/stroke/stroke_run.h"
#include "vg/vg.h"

namespace vg {

/// How a path is stroked, in user space.
struct StrokeParams {
    float halfWidth = 0.5F;  ///< at or below 0: nothing
    VGint startCap = VG_CAP_BUTT;
    VGint endCap = VG_CAP_BUTT;
    VGint join = VG_JOIN_MITER;
    float miterLengthSquared = 4.0F;  ///< (halfWidth * miter limit)^2
    float flatness = 0.1F;            ///< r: curves and round parts keep to a third of it
    const float* dashes = nullptr;    ///< on, off, on, off...; none negative
    int32_t dashCount = 0;            ///< even; 0: a solid stroke
    float dashTotal = 0.0F;           ///< sum of dashes
    float dashPhase = 0.0F;
    bool dashPhaseReset = false;  ///< the phase starts anew at each subpath
};

struct Path;

/// Makes outlines of strokes, to be filled with the non-zero rule; keeps its work buffers from call
/// to call.
///
/// The stroke of an edge is the area that the width sweeps: for a curve bent within half the width
/// that goes on beyond its centre. Every contour runs the same way round what it adds, so that no
/// two of them cancel out. An open run makes one contour, a closed one two, and every step around a
/// bend within half the width another one. Per edge of the path and per dash there are at most a
/// few points; round parts add at most RoundFan::kMaxPoints.
class Stroker {
public:
    /// Replaces `outline` by the outline of the stroked path. False when memory runs out; the
    /// outline is then empty.
    [[nodiscard]] bool stroke(const Path& path, const StrokeParams& params,
                              Outline& outline) noexcept;

    /// Gives unused memory back.
    void shrinkBuffers() noexcept;

private:
    bool addRuns(const Path& path, const StrokeParams& params, Outline& outline) noexcept;

    Dasher dasher_;
    base::Array<StrokeEdge> edges_;         ///< of the current subpath
    base::Array<raster::Point> rightSide_;  ///< of the current run, from its start to its end
    base::Array<raster::Point> folds_;      ///< triangles of the current run
};

}  // namespace vg
