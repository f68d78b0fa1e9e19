// A dirty flag a row: set by a clear, taken when the row is cleared at last.

#include "vg/raster/span/pending_clear.h"

#include <algorithm>

#include "vg/raster/kernels/kernels.h"

namespace vg::raster {

void PendingClear::begin(int32_t rows, uint32_t pixel) noexcept {
    std::fill_n(isPending_, rows, true);
    std::fill(isPending_ + rows, isPending_ + kRowCount, false);
    count_ = rows;
    pixel_ = pixel;
}

void PendingClear::finish(const PixelSurface& surface) noexcept {
    finishRows(surface, 0, surface.height - 1);
}

void PendingClear::clearRows(const PixelSurface& surface, int32_t bottom, int32_t top) noexcept {
    for (int32_t y = top; y >= bottom; --y) {
        if (take(y)) kernels().runSource(surface.row(y), surface.width, pixel_);
    }
}

}  // namespace vg::raster
