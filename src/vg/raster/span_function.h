#pragma once

#include <cstdint>

#include "vg/raster/draw_params.h"

namespace vg::raster {

/// What span functions read, filled once per draw.
struct SpanContext {
    uint32_t* cells = nullptr;  ///< the coverage row
    uint32_t color = 0;         ///< flat colour, premultiplied, in the surface's format
};

/// Blends the paint into row y from column `first` to `last` by the coverage row, and zeroes those
/// cells and the one after. Preconditions: 0 <= first <= last < surface.width, 0 <= y < height.
using SpanFunction = void (*)(const PixelSurface& surface, const SpanContext& span, int32_t y,
                              int32_t first, int32_t last) noexcept;

/// Blends the paint into `count` wholly covered pixels.
using RunFunction = void (*)(uint32_t* pixels, int32_t count, uint32_t color) noexcept;

struct SpanFunctions {
    SpanFunction span = nullptr;
    RunFunction run = nullptr;
};

/// The functions for a flat colour under a blend mode; none when the draw changes no pixel.
SpanFunctions selectSpanFunctions(int32_t blendMode, uint32_t color) noexcept;

}  // namespace vg::raster
