#include "vg/raster/band_cells.h"

#include <cstring>

namespace vg::raster {

bool BandCells::takeRow(const CellView& view, int32_t groupCount, int32_t row) noexcept {
    constexpr int32_t kGroup = CoverageRing::kGroup;
    bool isKept = true;
    for (int32_t group = 0; group < groupCount; ++group) {
        if (view.touched[group] == 0) continue;
        view.touched[group] = 0;
        uint32_t* const source = view.cells + group * kGroup;
        const int32_t kept = cells.count();
        isKept = isKept && groups.count() < kMaxGroups && cells.resize(kept + kGroup) &&
                 groups.push({static_cast<uint16_t>(row), static_cast<uint16_t>(group * kGroup)});
        if (isKept) std::memcpy(cells.data() + kept, source, kGroup * sizeof(uint32_t));
        std::memset(source, 0, kGroup * sizeof(uint32_t));
    }
    return isKept;
}

}  // namespace vg::raster
