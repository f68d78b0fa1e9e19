// Copies rectangles between formats row by row, clipped against both areas; overlapping ones go by
// way of a buffer.

#include "vg/image/pixel_area.h"

#include <algorithm>
#include <limits>

#include "vg/raster/pixels/pixel_io.h"

namespace vg {
namespace {

/// Values toX = x, fromX = x + shift that lie in both ranges, within 0..length of the copy.
struct Range {
    int64_t start, end;  ///< of the destination

    /// The destination's range from `low` to `high`, the source's from 0 to `fromLimit`.
    Range(int32_t to, int32_t from, int32_t length, int32_t low, int32_t high,
          int32_t fromLimit) noexcept {
        const int64_t shift = int64_t{to} - from;
        start = std::max({int64_t{to}, int64_t{low}, shift});
        end = std::min({int64_t{to} + length, int64_t{high}, shift + fromLimit});
    }
    int32_t length() const noexcept {
        return static_cast<int32_t>(std::max(end - start, int64_t{0}));
    }
};

int32_t saturatingSum(int32_t start, int32_t length) noexcept {
    constexpr int32_t kGreatest = std::numeric_limits<int32_t>::max();
    return start > kGreatest - length ? kGreatest : start + length;
}

}  // namespace

raster::PixelRect pixelRect(int32_t x, int32_t y, int32_t width, int32_t height) noexcept {
    return {x, y, saturatingSum(x, width), saturatingSum(y, height)};
}

PixelCopy clipCopy(const PixelArea& to, const ConstPixelArea& from, const PixelCopy& copy,
                   const raster::PixelRect& limits) noexcept {
    const Range columns(copy.toX, copy.fromX, copy.width, std::max(limits.x0, 0),
                        std::min(limits.x1, to.width), from.width);
    const Range rows(copy.toY, copy.fromY, copy.height, std::max(limits.y0, 0),
                     std::min(limits.y1, to.height), from.height);
    if (columns.length() == 0 || rows.length() == 0) return {};
    // Everything lies inside both areas now.
    return {static_cast<int32_t>(columns.start),
            static_cast<int32_t>(rows.start),
            static_cast<int32_t>(columns.start + copy.fromX - copy.toX),
            static_cast<int32_t>(rows.start + copy.fromY - copy.toY),
            columns.length(),
            rows.length()};
}

void copyArea(const PixelArea& to, const ConstPixelArea& from, const PixelCopy& copy,
              const raster::PixelRect& limits) noexcept {
    const PixelCopy part = clipCopy(to, from, copy, limits);
    for (int32_t y = 0; y < part.height; ++y) {
        raster::convertPixels(from.row(part.fromY + y), from.firstX + part.fromX, *from.format,
                              to.row(part.toY + y), to.firstX + part.toX, *to.format, part.width);
    }
}

bool detachSource(ConstPixelArea& from, PixelCopy& copy, base::Array<uint8_t>& work) noexcept {
    // The rectangle in the source: pixels of the copy that have a source at all.
    const Range columns(copy.fromX, copy.fromX, copy.width, 0, from.width, from.width);
    const Range rows(copy.fromY, copy.fromY, copy.height, 0, from.height, from.height);
    if (columns.length() == 0 || rows.length() == 0) {
        from.width = from.height = 0;
        return true;
    }
    PixelArea duplicate;
    duplicate.format = from.format;
    duplicate.width = columns.length();
    duplicate.height = rows.length();
    duplicate.stride = (int64_t{duplicate.width} * from.format->bitsPerPixel + 7) / 8;
    work.clear();
    if (!work.resize(static_cast<int>(duplicate.stride * duplicate.height))) return false;
    duplicate.lowestRow = work.data();
    const auto startX = static_cast<int32_t>(columns.start);
    const auto startY = static_cast<int32_t>(rows.start);
    copyArea(duplicate, from, {0, 0, startX, startY, duplicate.width, duplicate.height},
             wholeOf(duplicate));
    copy.fromX -= startX;
    copy.fromY -= startY;
    from = duplicate;
    return true;
}

void fillArea(const PixelArea& area, const raster::PixelRect& rect, uint32_t packed) noexcept {
    const int32_t x0 = std::max(rect.x0, 0);
    const int32_t x1 = std::min(rect.x1, area.width);
    if (x1 <= x0) return;
    const int32_t y1 = std::min(rect.y1, area.height);
    for (int32_t y = std::max(rect.y0, 0); y < y1; ++y) {
        raster::fillPixels(area.row(y), area.firstX + x0, x1 - x0, packed,
                           area.format->bitsPerPixel);
    }
}

}  // namespace vg
