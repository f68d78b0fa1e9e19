// Compacts a row: only groups whose dirty flag is set are copied.

#include "vg/raster/replay/recorded_cells.h"

#include <cstring>

namespace vg::raster {

bool RecordedCells::takeRow(const CellView& view, int32_t groupCount, int32_t row) noexcept {
    bool isKept = true;
    for (int32_t group = 0; group < groupCount; ++group) {
        if (view.touched[group] == 0) continue;
        view.touched[group] = 0;
        uint32_t* const source = view.cells + group * kGroupCells;
        const int32_t kept = cells.count();
        isKept =
            isKept && groups.count() < kMaxGroups && cells.resize(kept + kGroupCells) &&
            groups.push({static_cast<uint16_t>(row), static_cast<uint16_t>(group * kGroupCells)});
        if (isKept) std::memcpy(cells.data() + kept, source, kGroupCells * sizeof(uint32_t));
        std::memset(source, 0, kGroupCells * sizeof(uint32_t));
    }
    return isKept;
}

}  // namespace vg::raster
