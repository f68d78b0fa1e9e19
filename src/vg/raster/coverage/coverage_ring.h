#pragma once

#include "base/array.h"
#include "vg/raster/coverage/cells.h"

namespace vg::raster {

/// The accumulation buffer (cells.h) of the pixel rows that one block of bands can reach: a ring of
/// sixteen rows.
///
///   row & 15    cells 0 .. stride - 1, column `originColumn` of the surface first
///      0        |.......|.......|.......|        a group of 8 cells has one dirty flag; readers
///      1        |.......|.......|.......|        skip groups whose flag is 0
///     ...
///
/// Invariant  all cells and flags are zero between draws: whoever reads a row clears it.
class CoverageRing {
public:
    static constexpr int32_t kRows = 16;  ///< a block of 16 bands reaches no more
    /// Makes room for rows of `columns` columns. False when memory runs out.
    [[nodiscard]] bool reserve(int32_t columns) noexcept;

    int32_t rowStart(int32_t row) const noexcept { return (row & (kRows - 1)) * stride_; }
    int32_t stride() const noexcept { return stride_; }
    int32_t groupCount() const noexcept { return stride_ / kGroupCells; }
    /// With spare cells in front of row 0.
    CellView view() noexcept {
        return {cells_.data() + kSpareCells, touched_.data() + kSpareCells / kGroupCells,
                -kSpareCells};
    }
    CellView row(int32_t row) noexcept {
        const CellView all = view();
        return {all.cells + rowStart(row), all.touched + rowStart(row) / kGroupCells};
    }

private:
    static constexpr int32_t kSpareCells = 64;

    int32_t stride_ = 0;
    base::Array<uint32_t> cells_;
    base::Array<uint8_t> touched_;
};

}  // namespace vg::raster
