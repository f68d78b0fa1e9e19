#include "vg/raster/clear_rect.h"

#include <algorithm>

#include "vg/raster/kernels/kernels.h"

namespace vg::raster {

void clearRect(const PixelSurface& surface, const PixelRect& rect, uint32_t pixel) noexcept {
    const int32_t x0 = std::max(rect.x0, 0);
    const int32_t y0 = std::max(rect.y0, 0);
    const int32_t x1 = std::min(rect.x1, surface.width);
    const int32_t y1 = std::min(rect.y1, surface.height);
    if (x1 <= x0 || y1 <= y0) return;
    if (x1 - x0 == surface.width) {  // the rows adjoin in memory: one run
        kernels().runSource(surface.row(y1 - 1), surface.width * (y1 - y0), pixel);
        return;
    }
    for (int32_t y = y0; y < y1; ++y) kernels().runSource(surface.row(y) + x0, x1 - x0, pixel);
}

}  // namespace vg::raster
