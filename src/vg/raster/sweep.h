#pragma once

#include "vg/raster/active_edges.h"
#include "vg/raster/coverage_row.h"
#include "vg/raster/draw_params.h"
#include "vg/raster/span_function.h"
#include "vg/raster/sweep_lines.h"

namespace vg::raster {

/// Where a sweep delivers finished pixel rows.
struct SweepTarget {
    PixelSurface surface;
    SpanContext span;
    SpanFunction function = nullptr;
};

/// Turns a polygon into rows of coverage, from the top of the surface down.
///
/// One line of heights is visited after the other (see SweepLines). Between two lines, in a band,
/// every active edge is straight; the fill rule makes spans of the edges, each span adds its two
/// boundaries to the coverage row, and at the end of each pixel row the span function is called.
class Sweep {
public:
    /// False when memory runs out; the target may then be drawn on in part.
    [[nodiscard]] bool run(const FixedPolygon& polygon, FillRule rule, Quality quality,
                           SweepTarget& target) noexcept;

    void shrinkToFit() noexcept;

private:
    [[nodiscard]] bool prepare(const FixedPolygon& polygon, Quality quality,
                               const PixelSurface& surface) noexcept;
    void sweepExact(FillRule rule, SweepTarget& target) noexcept;
    template <class Sample>
    void sweepSamples(FillRule rule, SweepTarget& target) noexcept;

    void addBand(FillRule rule, int32_t top, int32_t bottom) noexcept;
    template <class Sample>
    void addSampleLine(FillRule rule, int32_t y) noexcept;
    void flushRow(int32_t row, SweepTarget& target) noexcept;

    base::Array<RasterEdge> edges_;
    SweepLines lines_;
    ActiveEdges active_;
    CoverageRow row_;
};

}  // namespace vg::raster
