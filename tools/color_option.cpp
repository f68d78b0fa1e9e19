#include "color_option.h"

#include <cctype>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>

namespace tool {

namespace {

struct NamedColor {
    const char* name;
    const char* digits;  // rrggbbaa
};

// clang-format off
constexpr NamedColor kNamedColors[] = {
    {"none",    "00000000"}, {"transparent", "00000000"},
    {"aqua",    "00ffffff"}, {"black",       "000000ff"}, {"blue",   "0000ffff"},
    {"fuchsia", "ff00ffff"}, {"gray",        "808080ff"}, {"green",  "008000ff"},
    {"lime",    "00ff00ff"}, {"maroon",      "800000ff"}, {"navy",   "000080ff"},
    {"olive",   "808000ff"}, {"purple",      "800080ff"}, {"red",    "ff0000ff"},
    {"silver",  "c0c0c0ff"}, {"teal",        "008080ff"}, {"white",  "ffffffff"},
    {"yellow",  "ffff00ff"},
};
// clang-format on

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lower;
}

/// Any of the three digit forms as rrggbbaa; empty for another length.
std::string eightDigits(std::string_view digits) {
    if (digits.size() == 8) return std::string(digits);
    if (digits.size() == 6) return std::string(digits) + "ff";
    std::string all;
    if (digits.size() != 3) return all;
    for (const char digit : digits) all.append(2, digit);
    return all + "ff";
}

std::optional<Color> colorOfDigits(std::string_view digits) {
    const std::string all = eightDigits(digits);
    std::uint32_t rgba = 0;
    const char* end = all.data() + all.size();
    const auto result = std::from_chars(all.data(), end, rgba, 16);
    if (all.empty() || result.ec != std::errc() || result.ptr != end) return std::nullopt;
    const auto channel = [rgba](int shift) {
        return static_cast<float>(rgba >> shift & 0xFF) / 255.0f;
    };
    return Color{channel(24), channel(16), channel(8), channel(0)};
}

}  // namespace

std::optional<Color> parseColor(std::string_view text) {
    if (!text.empty() && text.front() == '#') return colorOfDigits(text.substr(1));
    const std::string name = lowerCase(text);
    for (const NamedColor& color : kNamedColors)
        if (name == color.name) return colorOfDigits(color.digits);
    return std::nullopt;
}

std::string hexDigits(const Color& color) {
    std::string text = "#";
    for (const float channel : {color.red, color.green, color.blue}) {
        const auto byte = static_cast<unsigned>(channel * 255.0f + 0.5f);
        for (const unsigned digit : {byte >> 4, byte & 15}) text += "0123456789abcdef"[digit];
    }
    return text;
}

}  // namespace tool
