#pragma once

#include <limits>

#include "api/packing/geometry.h"
#include "base/array.h"

namespace quor::packing {

/// A list of sizes that is searched for the next one which fits, leaping over runs of those that
/// do not: a tree whose nodes hold the least width and the least height of what is below them.
class LeastSizes {
public:
    static constexpr int kRun = 16;  ///< children of a node
    /// An entry that fits nowhere.
    static constexpr Size kNone = {std::numeric_limits<int>::max(),
                                   std::numeric_limits<int>::max()};

    /// `sizeOf(i)` is the size of entry i in [0, count). False when memory runs out.
    template <class SizeOf>
    [[nodiscard]] bool build(int count, SizeOf sizeOf) noexcept {
        if (!layOut(count)) return false;
        for (int i = 0; i < count; ++i) nodes_[i] = sizeOf(i);
        for (int level = 1; level < levels_; ++level) {
            for (int i = 0; i < countOf(level); ++i) nodeAt(level, i) = leastBelow(level, i);
        }
        return true;
    }

    void change(int entry, const Size& size) noexcept;

    /// The first entry from `first` on for which `fits(size)` holds; -1 without one. What fits has
    /// to fit too with a lesser width or height.
    template <class Fits>
    int next(int first, Fits fits) const noexcept {
        int level = 0;
        for (int i = first; i < countOf(level);) {
            for (; i % kRun == 0 && level + 1 < levels_; ++level) i /= kRun;
            for (; level > 0 && fits(nodeAt(level, i)); --level) i *= kRun;
            if (level == 0 && fits(nodeAt(0, i))) return i;
            ++i;
        }
        return -1;
    }

private:
    static constexpr int kMostLevels = 9;  ///< kRun to the power of this exceeds an int

    bool layOut(int count) noexcept;
    int countOf(int level) const noexcept { return starts_[level + 1] - starts_[level]; }
    Size& nodeAt(int level, int i) noexcept { return nodes_[starts_[level] + i]; }
    const Size& nodeAt(int level, int i) const noexcept { return nodes_[starts_[level] + i]; }
    Size leastBelow(int level, int i) const noexcept;

    base::Array<Size> nodes_;  ///< level after level, the entries first
    int starts_[kMostLevels + 1] = {};
    int levels_ = 1;
};

}  // namespace quor::packing
