#pragma once

#include "vg/raster/coverage_ring.h"
#include "vg/raster/sweep_target.h"

namespace vg::raster {

/// Hands the rows from `top` down to `bottom`, at most CoverageRing::kRows, to the target and
/// leaves them zero. `originColumn` is the surface's column of cell 0, and 0
/// unless target.flat says that flat rows are composited.
void deliverRows(CoverageRing& ring, int32_t originColumn, int32_t top, int32_t bottom,
                 SweepTarget& target) noexcept;

}  // namespace vg::raster
