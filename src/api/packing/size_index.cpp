#include "api/packing/size_index.h"

#include <algorithm>
#include <iterator>

namespace quor::packing {

bool SizeIndex::build(const base::Array<SizeClass>& classes) noexcept {
    if (!listEntries(classes)) return false;
    std::sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
        return a.width != b.width ? a.width > b.width : a.height < b.height;
    });
    for (int i = 0; i < entries_.count(); ++i) entryOfClass_[entries_[i].sizeClass] = i;
    liveCount_ = entries_.count();
    indexWidths();
    return least_.build(entries_.count(), [&](int i) {
        return Size{entries_[i].width, entries_[i].height};
    });
}

bool SizeIndex::listEntries(const base::Array<SizeClass>& classes) noexcept {
    entries_.clear();
    if (!entries_.reserve(classes.count()) || !entryOfClass_.resize(classes.count())) return false;
    for (int i = 0; i < classes.count(); ++i) {
        if (classes[i].count == 0) continue;
        const Size size = isTransposed_ ? classes[i].size.transposed() : classes[i].size;
        entries_.pushReserved({size.width, size.height, classes[i].count, i});
    }
    return true;
}

void SizeIndex::indexWidths() noexcept {
    std::fill(std::begin(counts_), std::end(counts_), 0);
    std::fill(std::begin(used_), std::end(used_), uint64_t{0});
    int entry = 0;
    for (int width = kWidths - 1; width >= 0; --width) {
        starts_[width] = entry;
        for (; entry < entries_.count() && entries_[entry].width == width; ++entry) {
            counts_[width] += entries_[entry].count;
            used_[width >> 6] |= bitOf(width);
        }
    }
}

void SizeIndex::change(int sizeClass, int difference) noexcept {
    const int i = entryOfClass_[sizeClass];
    Entry& entry = entries_[i];
    const bool wasLive = entry.count > 0;
    entry.count += difference;
    counts_[entry.width] += difference;
    if (counts_[entry.width] == 0) {
        used_[entry.width >> 6] &= ~bitOf(entry.width);
    } else {
        used_[entry.width >> 6] |= bitOf(entry.width);
    }
    const bool isLive = entry.count > 0;
    if (isLive == wasLive) return;
    liveCount_ += isLive ? 1 : -1;
    least_.change(i, isLive ? Size{entry.width, entry.height} : LeastSizes::kNone);
}

}  // namespace quor::packing
