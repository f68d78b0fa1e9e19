#include "vg/raster/ring_delivery.h"

#include <algorithm>

namespace vg::raster {
namespace {

/// Delivers one row through the span function.
void deliverRow(CoverageRing& ring, int32_t row, SweepTarget& target) noexcept {
    const CellView cells = ring.row(row);
    int32_t first = 0, last = 0;
    if (!takeTouchedRange(cells, ring.groupCount(), first, last)) return;
    const int32_t lastColumn = target.surface.width - 1;
    target.span.cells = cells.cells;
    target.function(target.surface, target.span, row,
                    std::min(first * CoverageRing::kGroup, lastColumn),
                    std::min(last * CoverageRing::kGroup + CoverageRing::kGroup - 1, lastColumn));
}

}  // namespace

void deliverRows(CoverageRing& ring, int32_t originColumn, int32_t top, int32_t bottom,
                 SweepTarget& target) noexcept {
    if (top < bottom) return;
    target.surface.finishClear(bottom, top);
    if (target.flat == FlatBlend::kNone) {
        for (int32_t row = top; row >= bottom; --row) deliverRow(ring, row, target);
        return;
    }
    const PixelSurface& surface = target.surface;
    const FlatRows rows = {ring.view(),
                           ring.stride(),
                           CoverageRing::kRows - 1,
                           top,
                           bottom,
                           surface.row(top) + originColumn,
                           surface.width - originColumn,
                           surface.width,
                           target.span.color};
    target.flat == FlatBlend::kSource ? kernels().compositeSource(rows)
                                      : kernels().compositeSourceOver(rows);
}

}  // namespace vg::raster
