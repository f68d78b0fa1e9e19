#pragma once

#include <cstdint>

#include "vg/raster/kernels.h"

namespace vg::raster {

/// Coverage of a whole pixel.
inline constexpr uint32_t kFullCoverage = 0x40000000;

/// The change of coverage from column to column of one pixel row, and what was touched of it, for
/// who draws it.
///
/// Units      kFullCoverage is one covered pixel. Arithmetic wraps at 2^32: single cells may hold
///            anything, but running sums lie in [0, kFullCoverage] up to truncation, because the
///            spans of a band never overlap.
/// Invariant  all cells and the map are zero between rows: whoever reads a row clears it.
struct RowCells {
    CellView view;         ///< of cell 0
    int32_t groupCount;    ///< groups of 8 cells that there is room for; a multiple of 8
    int32_t originColumn;  ///< the surface's column of cell 0; not negative
};

}  // namespace vg::raster
