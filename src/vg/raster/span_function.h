#pragma once

#include <cstdint>

#include "vg/raster/draw_params.h"
#include "vg/raster/gradient_state.h"

namespace vg::raster {

/// What span functions read, filled once per draw.
struct SpanContext {
    uint32_t* cells = nullptr;  ///< the coverage row
    uint32_t color = 0;         ///< flat colour, premultiplied, in the surface's format
    GradientState gradient;     ///< of a gradient paint
};

/// Blends the paint into row y from column `first` to `last` by the coverage row, and zeroes those
/// cells and the one after. Preconditions: 0 <= first <= last < surface.width, 0 <= y < height.
using SpanFunction = void (*)(const PixelSurface& surface, const SpanContext& span, int32_t y,
                              int32_t first, int32_t last) noexcept;

/// Blends the paint into row y from column `first` to `end` - 1, all of them wholly covered.
using RunFunction = void (*)(const PixelSurface& surface, const SpanContext& span, int32_t y,
                             int32_t first, int32_t end) noexcept;

/// A flat colour that the exact sweep composites by itself, from the touched groups of its cells.
enum class FlatBlend { kNone, kSource, kSourceOver };

struct SpanFunctions {
    SpanFunction span = nullptr;
    RunFunction run = nullptr;
    FlatBlend flat = FlatBlend::kNone;  ///< kNone: `span` is the only way
};

/// The functions for a flat colour under a blend mode; none when the draw changes no pixel.
SpanFunctions selectSpanFunctions(int32_t blendMode, uint32_t color) noexcept;

/// The functions for a gradient. `isOpaque`: all of its pixels are.
SpanFunctions selectGradientFunctions(int32_t blendMode, PaintKind kind, Spread spread,
                                      bool isOpaque) noexcept;

}  // namespace vg::raster
