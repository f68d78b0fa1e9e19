#pragma once

#include <cstdint>

#include "svg/color.h"

namespace quor {

class SvgNode;

enum class PaintType : uint8_t {
    kUnset = 0,
    kNone = 1,
    kCurrentColor = 2,
    kColor = 3,
    kServer = 4,  ///< a reference to a gradient or solidColor element
};

/// The value of `fill` or `stroke`.
struct SvgPaint {
    PaintType type = PaintType::kUnset;
    PaintType fallback = PaintType::kNone;  ///< of a reference: kNone, kCurrentColor or kColor
    SvgColor color;                         ///< of kColor, or of a kColor fallback
    const char* reference = nullptr;        ///< text after "url("; points into the attribute
    SvgNode* server = nullptr;              ///< resolved when first drawn
};

/// Reads a paint; text that is none is opaque black.
SvgPaint parsePaint(const char* text) noexcept;

}  // namespace quor
