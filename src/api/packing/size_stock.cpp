#include "api/packing/size_stock.h"

#include <algorithm>
#include <numeric>

namespace quor::packing {

bool SizeStock::fill(const Size* footprints, int count, Heuristic heuristic) noexcept {
    items_.clear();
    classes_.clear();
    if (!items_.resize(count) || !classes_.reserve(count)) return false;
    std::iota(items_.begin(), items_.end(), 0);
    const auto comesBefore = [&](int a, int b) {
        const Size& first = footprints[a];
        const Size& second = footprints[b];
        const int firstKey = sortKey(heuristic, first);
        const int secondKey = sortKey(heuristic, second);
        if (firstKey != secondKey) return firstKey > secondKey;
        // One side being equal, this compares the other one ...
        const int difference = first.width + first.height - second.width - second.height;
        if (difference != 0) return difference > 0;
        // ... and this tells a size from its mirror image.
        return first.width != second.width ? first.width > second.width : a < b;
    };
    std::sort(items_.begin(), items_.end(), comesBefore);
    group(footprints);
    return least_.build(classes_.count(), [&](int i) { return classes_[i].size; }) &&
           upright_.build(classes_) && transposed_.build(classes_);
}

void SizeStock::group(const Size* footprints) noexcept {
    remaining_ = items_.count();
    remainingArea_ = 0;
    for (int i = 0; i < items_.count(); ++i) {
        const Size& size = footprints[items_[i]];
        remainingArea_ += size.area();
        if (classes_.isEmpty() || classes_.last().size != size) {
            classes_.pushReserved({size, 0, i});
        }
        ++classes_.last().count;
    }
}

Size SizeStock::largestSides() const noexcept {
    Size largest = {0, 0};
    for (const SizeClass& group : classes_) {
        if (group.count == 0) continue;
        largest.width = std::max(largest.width, group.size.width);
        largest.height = std::max(largest.height, group.size.height);
    }
    return largest;
}

void SizeStock::change(const Fill& fill, int sign) noexcept {
    for (const Placement& placement : fill.placements) {
        SizeClass& group = classes_[placement.sizeClass];
        const int before = group.count;
        group.count += sign;
        upright_.change(placement.sizeClass, sign);
        transposed_.change(placement.sizeClass, sign);
        if (before == 0) least_.change(placement.sizeClass, group.size);
        if (group.count == 0) least_.change(placement.sizeClass, LeastSizes::kNone);
    }
    remaining_ += sign * fill.placements.count();
    remainingArea_ += sign * fill.filledArea;
}

bool SizeStock::tidy() noexcept {
    for (SizeIndex* index : {&upright_, &transposed_}) {
        if (index->liveCount() < index->count() / 2 && !index->build(classes_)) return false;
    }
    return true;
}

}  // namespace quor::packing
