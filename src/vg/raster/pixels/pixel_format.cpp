// One row of the table a format code; what a row must be like is checked at compile time.

#include "vg/raster/pixels/pixel_format.h"

#include <cassert>
#include <iterator>

namespace vg::raster {
namespace {

constexpr int32_t kRgba = kOrderRgba, kAbgr = kOrderAbgr;
constexpr int32_t kArgb = kOrderArgb, kBgra = kOrderBgra;
constexpr int32_t kL = kLinear, kP = kPremultiplied, kA = kHasAlpha;

// clang-format off
constexpr PixelFormatDescriptor kFormats[] = {
    // Shifts of      Bits a  Widths of     Channel
    // R, G, B, A     pixel   R, G, B, A    order, flags
    // RGBA order
    {24, 16,  8,  0,   32,   8, 8, 8, 8,   kRgba, 0},             // sRGBX_8888
    {24, 16,  8,  0,   32,   8, 8, 8, 8,   kRgba, kA},            // sRGBA_8888
    {24, 16,  8,  0,   32,   8, 8, 8, 8,   kRgba, kP | kA},       // sRGBA_8888_PRE
    {11,  5,  0,  0,   16,   5, 6, 5, 0,   kRgba, 0},             // sRGB_565
    {11,  6,  1,  0,   16,   5, 5, 5, 1,   kRgba, kA},            // sRGBA_5551
    {12,  8,  4,  0,   16,   4, 4, 4, 4,   kRgba, kA},            // sRGBA_4444
    { 0,  0,  0,  0,    8,   0, 0, 0, 0,   kRgba, 0},             // sL_8
    {24, 16,  8,  0,   32,   8, 8, 8, 8,   kRgba, kL},            // lRGBX_8888
    {24, 16,  8,  0,   32,   8, 8, 8, 8,   kRgba, kL | kA},       // lRGBA_8888
    {24, 16,  8,  0,   32,   8, 8, 8, 8,   kRgba, kL | kP | kA},  // lRGBA_8888_PRE
    { 0,  0,  0,  0,    8,   0, 0, 0, 0,   kRgba, kL},            // lL_8
    { 0,  0,  0,  0,    8,   0, 0, 0, 8,   kRgba, kA},            // A_8
    { 0,  0,  0,  0,    1,   0, 0, 0, 0,   kRgba, kL},            // BW_1
    { 0,  0,  0,  0,    1,   0, 0, 0, 1,   kRgba, kA},            // A_1
    { 0,  0,  0,  0,    4,   0, 0, 0, 4,   kRgba, kA},            // A_4
    // ARGB order
    {16,  8,  0, 24,   32,   8, 8, 8, 8,   kArgb, 0},             // sXRGB_8888
    {16,  8,  0, 24,   32,   8, 8, 8, 8,   kArgb, kA},            // sARGB_8888
    {16,  8,  0, 24,   32,   8, 8, 8, 8,   kArgb, kP | kA},       // sARGB_8888_PRE
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kArgb, 0},
    {10,  5,  0, 15,   16,   5, 5, 5, 1,   kArgb, kA},            // sARGB_1555
    { 8,  4,  0, 12,   16,   4, 4, 4, 4,   kArgb, kA},            // sARGB_4444
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kArgb, 0},
    {16,  8,  0, 24,   32,   8, 8, 8, 8,   kArgb, kL},            // lXRGB_8888
    {16,  8,  0, 24,   32,   8, 8, 8, 8,   kArgb, kL | kA},       // lARGB_8888
    {16,  8,  0, 24,   32,   8, 8, 8, 8,   kArgb, kL | kP | kA},  // lARGB_8888_PRE
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kArgb, 0},
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kArgb, 0},
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kArgb, 0},
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kArgb, 0},
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kArgb, 0},
    // BGRA order
    { 8, 16, 24,  0,   32,   8, 8, 8, 8,   kBgra, 0},             // sBGRX_8888
    { 8, 16, 24,  0,   32,   8, 8, 8, 8,   kBgra, kA},            // sBGRA_8888
    { 8, 16, 24,  0,   32,   8, 8, 8, 8,   kBgra, kP | kA},       // sBGRA_8888_PRE
    { 0,  5, 11,  0,   16,   5, 6, 5, 0,   kBgra, 0},             // sBGR_565
    { 1,  6, 11,  0,   16,   5, 5, 5, 1,   kBgra, kA},            // sBGRA_5551
    { 4,  8, 12,  0,   16,   4, 4, 4, 4,   kBgra, kA},            // sBGRA_4444
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kBgra, 0},
    { 8, 16, 24,  0,   32,   8, 8, 8, 8,   kBgra, kL},            // lBGRX_8888
    { 8, 16, 24,  0,   32,   8, 8, 8, 8,   kBgra, kL | kA},       // lBGRA_8888
    { 8, 16, 24,  0,   32,   8, 8, 8, 8,   kBgra, kL | kP | kA},  // lBGRA_8888_PRE
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kBgra, 0},
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kBgra, 0},
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kBgra, 0},
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kBgra, 0},
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kBgra, 0},
    // ABGR order
    { 0,  8, 16, 24,   32,   8, 8, 8, 8,   kAbgr, 0},             // sXBGR_8888
    { 0,  8, 16, 24,   32,   8, 8, 8, 8,   kAbgr, kA},            // sABGR_8888
    { 0,  8, 16, 24,   32,   8, 8, 8, 8,   kAbgr, kP | kA},       // sABGR_8888_PRE
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kAbgr, 0},
    { 0,  5, 10, 11,   16,   5, 5, 5, 1,   kAbgr, kA},            // sABGR_1555
    { 0,  4,  8, 12,   16,   4, 4, 4, 4,   kAbgr, kA},            // sABGR_4444
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kAbgr, 0},
    { 0,  8, 16, 24,   32,   8, 8, 8, 8,   kAbgr, kL},            // lXBGR_8888
    { 0,  8, 16, 24,   32,   8, 8, 8, 8,   kAbgr, kL | kA},       // lABGR_8888
    { 0,  8, 16, 24,   32,   8, 8, 8, 8,   kAbgr, kL | kP | kA},  // lABGR_8888_PRE
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kAbgr, 0},
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kAbgr, 0},
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kAbgr, 0},
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kAbgr, 0},
    { 0,  0,  0,  0,    0,   0, 0, 0, 0,   kAbgr, 0},
};
// clang-format on

