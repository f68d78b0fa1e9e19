#pragma once

#include <cstdint>

namespace vg::raster {

/// Adds what lies to the right of an edge within one band to a coverage row.
///
/// `cells` are the cells of the row, `height` (1..32) the band's height and xTop, xBottom the
/// edge's ends, all in 1/32 pixel. The amounts added always sum to height * 2^25, so a full row
/// of 32 sums to kFullCoverage.
void addTrapezoid(uint32_t* cells, int32_t xTop, int32_t xBottom, uint32_t height) noexcept;

/// Takes away what addTrapezoid adds.
void subtractTrapezoid(uint32_t* cells, int32_t xTop, int32_t xBottom, uint32_t height) noexcept;

}  // namespace vg::raster
