#pragma once

#include "vg/raster/active_edges.h"
#include "vg/raster/coverage_row.h"
#include "vg/raster/draw_params.h"
#include "vg/raster/exact_sweep.h"
#include "vg/raster/sweep_lines.h"
#include "vg/raster/sweep_target.h"

namespace vg::raster {

/// Turns a polygon into rows of coverage, from the top of the surface down.
///
/// The best quality has a sweep of its own (ExactSweep). The others visit sample lines: on each the
/// fill rule makes spans of the active edges, each span adds its two boundaries to the coverage
/// row, and at the end of each pixel row the span function is called.
class Sweep {
public:
    /// False when memory runs out; the target may then be drawn on in part.
    [[nodiscard]] bool run(const FixedPolygon& polygon, FillRule rule, Quality quality,
                           SweepTarget& target) noexcept;

    void shrinkToFit() noexcept;

private:
    template <class Sample>
    [[nodiscard]] bool sweepSamples(const FixedPolygon& polygon, FillRule rule,
                                    SweepTarget& target) noexcept;
    template <class Sample>
    void addSampleLine(FillRule rule, int32_t y) noexcept;
    void flushRow(int32_t row, SweepTarget& target) noexcept;

    ExactSweep exact_;
    base::Array<RasterEdge> edges_;
    SweepLines lines_;
    ActiveEdges active_;
    CoverageRow row_;
};

}  // namespace vg::raster
