// Copies pixels, and dilates the colours of visible ones by one pixel into transparent ones.

#include "api/surface_copy.h"

#include <cstddef>
#include <cstring>

namespace quor {

namespace {

/// The lowest bit of each channel of a pixel.
struct ChannelShifts {
    uint32_t alpha, red, green, blue;
};

/// Bits 6 and 7 of a format code choose the channel order. Codes are paired (with and without
/// premultiplication) and grouped (sRGB 0x01 and 0x02, linear 0x08 and 0x09 above the order bits).
ChannelShifts channelShifts(uint32_t format) noexcept {
    static constexpr ChannelShifts kOrders[] = {
        {0, 24, 16, 8},  // RGBA
        {24, 16, 8, 0},  // ARGB
        {0, 8, 16, 24},  // BGRA
        {24, 0, 8, 16},  // ABGR
    };
    const uint32_t layout = format & 0x3FU;
    const bool hasAlpha = layout == 0x01 || layout == 0x02 || layout == 0x08 || layout == 0x09;
    if (format > 0xFFU || !hasAlpha) return {0, 0, 0, 0};
    return kOrders[format >> 6];
}

uint32_t channel(uint32_t pixel, uint32_t shift) noexcept { return pixel >> shift & 0xFFU; }

/// The mean colour of the visible pixels around `center`, or its own when there are none.
/// Precondition: the pixel has eight neighbours.
uint32_t dilatedPixel(const uint32_t* center, ptrdiff_t stride, ChannelShifts shifts) noexcept {
    const ptrdiff_t neighbours[] = {-stride - 1, -stride,    -stride + 1, -1,
                                    +1,          stride - 1, stride,      stride + 1};
    uint32_t red = 0;
    uint32_t green = 0;
    uint32_t blue = 0;
    uint32_t visible = 0;
    for (const ptrdiff_t offset : neighbours) {
        const uint32_t pixel = center[offset];
        if (channel(pixel, shifts.alpha) == 0) continue;
        red += channel(pixel, shifts.red);
        green += channel(pixel, shifts.green);
        blue += channel(pixel, shifts.blue);
        ++visible;
    }
    if (visible == 0) return *center;
    return red / visible << shifts.red | green / visible << shifts.green |
           blue / visible << shifts.blue;
}

void dilateRow(const uint32_t* source, int32_t width, ChannelShifts shifts,
               uint32_t* destination) noexcept {
    destination[0] = source[0];
    for (int32_t x = 1; x < width - 1; ++x) {
        destination[x] = channel(source[x], shifts.alpha) != 0
                             ? source[x]
                             : dilatedPixel(source + x, width, shifts);
    }
    destination[width - 1] = source[width - 1];
}

}  // namespace

void copyPixels(const PixelBlock& source, uint32_t* destination) noexcept {
    const size_t count = static_cast<size_t>(source.width) * static_cast<size_t>(source.height);
    std::memcpy(destination, source.pixels, count * sizeof(uint32_t));
}

void copyPixelsDilated(const PixelBlock& source, uint32_t* destination) noexcept {
    if (source.width < 3 || source.height < 3) return copyPixels(source, destination);
    const ChannelShifts shifts = channelShifts(source.format);
    const ptrdiff_t stride = source.width;
    const ptrdiff_t lastRow = stride * (source.height - 1);
    const size_t rowBytes = static_cast<size_t>(stride) * sizeof(uint32_t);

    std::memcpy(destination, source.pixels, rowBytes);
    for (ptrdiff_t row = stride; row < lastRow; row += stride) {
        dilateRow(source.pixels + row, source.width, shifts, destination + row);
    }
    std::memcpy(destination + lastRow, source.pixels + lastRow, rowBytes);
}

}  // namespace quor
