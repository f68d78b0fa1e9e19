#pragma once

#include "vg/raster/coverage/coverage_ring.h"
#include "vg/raster/sweep/sweep_target.h"

namespace vg::raster {

/// The surface's column of cell 0 for a shape that begins at `firstColumn`: rounded down to a chunk
/// of gradients where a span function draws, so that stretches (coverage_walk.h) do not straddle
/// chunks.
int32_t originFor(const SweepTarget& target, int32_t firstColumn) noexcept;

/// Hands the rows from `top` down to `bottom`, at most CoverageRing::kRows, to the target and
/// leaves them zero. `originColumn` is the surface's column of cell 0.
void deliverRows(CoverageRing& ring, int32_t originColumn, int32_t top, int32_t bottom,
                 SweepTarget& target) noexcept;

}  // namespace vg::raster
