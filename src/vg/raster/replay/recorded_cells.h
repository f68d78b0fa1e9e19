#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/raster/coverage/cells.h"
#include "vg/raster/coverage/coverage_ring.h"

namespace vg::raster {

/// The sum of all edges of a band list (cells.h), for replays that differ by whole pixels only.
///
/// Sparse: only groups of cells that edges touched are kept, row after row from the top, left to
/// right. Column 0 is the leftmost that the list reaches, row 0 its top row, downwards.
struct RecordedCells {
    static constexpr int32_t kNoPhase = -1;

    /// Lists with more groups are not kept: 64 KiB of cells.
    static constexpr int32_t kMaxGroups = 2048;

    struct Group {
        uint16_t row;
        uint16_t column;  ///< a multiple of 8
    };

    int32_t phase = kNoPhase;  ///< of the shift: dx modulo a pixel, in 1/32
    int32_t lastPhase = 0;     ///< of the latest replay: cells are made for one that comes again
    bool areTooMany = false;   ///< or memory ran out: there is no second attempt
    base::Array<Group> groups;
    base::Array<uint32_t> cells;  ///< eight for each group

    /// Appends the touched groups of a row and leaves the row zero. False when memory, or the
    /// groups of a list, run out.
    [[nodiscard]] bool takeRow(const CellView& view, int32_t groupCount, int32_t row) noexcept;

    void clear() noexcept {
        phase = kNoPhase;
        lastPhase = 0;
        areTooMany = false;
        groups.clear();
        cells.clear();
    }
};

}  // namespace vg::raster
