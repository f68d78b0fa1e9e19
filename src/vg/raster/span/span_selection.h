#pragma once

#include <cstdint>

#include "vg/raster/span/span_function.h"

namespace vg::raster {

/// What the span functions of a draw depend on.
struct SpanChoice {
    PaintKind paint = PaintKind::kColor;
    int32_t blendMode = 0x2001;
    bool isMasked = false;
    bool isPremultiplied = true;  ///< the surface is
    bool isDirectCopy = false;    ///< the paint is a pattern whose texels are copied
    bool isOpaque = false;        ///< all of the paint's pixels are
    uint32_t color = 0;           ///< of a flat colour
};

/// The span functions of a draw; none when it changes no pixel, or when only the general span
/// function serves it (see hasOwnSpanFunctions).
SpanFunctions selectSpanFunctions(const SpanChoice& choice) noexcept;

/// False where the general span function has to be taken: surfaces that are not premultiplied have
/// own functions for few combinations only.
bool hasOwnSpanFunctions(const SpanChoice& choice) noexcept;

/// The functions for a flat premultiplied colour on a premultiplied surface without a mask.
inline SpanFunctions selectSpanFunctions(int32_t blendMode, uint32_t color) noexcept {
    return selectSpanFunctions(
        {.blendMode = blendMode, .isOpaque = color >> 24 == 255, .color = color});
}

}  // namespace vg::raster
