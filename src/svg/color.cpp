// Reads colours: hexadecimal digits, rgb() and keywords, the latter by binary search.

#include "svg/color.h"

#include <algorithm>
#include <limits>
#include <string_view>

#include "svg/color_keywords.h"
#include "svg/number.h"

namespace quor {
namespace {

constexpr float kUnitPerByte = 0.003921569F;  // 1/255
constexpr int kMaxKeywordLength = 22;
constexpr int kNotHex = -1;

int hexDigitValue(char c) noexcept {
    if (isAsciiDigit(c)) return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return kNotHex;
}

/// Components given as 0xRRGGBBAA; the alpha byte is not looked at.
SvgColor colorOfBytes(uint32_t rgba) noexcept {
    const auto component = [rgba](int shift) {
        return static_cast<float>(rgba >> shift & 0xFF) * kUnitPerByte;
    };
    return {component(24), component(16), component(8), 1.0F};
}

/// The hexadecimal digits at the start of a text, as far as colours need them.
struct HexDigits {
    int count = 0;         ///< 0..6
    uint32_t values[6]{};  ///< 0..15
};

HexDigits readHexDigits(const char* text) noexcept {
    HexDigits digits;
    for (; digits.count < 6; ++digits.count) {
        const int value = hexDigitValue(text[digits.count]);
        if (value == kNotHex) break;
        digits.values[digits.count] = static_cast<uint32_t>(value);
    }
    return digits;
}

/// `text` follows the '#'. Six digits, else the first three of whatever there is.
bool parseHexColor(const char* text, SvgColor& color) noexcept {
    const HexDigits digits = readHexDigits(text);
    if (digits.count < 3) return false;
    const auto& d = digits.values;
    if (digits.count == 6) {
        color = colorOfBytes(d[0] << 28 | d[1] << 24 | d[2] << 20 | d[3] << 16 | d[4] << 12 |
                             d[5] << 8);
    } else {
        color = colorOfBytes(d[0] * 17 << 24 | d[1] * 17 << 16 | d[2] * 17 << 8);
    }
    return true;
}

/// Toward zero, saturating; the bits of the two's complement integer.
uint32_t truncateToBits(float value) noexcept {
    constexpr float kTooLarge = 2147483648.0F;  // 2^31
    if (value >= kTooLarge) return 0x7FFFFFFF;
    if (value < -kTooLarge) return 0x80000000;
    return static_cast<uint32_t>(static_cast<int32_t>(value));
}

uint32_t readRgbComponent(TextCursor& cursor) noexcept {
    float value = readNumber(cursor);
    if (cursor.take("%")) value = value * 255.0F * 0.01F;
    return truncateToBits(value);
}

/// The cursor follows "rgb(". Components out of range wrap, deliberately: they overflow into the
/// bytes before them, and drawings that are right only so keep their colours.
bool readRgbColor(TextCursor& cursor, SvgColor& color) noexcept {
    uint32_t packed = 0;
    for (int i = 0; i < 3; ++i) {
        cursor.skipCommasAndSpaces();
        if (cursor.atEnd()) return false;
        packed = packed << 8 | readRgbComponent(cursor);
    }
    color = colorOfBytes(packed << 8 | 255);
    return true;
}

bool parseColorKeyword(const char* text, SvgColor& color) noexcept {
    char name[kMaxKeywordLength];
    int length = 0;
    for (; length < kMaxKeywordLength && isAsciiLetter(text[length]); ++length) {
        name[length] = static_cast<char>(text[length] | 0x20);  // ASCII lower case
    }
    const NamedColor* named = findNamedColor(name, length);
    if (named == nullptr) return false;
    color = {named->red, named->green, named->blue, 1.0F};
    return true;
}

}  // namespace

const NamedColor* findNamedColor(const char* name, int length) noexcept {
    const std::string_view sought(name, static_cast<size_t>(length));
    const auto found = std::lower_bound(
        kNamedColors.begin(), kNamedColors.end(), sought,
        [](const NamedColor& color, std::string_view other) { return color.name < other; });
    return found != kNamedColors.end() && found->name == sought ? &*found : nullptr;
}

SvgColor parseColor(const char* text) noexcept {
    TextCursor cursor(text);
    cursor.skipSpaces();
    SvgColor color;
    const bool isColor = cursor.take("#")      ? parseHexColor(cursor.at, color)
                         : cursor.take("rgb(") ? readRgbColor(cursor, color)
                                               : parseColorKeyword(cursor.at, color);
    return isColor ? color : SvgColor{};
}

}  // namespace quor
