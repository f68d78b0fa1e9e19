// A sweep over the rectangles' bottoms and tops: between two of them, a prefix sum of how many
// rectangles begin and end at each column gives the covered stretches (Klee's measure problem, by
// Bentley's plane sweep, 1977).

#include "vg/raster/geometry/scissor.h"

#include <algorithm>
#include <utility>

namespace vg::raster {
namespace {

/// The part of start..start + length that lies in 0..limit; empty when x1 <= x0.
struct Interval {
    uint16_t x0, x1;

    Interval(int32_t start, int32_t length, int32_t limit) noexcept {
        const auto clamped = [limit](int64_t x) {
            return static_cast<uint16_t>(std::clamp<int64_t>(x, 0, limit));
        };
        x0 = clamped(start);
        x1 = clamped(int64_t{start} + length);
    }
    bool isEmpty() const noexcept { return x1 <= x0; }
};

}  // namespace

bool Scissor::rebuild(const int32_t* values, int32_t count, int32_t surfaceWidth,
                      int32_t surfaceHeight) noexcept {
    width_ = surfaceWidth;
    height_ = surfaceHeight;
    rects_.clear();
    changes_.clear();
    slabBelow_ = 0;
    bool isDone = changes_.resizeZeroed(surfaceWidth + 1) && collectBorders(values, count);
    std::sort(borders_.begin(), borders_.end());
    const Border* border = borders_.begin();
    while (isDone && border != borders_.end()) {
        const uint16_t y = border->y;
        for (; border != borders_.end() && border->y == y; ++border) {
            changes_[border->x0] += border->change;
            changes_[border->x1] -= border->change;
        }
        if (border != borders_.end()) isDone = addSlab(y, border->y);
    }
    if (!isDone) {
        rects_.clear();
        width_ = height_ = -1;
    }
    return isDone;
}

bool Scissor::collectBorders(const int32_t* values, int32_t count) noexcept {
    borders_.clear();
    for (const int32_t* rect = values; count >= 4; rect += 4, count -= 4) {
        const Interval columns(rect[0], rect[2], width_);
        const Interval rows(rect[1], rect[3], height_);
        if (columns.isEmpty() || rows.isEmpty()) continue;
        if (!borders_.reserveMore(2)) return false;
        borders_.pushReserved({rows.x0, columns.x0, columns.x1, +1});
        borders_.pushReserved({rows.x1, columns.x0, columns.x1, -1});
    }
    return true;
}

bool Scissor::addSlab(uint16_t y0, uint16_t y1) noexcept {
    const int32_t first = rects_.count();
    int32_t depth = 0;  // how many rectangles cover the column
    uint16_t start = 0;
    for (int32_t x = 0; x <= width_; ++x) {
        if (changes_[x] == 0) continue;
        const int32_t before = depth;
        depth += changes_[x];
        if (before == 0) start = static_cast<uint16_t>(x);
        if (depth == 0 && !rects_.push({start, y0, static_cast<uint16_t>(x), y1})) return false;
    }
    mergeSlabs(first);
    return true;
}

void Scissor::mergeSlabs(int32_t upper) noexcept {
    const int32_t lower = std::exchange(slabBelow_, upper);
    const int32_t size = upper - lower;
    ScissorRect* const below = rects_.begin() + lower;
    ScissorRect* const above = rects_.begin() + upper;
    const bool isSame =
        size > 0 && rects_.count() - upper == size &&
        std::equal(below, above, above, [](const ScissorRect& a, const ScissorRect& b) {
            return a.x0 == b.x0 && a.x1 == b.x1 && a.y1 == b.y0;
        });
    if (!isSame) return;
    for (int32_t i = 0; i < size; ++i) below[i].y1 = above[i].y1;
    rects_.truncate(upper);
    slabBelow_ = lower;
}

void Scissor::shrinkToFit() noexcept {
    rects_.shrinkToFit();
    borders_.shrinkToFit();
    changes_.shrinkToFit();
}

}  // namespace vg::raster
