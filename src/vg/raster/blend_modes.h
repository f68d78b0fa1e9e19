#pragma once

#include "vg/raster/pixel_lanes.h"

namespace vg::raster {

// Blend modes on premultiplied 32-bit pixels: s the paint, d the surface, a their alpha.

struct Source {  // s
    static constexpr uint32_t apply(uint32_t s, uint32_t /*d*/) noexcept { return s; }
};

struct SourceOver {  // s + d (1 - a_s)
    static constexpr uint32_t apply(uint32_t s, uint32_t d) noexcept {
        return s + scale255(d, 255 - alphaOf(s));
    }
};

}  // namespace vg::raster
