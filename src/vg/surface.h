#pragma once

#include "base/array.h"
#include "vg/engine.h"
#include "vg/raster/draw_params.h"

namespace vg {

/// Pixel memory that a context draws on, in the format VG_sARGB_8888_PRE.
struct Surface {
    int32_t width = 0;
    int32_t height = 0;
    uint32_t format = 0;
    base::Array<uint32_t> pixels;  ///< rows from the top down

    bool isLinear() const noexcept;  ///< whether the format's colour space is

    raster::PixelSurface view() noexcept { return {pixels.data(), width, height}; }
};

}  // namespace vg
