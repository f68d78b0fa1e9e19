#pragma once

#include "vg/raster/coverage/coverage_row.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/replay/active_edges.h"
#include "vg/raster/sweep/sweep_lines.h"
#include "vg/raster/sweep/sweep_target.h"

namespace vg::raster {

/// The sweeps as they are told: one band or scanline after the other, every active edge sorted
/// in each, one pixel row of coverage. The definition of right for the production sweep.
class LiteralSweep {
public:
    /// False when memory runs out.
    [[nodiscard]] bool run(const FixedPolygon& polygon, FillRule rule, Quality quality,
                           SweepTarget& target) noexcept;

private:
    [[nodiscard]] bool sweepBands(const FixedPolygon& polygon, FillRule rule,
                                  SweepTarget& target) noexcept;
    template <class Sample>
    [[nodiscard]] bool sweepSamples(const FixedPolygon& polygon, FillRule rule,
                                    SweepTarget& target) noexcept;
    template <class Sample>
    void addSampleLine(FillRule rule, int32_t y) noexcept;
    void addBand(FillRule rule, int32_t top, int32_t bottom) noexcept;
    void flushRow(int32_t row, SweepTarget& target) noexcept;

    base::Array<RasterEdge> edges_;
    SweepLines lines_;
    ActiveEdges active_;
    CoverageRow row_;
};

}  // namespace vg::raster
