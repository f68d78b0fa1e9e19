#pragma once

#include <bit>
#include <cstdint>

#include "api/packing/geometry.h"
#include "api/packing/least_sizes.h"
#include "base/array.h"

namespace quor::packing {

/// Footprints of one size.
struct SizeClass {
    Size size;
    int count;     ///< how many are still to be placed
    int nextItem;  ///< the first without a place, an index into the stock's item order
};

/// The size classes by width, for the question what fits a gap: the widest first, of equal ones
/// the lowest, and the widths in use are bits of a map.
///
/// It follows the stock bin after bin. What one attempt takes changes counts alone; runs of entries
/// that are too tall are leapt over by what the stock had when the attempt began.
class SizeIndex {
public:
    struct Entry {
        int width;
        int height;
        int count;
        int sizeClass;
    };

    explicit SizeIndex(bool isTransposed) noexcept : isTransposed_(isTransposed) {}

    /// Indexes what remains of the classes. False when memory runs out.
    [[nodiscard]] bool build(const base::Array<SizeClass>& classes) noexcept;

    /// How many of the entries had something left when they were indexed or last changed.
    int liveCount() const noexcept { return liveCount_; }
    int count() const noexcept { return entries_.count(); }

    /// Adds to the count of a class that was there when the index was built.
    void change(int sizeClass, int difference) noexcept;

    /// The smallest width in use; above every width when none is.
    int narrowest() const noexcept {
        int word = 0;
        while (word < kWidths / 64 && used_[word] == 0) ++word;
        return word == kWidths / 64 ? kWidths : word * 64 + std::countr_zero(used_[word]);
    }

    /// How many footprints of that width are left.
    int countOfWidth(int width) const noexcept { return counts_[width]; }

    /// The first entry that is at most so wide; count() when there is none.
    int firstUpTo(int width) const noexcept { return starts_[width]; }
    /// An entry from `first` on, before which all are taller than that; -1 when all are. Within its
    /// run of LeastSizes::kRun entries others may fit.
    int nextUpTo(int first, int height) const noexcept {
        return least_.next(first, [=](const Size& size) { return size.height <= height; });
    }
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
    bool listEntries(const base::Array<SizeClass>& classes) noexcept;
    void indexWidths() noexcept;

    static constexpr int kWidths = 2 * kMaxSide;  ///< a footprint is below this in each direction
    static uint64_t bitOf(int width) noexcept { return uint64_t{1} << (width & 63); }

    bool isTransposed_;
    int liveCount_ = 0;
    base::Array<Entry> entries_;
    base::Array<int> entryOfClass_;
    LeastSizes least_;
    int starts_[kWidths] = {};
    int counts_[kWidths] = {};
    uint64_t used_[kWidths / 64] = {};
};

}  // namespace quor::packing
