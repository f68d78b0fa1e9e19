#include "api/packing/maximal_rectangles.h"

#include <algorithm>
#include <limits>

namespace quor::packing {

bool MaximalRectangles::run(const Size& area, const SizeStock& stock, Fill& fill,
                            int64_t& steps) noexcept {
    fill.clear();
    free_.clear();
    if (!free_.push({0, 0, area.width, area.height})) return false;
    const auto fits = [&](const Size& size) { return canHold(size); };
    for (int i = 0; (i = stock.nextClass(i, fits)) >= 0; ++i) {
        const SizeClass& group = stock.classes()[i];
        for (int n = 0; n < group.count; ++n) {
            steps -= free_.count();
            const int chosen = choose(group.size);
            if (chosen < 0) break;  // nor do the others of this size fit
            const int x = free_[chosen].x;
            const int y = free_[chosen].y;
            if (!fill.add(i, x, y, group.size)) return false;
            if (!occupy({x, y, group.size.width, group.size.height})) return false;
            if (free_.isEmpty()) return true;
        }
    }
    return true;
}

bool MaximalRectangles::canHold(const Size& size) const noexcept {
    if (size == LeastSizes::kNone) return false;
    return std::any_of(free_.begin(), free_.end(), [&](const Free& free) {
        return size.width <= free.width && size.height <= free.height;
    });
}

int MaximalRectangles::choose(const Size& size) const noexcept {
    int best = -1;
    int bestShort = std::numeric_limits<int>::max();
    int bestLong = bestShort;
    for (int i = 0; i < free_.count(); ++i) {
        const int restX = free_[i].width - size.width;
        const int restY = free_[i].height - size.height;
        if (restX < 0 || restY < 0) continue;
        const int shorter = std::min(restX, restY);
        const int longer = std::max(restX, restY);
        if (shorter < bestShort || (shorter == bestShort && longer < bestLong)) {
            best = i;
            bestShort = shorter;
            bestLong = longer;
        }
    }
    return best;
}

bool MaximalRectangles::occupy(const Free& used) noexcept {
    int kept = 0;
    const int count = free_.count();
    touching_.clear();
    for (int i = 0; i < count; ++i) {
        const Free free = free_[i];
        if (!free.overlaps(used)) {
            if (free.touches(used) && !touching_.push(kept)) return false;
            free_[kept++] = free;
        } else if (!split(free, used)) {
            return false;
        }
    }
    // The new ones, behind the old ones, move up to the kept ones.
    const int added = free_.count() - count;
    std::copy(free_.begin() + count, free_.end(), free_.begin() + kept);
    free_.truncate(kept + added);
    dropContained(kept);
    return true;
}

bool MaximalRectangles::split(const Free& free, const Free& used) noexcept {
    const Free parts[] = {
        {free.x, free.y, used.x - free.x, free.height},
        {used.right(), free.y, free.right() - used.right(), free.height},
        {free.x, free.y, free.width, used.y - free.y},
        {free.x, used.bottom(), free.width, free.bottom() - used.bottom()},
    };
    for (const Free& part : parts) {
        if (part.width > 0 && part.height > 0 && !free_.push(part)) return false;
    }
    return true;
}

/// Drops the new ones that lie inside others. The old ones stay: none contains another, and no new
/// one contains an old one, being part of a former free rectangle.
void MaximalRectangles::dropContained(int firstNew) noexcept {
    int kept = firstNew;
    for (int i = firstNew; i < free_.count(); ++i) {
        if (!isContained(free_[i], i, firstNew, kept)) free_[kept++] = free_[i];
    }
    free_.truncate(kept);
}

/// Of the old ones only those can contain a new one that touch the rectangle beside which it lies.
bool MaximalRectangles::isContained(const Free& candidate, int self, int firstNew,
                                    int kept) const noexcept {
    for (const int old : touching_) {
        if (free_[old].contains(candidate)) return true;
    }
    for (int i = firstNew; i < kept; ++i) {
        if (free_[i].contains(candidate)) return true;
    }
    for (int i = self + 1; i < free_.count(); ++i) {
        if (free_[i].contains(candidate)) return true;
    }
    return false;
}

}  // namespace quor::packing
