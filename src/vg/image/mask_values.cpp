// Combines masks in chunks of pixels converted to bytes, in units of 1/255: the union is
// 1 - (1 - a)(1 - b), the intersection a b, the difference a (1 - b).

#include "vg/image/mask_values.h"

#include <algorithm>
#include <cassert>

#include "vg/raster/pixels/pixel_io.h"

namespace vg {
namespace {

/// a b / 255, rounded; exact for bytes.
constexpr uint32_t multiply255(uint32_t a, uint32_t b) noexcept {
    const uint32_t product = a * b + 128;
    return (product + (product >> 8)) >> 8;
}

constexpr uint32_t complement(uint32_t value) noexcept { return kFullMask - value; }

/// mask[i] = combine(mask[i], value of colors[i]).
template <class Combine>
void combineEach(uint8_t* mask, const uint32_t* colors, int32_t shift, int32_t count,
                 const Combine& combine) noexcept {
    for (int32_t i = 0; i < count; ++i) {
        mask[i] = static_cast<uint8_t>(combine(uint32_t{mask[i]}, colors[i] >> shift & 0xFF));
    }
}

/// The values are bits `shift` to `shift` + 7 of the colours.
void combineRow(VGint operation, uint8_t* mask, const uint32_t* colors, int32_t shift,
                int32_t count) noexcept {
    using Value = uint32_t;
    switch (operation) {
        case VG_SET_MASK:
            return combineEach(mask, colors, shift, count, [](Value, Value b) { return b; });
        case VG_UNION_MASK:
            return combineEach(mask, colors, shift, count, [](Value a, Value b) {
                return complement(multiply255(complement(a), complement(b)));
            });
        case VG_INTERSECT_MASK:
            return combineEach(mask, colors, shift, count, multiply255);
        case VG_SUBTRACT_MASK:
            return combineEach(mask, colors, shift, count,
                               [](Value a, Value b) { return multiply255(a, complement(b)); });
        default:
            return;
    }
}

/// A format of bytes, alpha on top and then red, into which a channel is only widened: one of the
/// same colour space, premultiplied or not as the given one.
const raster::PixelFormatDescriptor& byteFormatFor(
    const raster::PixelFormatDescriptor& format) noexcept {
    const bool isLinear = (format.flags & raster::kLinear) != 0;
    const bool isPremultiplied = (format.flags & raster::kPremultiplied) != 0;
    const uint32_t plain = isLinear ? VG_lARGB_8888 : VG_sARGB_8888;
    return *raster::findPixelFormat(plain + (isPremultiplied ? 1U : 0U));
}

}  // namespace

const raster::PixelFormatDescriptor& maskFormat() noexcept {
    return *raster::findPixelFormat(VG_A_8);
}

void setMask(const PixelArea& mask, VGint operation, const raster::PixelRect& rect) noexcept {
    assert(!takesValues(operation));
    fillArea(mask, rect, operation == VG_FILL_MASK ? kFullMask : 0U);
}

void combineMask(const PixelArea& mask, VGint operation, const ConstPixelArea& from,
                 const PixelCopy& copy) noexcept {
    assert(takesValues(operation));
    constexpr int32_t kChunk = 128;
    const PixelCopy part = clipCopy(mask, from, copy, wholeOf(mask));
    const raster::PixelFormatDescriptor& bytes = byteFormatFor(*from.format);
    const int32_t shift = (from.format->flags & raster::kHasAlpha) != 0 ? 24 : 16;
    uint32_t colors[kChunk];
    for (int32_t y = 0; y < part.height; ++y) {
        for (int32_t x = 0; x < part.width; x += kChunk) {
            const int32_t count = std::min(kChunk, part.width - x);
            raster::convertPixels(from.row(part.fromY + y), from.firstX + part.fromX + x,
                                  *from.format, reinterpret_cast<uint8_t*>(colors), 0, bytes,
                                  count);
            combineRow(operation, mask.row(part.toY + y) + part.toX + x, colors, shift, count);
        }
    }
}

}  // namespace vg
