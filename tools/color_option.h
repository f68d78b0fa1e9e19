#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tool {

/// Straight (not premultiplied) sRGB, each channel in [0, 1].
struct Color {
    float red = 0;
    float green = 0;
    float blue = 0;
    float alpha = 0;
};

/// What parseColor understands, for help texts.
inline constexpr const char* kColorSyntax =
    "#rgb, #rrggbb, #rrggbbaa, none, transparent, or a basic name such as white, navy";

/// Letters of either case. Nothing when `text` is no colour.
std::optional<Color> parseColor(std::string_view text);

/// "#rrggbb", without alpha.
std::string hexDigits(const Color& color);

}  // namespace tool
