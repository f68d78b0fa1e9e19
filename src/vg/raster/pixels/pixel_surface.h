#pragma once

#include <cassert>
#include <cstdint>

namespace vg::raster {

class PendingClear;

/// The pixels that are drawn on: 32-bit words, rows from the top down without padding. Pixel row y
/// (upwards) lies in memory row height - 1 - y.
struct PixelSurface {
    uint32_t* pixels = nullptr;
    int32_t width = 0;
    int32_t height = 0;
    /// VG_sARGB_8888 (0x41), VG_lARGB_8888 (0x48) or the premultiplied format that follows each.
    uint32_t format = 0x42;
    /// The clear that rows of these pixels may still need (pending_clear.h); null: none.
    PendingClear* pendingClear = nullptr;

    /// Precondition: 0 <= y < height.
    uint32_t* row(int32_t y) const noexcept {
        assert(0 <= y && y < height);
        return pixels + static_cast<int64_t>(height - 1 - y) * width;
    }
};

}  // namespace vg::raster
