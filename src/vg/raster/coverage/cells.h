#pragma once

#include <cstdint>

namespace vg::raster {

// Cells: the accumulation buffer of the sweep. A cell holds the change of coverage from the column
// before it to its own, so that the prefix sum over the cells of a pixel row is the coverage of its
// columns (a difference array). Arithmetic wraps at 2^32: single cells may hold anything, but
// prefix sums lie in [0, kFullCoverage] up to truncation, because the spans of a band never
// overlap.

/// Coverage of a whole pixel.
inline constexpr uint32_t kFullCoverage = 0x40000000;

/// Coverage 0..256 of a prefix sum. Truncation can push a sum slightly out of its range.
[[gnu::always_inline]] constexpr uint32_t coverageOf(uint32_t sum) noexcept {
    const auto level = static_cast<int32_t>(sum) >> 22;
    return static_cast<uint32_t>(level < 0 ? 0 : level > 256 ? 256 : level);
}

/// Cells that share one dirty flag.
inline constexpr int32_t kGroupBits = 3;
inline constexpr int32_t kGroupCells = 1 << kGroupBits;

/// Cells and their dirty flags.
struct CellView {
    uint32_t* cells;
    uint8_t* touched;   ///< flag i is 1 when one of cells 8 i .. 8 i + 7 may not be zero, else 0
    int32_t spare = 0;  ///< the first of 64 cells that stay zero, whatever their flags say

    /// Sets the flags of the cells `first` to `last`.
    [[gnu::always_inline]] void touch(int32_t first, int32_t last) const noexcept {
        uint8_t* const flags = touched;
        const int32_t lastGroup = last >> kGroupBits;
        int32_t group = first >> kGroupBits;
        flags[group] = 1;
        while (group < lastGroup) flags[++group] = 1;
    }
};

/// The cells of one pixel row, for who draws it.
///
/// Invariant  all cells and flags are zero between rows: whoever reads a row clears it.
struct RowCells {
    CellView view;         ///< of cell 0
    int32_t groupCount;    ///< groups that there is room for; a multiple of 8
    int32_t originColumn;  ///< the surface's column of cell 0; not negative
};

}  // namespace vg::raster
