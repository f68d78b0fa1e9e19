#pragma once

#include <cstdint>

#include "svg/text_cursor.h"

namespace quor {

/// Components in 0..1, not premultiplied.
struct SvgColor {
    float red = 0.0F;
    float green = 0.0F;
    float blue = 0.0F;
    float alpha = 1.0F;
};

/// Reads "#rgb", "#rrggbb", "rgb(...)" or a keyword; whatever fails is opaque black.
SvgColor parseColor(const char* text) noexcept;

/// One of the 147 colour keywords, components rounded to three decimals.
struct NamedColor {
    const char* name;  ///< lower case
    float red, green, blue;
};

/// Binary search in the keyword table; `name` is lower case, `length` characters. Null when
/// unknown.
const NamedColor* findNamedColor(const char* name, int length) noexcept;

}  // namespace quor
