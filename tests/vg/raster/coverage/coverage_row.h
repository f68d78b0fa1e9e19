#pragma once

#include <algorithm>
#include <cstdint>

#include "base/array.h"
#include "vg/raster/coverage/cells.h"
#include "vg/raster/geometry/fixed.h"

namespace vg::raster {

/// One pixel row of cells by itself, from column 0 of the surface on.
class CoverageRow {
public:
    /// Grows to `width` columns and some that close spans. False when memory runs out.
    [[nodiscard]] bool reserve(int32_t width) noexcept {
        const int32_t count = (width + kSlackCells + 63) & ~63;  // whole words of the map
        return (count <= cells_.count() || cells_.resizeZeroed(count)) &&
               (count / kGroupCells <= touched_.count() ||
                touched_.resizeZeroed(count / kGroupCells));
    }

    void add(int32_t column, uint32_t change) noexcept { cells_.data()[column] += change; }
    uint32_t* cells() noexcept { return cells_.data(); }

    /// What the span functions take.
    RowCells view() noexcept { return {{cells_.data(), touched_.data()}, touched_.count(), 0}; }

    /// Marks the columns that an edge between two x values in 1/32 pixel, in any order, changes.
    void touch(int32_t x0, int32_t x1) noexcept {
        const auto [left, right] = std::minmax(x0, x1);
        view().view.touch(pixelOf(left), pixelOf(right) + 1);
    }

private:
    static constexpr int32_t kSlackCells = 16;

    base::Array<uint32_t> cells_;
    base::Array<uint8_t> touched_;
};

}  // namespace vg::raster
