#pragma once

// Kernel: a step of sorting in which every key is compared with one neighbour, all at once.

#include <algorithm>

#include "vg/raster/kernels/lanes.h"

namespace vg::raster {
namespace {

#if defined(__AVX2__)
constexpr U32s kOddLanes = {0, ~0U, 0, ~0U, 0, ~0U, 0, ~0U};
#else
constexpr U32s kOddLanes = {0, ~0U, 0, ~0U};
#endif

/// The lanes of each pair exchanged.
QUOR_LANES_INLINE U32s swapPairs(U32s v) noexcept {
#if defined(__AVX2__)
    return __builtin_shufflevector(v, v, 1, 0, 3, 2, 5, 4, 7, 6);
#else
    return __builtin_shufflevector(v, v, 1, 0, 3, 2);
#endif
}

/// Puts the keys of every pair in order; all ones somewhere when one was not.
QUOR_LANES_INLINE U32s orderPairs(uint32_t* keys, int32_t count) noexcept {
    U32s changes = {};
    int32_t i = 0;
    for (; i + kWords <= count; i += kWords) {
        const auto pairs = load<U32s>(keys + i);
        const U32s swapped = swapPairs(pairs);
        // An odd lane takes the larger of its pair, an even one the smaller.
        const U32s exchanges = (U32s)(pairs > swapped) ^ kOddLanes;
        const U32s keeps = (U32s)(pairs == swapped);
        const U32s moves = exchanges & ~keeps;
        store(keys + i, choose(moves, swapped, pairs));
        changes |= moves;
    }
    for (; i + 1 < count; i += 2) {
        if (keys[i] <= keys[i + 1]) continue;
        std::swap(keys[i], keys[i + 1]);
        changes[0] = ~0U;
    }
    return changes;
}

/// Exchanges neighbours that are out of order: in pairs from the first key on, then from the
/// second. False when none was, in either: then all keys are in order.
bool exchangeNeighbours(uint32_t* keys, int32_t count) noexcept {
    const U32s changes = orderPairs(keys, count);
    return any(changes | orderPairs(keys + 1, count - 1));
}

}  // namespace
}  // namespace vg::raster
