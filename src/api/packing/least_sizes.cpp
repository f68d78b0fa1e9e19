#include "api/packing/least_sizes.h"

#include <algorithm>

namespace quor::packing {

bool LeastSizes::layOut(int count) noexcept {
    int start = 0;
    levels_ = 0;
    for (int nodes = count;; nodes = (nodes + kRun - 1) / kRun) {
        starts_[levels_++] = start;
        start += nodes;
        starts_[levels_] = start;
        if (nodes <= 1) break;
    }
    return nodes_.resize(start);
}

Size LeastSizes::leastBelow(int level, int i) const noexcept {
    Size least = kNone;
    const int end = std::min((i + 1) * kRun, countOf(level - 1));
    for (int child = i * kRun; child < end; ++child) {
        const Size& size = nodeAt(level - 1, child);
        least = {std::min(least.width, size.width), std::min(least.height, size.height)};
    }
    return least;
}

void LeastSizes::change(int entry, const Size& size) noexcept {
    nodes_[entry] = size;
    int i = entry;
    for (int level = 1; level < levels_; ++level) {
        i /= kRun;
        const Size least = leastBelow(level, i);
        if (nodeAt(level, i) == least) return;
        nodeAt(level, i) = least;
    }
}

}  // namespace quor::packing
