#include "vg/pixel_area.h"

#include <algorithm>
#include <limits>

#include "vg/raster/pixel_io.h"

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
    bool isEmpty() const noexcept { return end <= start; }
};

int32_t saturatingSum(int32_t start, int32_t length) noexcept {
    constexpr int32_t kGreatest = std::numeric_limits<int32_t>::max();
    return start > kGreatest - length ? kGreatest : start + length;
}

}  // namespace

raster::PixelRect pixelRect(int32_t x, int32_t y, int32_t width, int32_t height) noexcept {
    return {x, y, saturatingSum(x, width), saturatingSum(y, height)};
}

void copyArea(const PixelArea& to, const ConstPixelArea& from, const PixelCopy& copy,
              const raster::PixelRect& limits) noexcept {
    const Range columns(copy.toX, copy.fromX, copy.width, std::max(limits.x0, 0),
                        std::min(limits.x1, to.width), from.width);
    const Range rows(copy.toY, copy.fromY, copy.height, std::max(limits.y0, 0),
                     std::min(limits.y1, to.height), from.height);
    if (columns.isEmpty() || rows.isEmpty()) return;
    // Everything lies inside both areas now.
    const auto toX = static_cast<int32_t>(columns.start);
    const auto fromX = static_cast<int32_t>(columns.start + copy.fromX - copy.toX);
    const auto count = static_cast<int32_t>(columns.end - columns.start);
    for (int64_t y = rows.start; y < rows.end; ++y) {
        const auto fromY = static_cast<int32_t>(y + copy.fromY - copy.toY);
        raster::convertPixels(from.row(fromY), fromX, *from.format, to.row(static_cast<int32_t>(y)),
                              toX, *to.format, count);
    }
}

bool detachSource(ConstPixelArea& from, PixelCopy& copy, base::Array<uint8_t>& work) noexcept {
    // The rectangle in the source: pixels of the copy that have a source at all.
    const Range columns(copy.fromX, copy.fromX, copy.width, 0, from.width, from.width);
    const Range rows(copy.fromY, copy.fromY, copy.height, 0, from.height, from.height);
    if (columns.isEmpty() || rows.isEmpty()) {
        from.width = from.height = 0;
        return true;
    }
    PixelArea duplicate;
    duplicate.format = from.format;
    duplicate.width = static_cast<int32_t>(columns.end - columns.start);
    duplicate.height = static_cast<int32_t>(rows.end - rows.start);
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
        raster::fillPixels(area.row(y), x0, x1 - x0, packed, area.format->bitsPerPixel);
    }
}

}  // namespace vg
