#pragma once

#include "base/array.h"
#include "vg/engine.h"
#include "vg/image/pixel_area.h"
#include "vg/image/pixel_memory.h"
#include "vg/raster/pixels/pixel_surface.h"
#include "vg/raster/span/pending_clear.h"

namespace vg {

/// Pixel memory that a context draws on, in a 32-bit ARGB format.
struct Surface {
    int32_t width = 0;
    int32_t height = 0;
    uint32_t format = 0;  ///< a VGImageFormat code
    bool hasMask = false;
    PixelMemory pixels;         ///< rows from the top down
    base::Array<uint8_t> mask;  ///< a value for each pixel, in their order; empty without one

    bool isLinear() const noexcept;  ///< whether the format's colour space is

    /// A clear that is not done yet; all but draws have it done first.
    raster::PendingClear pendingClear;

    raster::PixelSurface view() noexcept {
        finishClear();
        return {pixels.data(), width, height, format};
    }
    raster::PixelSurface drawTarget() noexcept {
        return {pixels.data(), width, height, format, &pendingClear};
    }
    void finishClear() noexcept { pendingClear.finish({pixels.data(), width, height, format}); }

    const raster::PixelFormatDescriptor& descriptor() const noexcept {
        return *raster::findPixelFormat(format);
    }
    PixelArea area() noexcept {
        auto* lowest = reinterpret_cast<uint8_t*>(view().row(0));
        return {lowest, int64_t{width} * -4, &descriptor(), width, height};
    }

    /// The mask as pixels of VG_A_8. Precondition: hasMask.
    PixelArea maskArea() noexcept;
};

}  // namespace vg
