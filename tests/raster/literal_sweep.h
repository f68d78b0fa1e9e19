#pragma once

#include "vg/raster/active_edges.h"
#include "vg/raster/coverage_row.h"
#include "vg/raster/draw_params.h"
#include "vg/raster/sweep.h"
#include "vg/raster/sweep_lines.h"

namespace vg::raster {

/// The exact sweep as it is told: one band after the other, every active edge sorted in every
/// band, one pixel row of coverage. The definition of right for the production sweep.
class LiteralSweep {
public:
    /// False when memory runs out.
    [[nodiscard]] bool run(const FixedPolygon& polygon, FillRule rule,
                           SweepTarget& target) noexcept;

private:
    void addBand(FillRule rule, int32_t top, int32_t bottom) noexcept;
    void flushRow(int32_t row, SweepTarget& target) noexcept;

    base::Array<RasterEdge> edges_;
    SweepLines lines_;
    ActiveEdges active_;
    CoverageRow row_;
};

}  // namespace vg::raster
