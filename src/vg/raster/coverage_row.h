#pragma once

#include <algorithm>
#include <cstdint>

#include "vg/raster/fixed.h"

namespace vg::raster {

/// Coverage of a whole pixel.
inline constexpr uint32_t kFullCoverage = 0x40000000;

/// The change of coverage from column to column of one pixel row.
///
/// Shape      width + kSlackCells cells.
/// Units      kFullCoverage is one covered pixel. Arithmetic wraps at 2^32: single cells may hold
///            anything, but running sums lie in [0, kFullCoverage] up to truncation, because the
///            spans of a band never overlap.
/// Invariant  all cells are zero between rows: whoever reads a cell clears it.
class CoverageRow {
public:
    /// Cells past the last column: closing cells of spans and room for reading ahead.
    static constexpr int32_t kSlackCells = 16;

    /// Grows to `width` columns. False when memory runs out; the row is then unchanged.
    [[nodiscard]] bool reserve(int32_t width) noexcept {
        const int32_t count = width + kSlackCells;
        return count <= cells_.count() || cells_.resizeZeroed(count);
    }

    void add(int32_t column, uint32_t change) noexcept { cells_.data()[column] += change; }
    uint32_t* cells() noexcept { return cells_.data(); }

    /// Widens the touched range by two x values in 1/32 pixel.
    void touch(int32_t x0, int32_t x1) noexcept {
        minX_ = std::min(minX_, std::min(x0, x1));
        maxX_ = std::max(maxX_, std::max(x0, x1));
    }
    bool isTouched() const noexcept { return minX_ <= maxX_; }
    int32_t minX() const noexcept { return minX_; }
    int32_t maxX() const noexcept { return maxX_; }
    void resetRange() noexcept {
        minX_ = kMaxCoordinate;
        maxX_ = 0;
    }

private:
    base::Array<uint32_t> cells_;
    int32_t minX_ = kMaxCoordinate;
    int32_t maxX_ = 0;
};

}  // namespace vg::raster
