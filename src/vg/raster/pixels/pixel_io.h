#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "vg/raster/pixels/pixel_format.h"

namespace vg::raster {

// Pixels go through three forms:
//
//   in memory   fields of the format; pixels of 1 and 4 bits start at a byte's lowest bit
//   packed      one pixel's word, in the low bits of 32
//   color       8 bits a channel, 0xAARRGGBB; its space and premultiplication are those of a
//               format's flags

/// The packed pixel at column x. Rows may start at any address.
template <int kBits>
uint32_t loadPixel(const uint8_t* row, int32_t x) noexcept {
    if constexpr (kBits == 32) {
        uint32_t word;
        std::memcpy(&word, row + int64_t{x} * 4, sizeof word);
        return word;
    } else if constexpr (kBits == 16) {
        uint16_t word;
        std::memcpy(&word, row + int64_t{x} * 2, sizeof word);
        return word;
    } else if constexpr (kBits == 8) {
        return row[x];
    } else if constexpr (kBits == 4) {
        return row[x >> 1] >> ((x & 1) * 4) & 0xFU;
    } else {
        return row[x >> 3] >> (x & 7) & 1U;
    }
}

template <int kBits>
void storePixel(uint8_t* row, int32_t x, uint32_t packed) noexcept {
    if constexpr (kBits == 32) {
        std::memcpy(row + int64_t{x} * 4, &packed, sizeof packed);
    } else if constexpr (kBits == 16) {
        const auto word = static_cast<uint16_t>(packed);
        std::memcpy(row + int64_t{x} * 2, &word, sizeof word);
    } else if constexpr (kBits == 8) {
        row[x] = static_cast<uint8_t>(packed);
    } else {
        constexpr int kPerByte = 8 / kBits;
        const int shift = x % kPerByte * kBits;
        const uint32_t mask = ((1U << kBits) - 1) << shift;
        uint8_t& byte = row[x / kPerByte];
        byte = static_cast<uint8_t>((byte & ~mask) | (packed << shift & mask));
    }
}

/// How a field of 0 to 8 bits becomes a byte by bit replication: times `factor`, which repeats its
/// bits, then shifted right to eight.
struct FieldWidening {
    uint32_t factor;
    int32_t shift;
};
inline constexpr FieldWidening kWidenings[9] = {{0, 0},  {255, 0}, {85, 0},  {73, 1}, {17, 0},
                                                {33, 2}, {65, 4},  {129, 6}, {1, 0}};

/// A field of `bits` bits as a byte: its bits over and over, from the top. 0 bits give 0.
constexpr uint32_t widenField(uint32_t value, int32_t bits) noexcept {
    return value * kWidenings[bits].factor >> kWidenings[bits].shift;
}

constexpr uint32_t field(uint32_t packed, int32_t shift, int32_t bits) noexcept {
    return widenField(packed >> shift & ((1U << bits) - 1), bits);
}

/// The colour of a packed pixel with colour fields; alpha is 255 in formats without.
constexpr uint32_t unpackColored(uint32_t packed, const PixelFormatDescriptor& f) noexcept {
    const uint32_t alpha =
        (f.flags & kHasAlpha) != 0 ? field(packed, f.alphaShift, f.alphaBits) : 255;
    return alpha << 24 | field(packed, f.redShift, f.redBits) << 16 |
           field(packed, f.greenShift, f.greenBits) << 8 | field(packed, f.blueShift, f.blueBits);
}

constexpr uint32_t swapRedBlue(uint32_t color) noexcept {
    return (color & 0xFF00FF00) | std::rotl(color & 0x00FF00FF, 16);
}

/// The bytes of a 32-bit pixel in a channel order, as a colour, alpha or X on top.
constexpr uint32_t unpack32(uint32_t packed, int32_t order) noexcept {
    const bool alphaIsLast = order == kOrderRgba || order == kOrderBgra;
    const uint32_t alphaFirst = alphaIsLast ? std::rotr(packed, 8) : packed;
    return order == kOrderAbgr || order == kOrderBgra ? swapRedBlue(alphaFirst) : alphaFirst;
}

/// Undoes unpack32.
constexpr uint32_t pack32(uint32_t color, int32_t order) noexcept {
    const bool blueIsFirst = order == kOrderAbgr || order == kOrderBgra;
    const uint32_t alphaFirst = blueIsFirst ? swapRedBlue(color) : color;
    return order == kOrderRgba || order == kOrderBgra ? std::rotl(alphaFirst, 8) : alphaFirst;
}

/// Makes a colour of a format without alpha opaque.
constexpr uint32_t opaqueBits(const PixelFormatDescriptor& format) noexcept {
    return (format.flags & kHasAlpha) != 0 ? 0 : 0xFF000000;
}

/// The colour of a packed pixel without colour fields: opaque grey, or white under an alpha.
constexpr uint32_t unpackUncolored(uint32_t packed, const PixelFormatDescriptor& f) noexcept {
    const uint32_t value = widenField(packed, f.bitsPerPixel);
    return isLuminance(f) ? 0xFF000000 | value * 0x010101 : value << 24 | 0x00FFFFFF;
}

/// The colour of a packed pixel, in the format's space and as premultiplied as the format.
uint32_t unpackColor(uint32_t packed, const PixelFormatDescriptor& format) noexcept;

/// The packed pixel nearest to a colour of the format's space and premultiplication. X fields
/// become all ones; luminance is 0.2126 red + 0.7152 green + 0.0722 blue.
uint32_t packColor(uint32_t color, const PixelFormatDescriptor& format) noexcept;

/// Colour channels times alpha: (c K[a]) >> 23, K[a] = (a 2^23 + 127) / 255.
uint32_t premultiply(uint32_t color) noexcept;

/// Colour channels over alpha: min(255, (255 c + a / 2) / a), or 0 where alpha is 0.
uint32_t unpremultiply(uint32_t color) noexcept;

/// Carries a colour from one format's space and premultiplication to another's; takes the flags
/// of both. The space is changed of colours that are not premultiplied.
uint32_t convertColor(uint32_t color, int32_t fromFlags, int32_t toFlags) noexcept;

/// To 0..1.
inline float clampUnit(float value) noexcept { return std::clamp(value, 0.0F, 1.0F); }

/// A colour given as red, green, blue, alpha: clamped to 0..1, times 255 plus 0.5, truncated.
uint32_t packPlain(const float rgba[4]) noexcept;

/// The same, premultiplied in float before it is rounded.
uint32_t packPremultiplied(const float rgba[4]) noexcept;

/// The packed pixel of a colour given as red, green, blue, alpha in sRGB, not premultiplied.
/// Components are clamped to 0..1 and must not be NaN.
uint32_t packFloatColor(const float rgba[4], const PixelFormatDescriptor& format) noexcept;

/// Converts `count` pixels from column `fromX` of one row to column `toX` of another. The rows must
/// not overlap.
void convertPixels(const uint8_t* from, int32_t fromX, const PixelFormatDescriptor& fromFormat,
                   uint8_t* to, int32_t toX, const PixelFormatDescriptor& toFormat,
                   int32_t count) noexcept;

/// Stores the packed pixel in `count` pixels from column x.
void fillPixels(uint8_t* row, int32_t x, int32_t count, uint32_t packed,
                int32_t bitsPerPixel) noexcept;

}  // namespace vg::raster
