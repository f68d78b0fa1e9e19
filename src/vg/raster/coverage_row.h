#pragma once

#include <algorithm>
#include <cstdint>

#include "vg/raster/fixed.h"
#include "vg/raster/kernels.h"

namespace vg::raster {

/// Coverage of a whole pixel.
inline constexpr uint32_t kFullCoverage = 0x40000000;

/// The changes of coverage of one pixel row, and what was touched of them, for who draws it.
struct RowCells {
    CellView view;         ///< of cell 0
    int32_t groupCount;    ///< groups of 8 cells that there is room for; a multiple of 8
    int32_t originColumn;  ///< the surface's column of cell 0; not negative
};

/// The change of coverage from column to column of one pixel row, and what was touched of it.
///
/// Shape      at least width + kSlackCells cells; a map entry for every eight.
/// Units      kFullCoverage is one covered pixel. Arithmetic wraps at 2^32: single cells may hold
///            anything, but running sums lie in [0, kFullCoverage] up to truncation, because the
///            spans of a band never overlap.
/// Invariant  all cells and the map are zero between rows: whoever reads a row clears it.
class CoverageRow {
public:
    /// Cells past the last column: closing cells of spans.
    static constexpr int32_t kSlackCells = 16;

    /// Grows to `width` columns. False when memory runs out.
    [[nodiscard]] bool reserve(int32_t width) noexcept {
        const int32_t count = (width + kSlackCells + 63) & ~63;  // whole words of the map
        return (count <= cells_.count() || cells_.resizeZeroed(count)) &&
               (count / kGroup <= touched_.count() || touched_.resizeZeroed(count / kGroup));
    }

    void add(int32_t column, uint32_t change) noexcept { cells_.data()[column] += change; }
    uint32_t* cells() noexcept { return cells_.data(); }

    /// What the span functions take.
    RowCells view() noexcept {
        return {{cells_.data(), touched_.data()}, touched_.count() / kGroup * kGroup, 0};
    }

    /// Marks the columns that an edge between two x values in 1/32 pixel, in any order, changes.
    void touch(int32_t x0, int32_t x1) noexcept {
        const auto [left, right] = std::minmax(x0, x1);
        for (int32_t group = pixelOf(left) / kGroup; group <= (pixelOf(right) + 1) / kGroup;) {
            touched_.data()[group++] = 1;
        }
    }

private:
    static constexpr int32_t kGroup = 8;

    base::Array<uint32_t> cells_;
    base::Array<uint8_t> touched_;
};

}  // namespace vg::raster