static_assert(std::size(kFormats) == kPixelFormatCount);

/// The one irregular row, deliberately so: its alpha bit lies inside the blue field, not above it.
constexpr int32_t kAbgr1555 = 3 * 15 + 4;

constexpr bool fieldFits(int32_t shift, int32_t bits, int32_t bitsPerPixel) noexcept {
    return bits == 0 ? shift == 0 : shift + bits <= bitsPerPixel;
}

constexpr bool fieldsAreDisjoint(const PixelFormatDescriptor& f) noexcept {
    const auto field = [](int32_t shift, int32_t bits) {
        return ((uint64_t{1} << bits) - 1) << shift;
    };
    const uint64_t red = field(f.redShift, f.redBits);
    const uint64_t green = field(f.greenShift, f.greenBits);
    const uint64_t blue = field(f.blueShift, f.blueBits);
    const uint64_t alpha = field(f.alphaShift, f.alphaBits);
    return (red & green) == 0 && ((red | green) & blue) == 0 && ((red | green | blue) & alpha) == 0;
}

/// Blue lies below red and alpha lies lowest, unless the order says otherwise.
constexpr bool followsOrder(const PixelFormatDescriptor& f) noexcept {
    const bool blueFirst = f.channelOrder == kAbgr || f.channelOrder == kBgra;
    const bool alphaFirst = f.channelOrder == kAbgr || f.channelOrder == kArgb;
    return (f.blueShift > f.redShift) == blueFirst &&
           (f.alphaBits == 0 || (f.alphaShift > f.greenShift) == alphaFirst);
}

constexpr bool isConsistent(const PixelFormatDescriptor& f) noexcept {
    const int32_t bits = f.bitsPerPixel;
    if (!isColored(f)) {
        return f.redShift == 0 && f.greenShift == 0 && f.blueShift == 0 && f.alphaShift == 0 &&
               (f.alphaBits == 0 || f.alphaBits == bits);
    }
    return fieldFits(f.redShift, f.redBits, bits) && fieldFits(f.greenShift, f.greenBits, bits) &&
           fieldFits(f.blueShift, f.blueBits, bits) && fieldFits(f.alphaShift, f.alphaBits, bits) &&
           f.redBits + f.greenBits + f.blueBits + f.alphaBits == bits && followsOrder(f);
}

constexpr bool isTableConsistent() noexcept {
    constexpr int32_t kOrderOfGroup[] = {kRgba, kArgb, kBgra, kAbgr};
    for (int32_t i = 0; i < kPixelFormatCount; ++i) {
        const PixelFormatDescriptor& f = kFormats[i];
        if (f.channelOrder != kOrderOfGroup[i / 15] || !isConsistent(f)) return false;
        if (fieldsAreDisjoint(f) == (i == kAbgr1555)) return false;
    }
    return true;
}

static_assert(isTableConsistent());

}  // namespace

const PixelFormatDescriptor& pixelFormatAt(int32_t index) noexcept {
    assert(0 <= index && index < kPixelFormatCount);
    return kFormats[index];
}

const PixelFormatDescriptor* findPixelFormat(uint32_t code) noexcept {
    if ((code & ~0xCFU) != 0 || (code & 0xF) == 0xF) return nullptr;
    const PixelFormatDescriptor& format = kFormats[pixelFormatIndex(code)];
    return format.bitsPerPixel != 0 ? &format : nullptr;
}

}  // namespace vg::raster
