#pragma once

#include <bit>
#include <cstdint>

#include "api/packing/geometry.h"
#include "api/packing/size_stock.h"
#include "base/array.h"

namespace quor::packing {

/// The size classes by width, for the question what fits a gap: each width leads to its classes,
/// the tallest first, and the widths in use are bits of a map.
class SizeIndex {
public:
    struct Entry {
        int width;
        int height;
        int count;
        int sizeClass;
    };

    /// Indexes what remains in the stock, with the sides exchanged if so asked. False when memory
    /// runs out.
    [[nodiscard]] bool build(const SizeStock& stock, bool isTransposed) noexcept;

    /// The smallest width in use; above every width when none is.
    int narrowest() const noexcept {
        int word = 0;
        while (word < kWidths / 64 && used_[word] == 0) ++word;
        return word == kWidths / 64 ? kWidths : word * 64 + std::countr_zero(used_[word]);
    }

    /// How many footprints of that width are left.
    int countOfWidth(int width) const noexcept { return counts_[width]; }

    /// The last entry that is at most so wide, the entries being in ascending order; -1 when there
    /// is none.
    int lastUpTo(int width) const noexcept { return starts_[width + 1] - 1; }
    /// Its count may be 0.
    const Entry& at(int entry) const noexcept { return entries_[entry]; }

    void take(int entry) noexcept {
        Entry& taken = entries_[entry];
        --taken.count;
        if (--counts_[taken.width] == 0) used_[taken.width >> 6] &= ~bitOf(taken.width);
    }
    void putBack(int entry) noexcept {
        Entry& returned = entries_[entry];
        ++returned.count;
        if (counts_[returned.width]++ == 0) used_[returned.width >> 6] |= bitOf(returned.width);
    }

private:
    void indexWidths() noexcept;

    static constexpr int kWidths = 2 * kMaxSide;  ///< a footprint is below this in each direction
    static uint64_t bitOf(int width) noexcept { return uint64_t{1} << (width & 63); }

    base::Array<Entry> entries_;
    int starts_[kWidths + 1] = {};
    int counts_[kWidths] = {};
    uint64_t used_[kWidths / 64] = {};
};

}  // namespace quor::packing
