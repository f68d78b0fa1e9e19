// Converts in chunks: load packed pixels, unpack, convert, pack, store.

#include "vg/raster/pixels/pixel_io.h"

#include <algorithm>
#include <array>
#include <type_traits>

#include "vg/raster/pixels/color_space_tables.h"

namespace vg::raster {
namespace {

/// K[a] = a 2^23 / 255, rounded.
constexpr std::array<uint32_t, 256> kAlphaFactors = [] {
    std::array<uint32_t, 256> factors{};
    for (uint32_t a = 0; a < 256; ++a) factors[a] = ((a << 23) + 127) / 255;
    return factors;
}();

template <class Channel>
uint32_t mapColorChannels(uint32_t color, Channel map) noexcept {
    return (color & 0xFF000000) | map(color >> 16 & 0xFF) << 16 | map(color >> 8 & 0xFF) << 8 |
           map(color & 0xFF);
}

uint32_t changeSpace(uint32_t color, const uint32_t (&table)[256]) noexcept {
    return mapColorChannels(color, [&](uint32_t channel) { return table[channel]; });
}

/// A byte as a field of `bits` bits, rounded to nearest.
constexpr uint32_t narrowToField(uint32_t channel, int32_t bits) noexcept {
    return (channel * ((1U << bits) - 1) + 127) / 255;
}

constexpr uint32_t luminanceOf(uint32_t color) noexcept {
    const uint32_t sum =
        (color >> 16 & 0xFF) * 2126 + (color >> 8 & 0xFF) * 7152 + (color & 0xFF) * 722;
    return (sum + 5000) / 10000;
}

uint32_t packColored(uint32_t color, const PixelFormatDescriptor& f) noexcept {
    const uint32_t alpha = (f.flags & kHasAlpha) != 0 ? color >> 24 : 255;
    return narrowToField(alpha, f.alphaBits) << f.alphaShift |
           narrowToField(color >> 16 & 0xFF, f.redBits) << f.redShift |
           narrowToField(color >> 8 & 0xFF, f.greenBits) << f.greenShift |
           narrowToField(color & 0xFF, f.blueBits) << f.blueShift;
}

/// Calls visit with the number of bits as a constant.
template <class Visitor>
void withBits(int32_t bits, Visitor visit) noexcept {
    switch (bits) {
        case 32:
            return visit(std::integral_constant<int, 32>());
        case 16:
            return visit(std::integral_constant<int, 16>());
        case 8:
            return visit(std::integral_constant<int, 8>());
        case 4:
            return visit(std::integral_constant<int, 4>());
        default:
            return visit(std::integral_constant<int, 1>());
    }
}

constexpr int32_t kChunk = 128;

void loadPixels(const uint8_t* row, int32_t x, int32_t count, int32_t bits,
                uint32_t* packed) noexcept {
    withBits(bits, [&](auto width) {
        for (int32_t i = 0; i < count; ++i) packed[i] = loadPixel<width>(row, x + i);
    });
}

void storePixels(uint8_t* row, int32_t x, int32_t count, int32_t bits,
                 const uint32_t* packed) noexcept {
    withBits(bits, [&](auto width) {
        for (int32_t i = 0; i < count; ++i) storePixel<width>(row, x + i, packed[i]);
    });
}

void convertChunk(uint32_t* pixels, int32_t count, const PixelFormatDescriptor& from,
                  const PixelFormatDescriptor& to) noexcept {
    for (int32_t i = 0; i < count; ++i) {
        const uint32_t color = unpackColor(pixels[i], from);
        pixels[i] = packColor(convertColor(color, from.flags, to.flags), to);
    }
}

}  // namespace

uint32_t unpackColor(uint32_t packed, const PixelFormatDescriptor& format) noexcept {
    if (format.bitsPerPixel == 32) {
        return unpack32(packed, format.channelOrder) | opaqueBits(format);
    }
    return isColored(format) ? unpackColored(packed, format) : unpackUncolored(packed, format);
}

uint32_t packColor(uint32_t color, const PixelFormatDescriptor& format) noexcept {
    if (format.bitsPerPixel == 32) return pack32(color | opaqueBits(format), format.channelOrder);
    if (isColored(format)) return packColored(color, format);
    const uint32_t value = isLuminance(format) ? luminanceOf(color) : color >> 24;
    return narrowToField(value, format.bitsPerPixel);
}

uint32_t premultiply(uint32_t color) noexcept {
    const uint32_t factor = kAlphaFactors[color >> 24];
    return mapColorChannels(color, [=](uint32_t channel) { return channel * factor >> 23; });
}

uint32_t unpremultiply(uint32_t color) noexcept {
    const uint32_t alpha = color >> 24;
    if (alpha == 255) return color;
    if (alpha == 0) return 0;
    return mapColorChannels(color, [=](uint32_t channel) {
        return std::min(255U, (channel * 255 + alpha / 2) / alpha);
    });
}

uint32_t convertColor(uint32_t color, int32_t fromFlags, int32_t toFlags) noexcept {
    if (((fromFlags ^ toFlags) & (kLinear | kPremultiplied)) == 0) return color;
    bool isPremultiplied = (fromFlags & kPremultiplied) != 0;
    const bool changesSpace = ((fromFlags ^ toFlags) & kLinear) != 0;
    const bool shallBePremultiplied = (toFlags & kPremultiplied) != 0;
    if (isPremultiplied && (changesSpace || !shallBePremultiplied)) {
        color = unpremultiply(color);
        isPremultiplied = false;
    }
    if (changesSpace) {
        color =
            changeSpace(color, (toFlags & kLinear) != 0 ? kStandardToLinear : kLinearToStandard);
    }
    return shallBePremultiplied && !isPremultiplied ? premultiply(color) : color;
}

uint32_t packPlain(const float rgba[4]) noexcept {
    const auto channel = [&](int i) {
        return static_cast<uint32_t>(clampUnit(rgba[i]) * 255.0F + 0.5F);
    };
    return channel(3) << 24 | channel(0) << 16 | channel(1) << 8 | channel(2);
}

uint32_t packPremultiplied(const float rgba[4]) noexcept {
    const float alpha = clampUnit(rgba[3]);
    const float product[4] = {clampUnit(rgba[0]) * alpha, clampUnit(rgba[1]) * alpha,
                              clampUnit(rgba[2]) * alpha, alpha};
    return packPlain(product);
}

uint32_t packFloatColor(const float rgba[4], const PixelFormatDescriptor& format) noexcept {
    // Where nothing else is done to the colour, it is rounded once.
    if ((format.flags & (kLinear | kPremultiplied)) == kPremultiplied) {
        return packColor(packPremultiplied(rgba), format);
    }
    return packColor(convertColor(packPlain(rgba), kHasAlpha, format.flags), format);
}

void convertPixels(const uint8_t* from, int32_t fromX, const PixelFormatDescriptor& fromFormat,
                   uint8_t* to, int32_t toX, const PixelFormatDescriptor& toFormat,
                   int32_t count) noexcept {
    const bool isSameFormat = &fromFormat == &toFormat;
    const int32_t bytes = fromFormat.bitsPerPixel / 8;
    if (isSameFormat && bytes > 0) {
        std::memcpy(to + int64_t{toX} * bytes, from + int64_t{fromX} * bytes,
                    static_cast<size_t>(count) * static_cast<size_t>(bytes));
        return;
    }
    uint32_t chunk[kChunk];
    for (int32_t done = 0; done < count; done += kChunk) {
        const int32_t length = std::min(kChunk, count - done);
        loadPixels(from, fromX + done, length, fromFormat.bitsPerPixel, chunk);
        if (!isSameFormat) convertChunk(chunk, length, fromFormat, toFormat);
        storePixels(to, toX + done, length, toFormat.bitsPerPixel, chunk);
    }
}

void fillPixels(uint8_t* row, int32_t x, int32_t count, uint32_t packed,
                int32_t bitsPerPixel) noexcept {
    withBits(bitsPerPixel, [&](auto width) {
        for (int32_t i = 0; i < count; ++i) storePixel<width>(row, x + i, packed);
    });
}

}  // namespace vg::raster
