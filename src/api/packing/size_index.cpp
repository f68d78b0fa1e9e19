#include "api/packing/size_index.h"

#include <algorithm>
#include <iterator>

namespace quor::packing {

bool SizeIndex::build(const SizeStock& stock, bool isTransposed) noexcept {
    entries_.clear();
    if (!entries_.reserve(stock.classes().count())) return false;
    for (int i = 0; i < stock.classes().count(); ++i) {
        const SizeClass& group = stock.classes()[i];
        if (group.count == 0) continue;
        const Size size = isTransposed ? group.size.transposed() : group.size;
        entries_.pushReserved({size.width, size.height, group.count, i});
    }
    std::sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
        return a.width != b.width ? a.width < b.width : a.height > b.height;
    });
    indexWidths();
    return true;
}

void SizeIndex::indexWidths() noexcept {
    std::fill(std::begin(counts_), std::end(counts_), 0);
    std::fill(std::begin(used_), std::end(used_), uint64_t{0});
    int entry = 0;
    for (int width = 0; width <= kWidths; ++width) {
        starts_[width] = entry;
        for (; entry < entries_.count() && entries_[entry].width == width; ++entry) {
            counts_[width] += entries_[entry].count;
            used_[width >> 6] |= bitOf(width);
        }
    }
}

}  // namespace quor::packing
