#pragma once

#include <cassert>
#include <cstdint>

namespace vg::raster {

/// Bits of PixelFormatDescriptor::flags.
enum PixelFormatFlags : int32_t { kLinear = 0x1, kPremultiplied = 0x2, kHasAlpha = 0x4 };

/// From the highest bit of a pixel down.
enum ChannelOrder : int32_t { kOrderRgba = 0, kOrderAbgr = 1, kOrderArgb = 2, kOrderBgra = 3 };

/// The layout of one VGImageFormat.
///
/// A pixel is a word of bitsPerPixel bits; a field's value is (word >> shift) & ((1 << bits) - 1).
/// X formats have an alpha field but no kHasAlpha: the field is written as all ones and not read.
/// Luminance fills the word and has no field; alpha-only formats have no colour fields.
struct PixelFormatDescriptor {
    int32_t redShift, greenShift, blueShift, alphaShift;
    int32_t bitsPerPixel;  ///< 1, 4, 8, 16 or 32; 0 for a combination that does not exist
    int32_t redBits, greenBits, blueBits, alphaBits;
    int32_t channelOrder;  ///< a ChannelOrder
    int32_t flags;
};

inline constexpr int32_t kPixelFormatCount = 60;

/// Four groups of 15: bits 6 and 7 of the code, then bits 0 to 3. Precondition: those are not 15.
constexpr int32_t pixelFormatIndex(uint32_t code) noexcept {
    assert((code & 15) != 15);
    return static_cast<int32_t>(((code >> 6) & 3) * 15 + (code & 15));
}

/// Precondition: 0 <= index < kPixelFormatCount. The format may be one that does not exist.
const PixelFormatDescriptor& pixelFormatAt(int32_t index) noexcept;

/// The descriptor of a VGImageFormat code; null when there is no such format.
const PixelFormatDescriptor* findPixelFormat(uint32_t code) noexcept;

constexpr bool isColored(const PixelFormatDescriptor& f) noexcept { return f.redBits != 0; }

/// Luminance or black and white: one field over the whole pixel.
constexpr bool isLuminance(const PixelFormatDescriptor& f) noexcept {
    return f.redBits == 0 && f.alphaBits == 0;
}

}  // namespace vg::raster
