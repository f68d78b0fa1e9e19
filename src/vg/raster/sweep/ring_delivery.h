#pragma once

#include "vg/raster/coverage/coverage_ring.h"
#include "vg/raster/sweep/sweep_target.h"

namespace vg::raster {

/// The surface's column of cell 0 for what begins at `firstColumn`, or left of it: span functions
/// like their stretches (coverage_walk.h) within the chunks that paints are cut into.
int32_t originFor(const SweepTarget& target, int32_t firstColumn) noexcept;

/// Hands the rows from `top` down to `bottom`, at most CoverageRing::kRows, to the target and
/// leaves them zero. `originColumn` is the surface's column of cell 0.
void deliverRows(CoverageRing& ring, int32_t originColumn, int32_t top, int32_t bottom,
                 SweepTarget& target) noexcept;

}  // namespace vg::raster
