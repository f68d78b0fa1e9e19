#pragma once

// Kernels: the order of edges within sixteen bands, and the fill rule over it.

#include "vg/raster/coverage/band_block.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/kernels/lanes.h"

namespace vg::raster {
namespace {

// A vector holds some or all of the sixteen lanes; `start` is the first of them. Lanes are
// independent of each other.

constexpr int16_t kBandNumbers[kBlockBands] = {0, 1, 2,  3,  4,  5,  6,  7,
                                               8, 9, 10, 11, 12, 13, 14, 15};

/// All ones in the lanes that are the chain's own.
QUOR_LANES_INLINE I16s lanesOf(const LiveChain& chain, int32_t start) noexcept {
    const auto index = load<I16s>(kBandNumbers + start);
    return (index >= static_cast<int16_t>(chain.first)) &
           (index < static_cast<int16_t>(chain.last));
}

/// The winding number of each lane, edge by edge from the left.
template <FillRule kRule>
struct Winding {
    I16s sum = {};

    /// Takes in one edge a lane (0: none) and returns its sign: +1 where the sum leaves 0, -1
    /// where it returns to 0. Under the even-odd rule only the lowest bit of the sum counts.
    [[gnu::always_inline]] I16s cross(I16s direction) noexcept {
        const I16s wasOutside = sum == 0;
        sum = kRule == FillRule::kNonZero ? sum + direction : sum ^ (direction & 1);
        return (sum == 0) - wasOutside;
    }
};

template <FillRule kRule>
bool proveLanes(LiveChain* const* chains, int32_t count, int32_t start) noexcept {
    U16s lastTop = {}, lastBottom = {};
    U16s disorder = {};
    Winding<kRule> winding;
    for (int32_t i = 0; i < count; ++i) {
        LiveChain& chain = *chains[i];
        const I16s alive = lanesOf(chain, start);
        const U16s top = choose(alive, load<U16s>(chain.top + start), lastTop);
        const U16s bottom = choose(alive, load<U16s>(chain.bottom + start), lastBottom);
        disorder |= (U16s)(lastTop > top) | (U16s)(lastBottom > bottom);
        store(chain.sign + start, winding.cross(alive & static_cast<int16_t>(chain.step)));
        lastTop = top;
        lastBottom = bottom;
    }
    return !any(disorder);
}

bool proveOrder(LiveChain* const* chains, int32_t count, FillRule rule) noexcept {
    const auto prove = rule == FillRule::kNonZero ? &proveLanes<FillRule::kNonZero>
                                                  : &proveLanes<FillRule::kEvenOdd>;
    for (int32_t start = 0; start < kBlockBands; start += kShorts) {
        if (!prove(chains, count, start)) return false;
    }
    return true;
}

/// Transposes chains into rows. Lanes without an edge get the key of the row before and direction
/// 0: a duplicate that sorts beside it and changes no winding.
QUOR_LANES_INLINE void gatherRows(LiveChain* const* chains, int32_t count, int32_t start,
                                  BoundaryRow* rows) noexcept {
    U16s top = {}, bottom = {};
    for (int32_t i = 0; i < count; ++i) {
        const LiveChain& chain = *chains[i];
        const I16s alive = lanesOf(chain, start);
        top = choose(alive, load<U16s>(chain.top + start), top);
        bottom = choose(alive, load<U16s>(chain.bottom + start), bottom);
        store(rows[i].top + start, top);
        store(rows[i].bottom + start, bottom);
        store(rows[i].sign + start, alive & static_cast<int16_t>(chain.step));
    }
}

template <class V, class T>
QUOR_LANES_INLINE void exchangeWhere(I16s swap, T* left, T* right) noexcept {
    const auto a = load<V>(left), b = load<V>(right);
    store(left, choose(swap, b, a));
    store(right, choose(swap, a, b));
}

/// Exchanges the lanes of two neighbouring rows that are out of order; false when none was.
QUOR_LANES_INLINE bool exchange(BoundaryRow& left, BoundaryRow& right, int32_t start) noexcept {
    const auto leftTop = load<U16s>(left.top + start), rightTop = load<U16s>(right.top + start);
    const auto leftBottom = load<U16s>(left.bottom + start);
    const auto rightBottom = load<U16s>(right.bottom + start);
    const I16s laterSign = load<I16s>(left.sign + start) > load<I16s>(right.sign + start);
    const I16s later =
        (I16s)(leftBottom > rightBottom) | ((I16s)(leftBottom == rightBottom) & laterSign);
    const I16s swap = (I16s)(leftTop > rightTop) | ((I16s)(leftTop == rightTop) & later);
    if (!any(swap)) return false;
    exchangeWhere<U16s>(swap, left.top + start, right.top + start);
    exchangeWhere<U16s>(swap, left.bottom + start, right.bottom + start);
    exchangeWhere<I16s>(swap, left.sign + start, right.sign + start);
    return true;
}

/// Insertion sort in all lanes at once: a row is compared and exchanged with the one before it, as
/// the comparators of a sorting network are, until no lane exchanges.
bool orderSomeLanes(BoundaryRow* rows, int32_t count, int32_t start) noexcept {
    int32_t exchangesLeft = 16 * count + 256;
    for (int32_t i = 1; i < count; ++i) {
        int32_t place = i;
        while (place > 0 && exchange(rows[place - 1], rows[place], start)) --place;
        exchangesLeft -= i - place;
        if (exchangesLeft < 0) return false;
    }
    return true;
}

bool orderLanes(LiveChain* const* chains, int32_t count, BoundaryRow* rows) noexcept {
    for (int32_t start = 0; start < kBlockBands; start += kShorts) {
        gatherRows(chains, count, start, rows);
        if (!orderSomeLanes(rows, count, start)) return false;
    }
    return true;
}

template <FillRule kRule>
void resolveSomeLanes(BoundaryRow* rows, int32_t count, int32_t start) noexcept {
    U16s past = {};  // spans never overlap, even where edges cross inside a band
    Winding<kRule> winding;
    for (BoundaryRow* row = rows; row != rows + count; ++row) {
        const I16s sign = winding.cross(load<I16s>(row->sign + start));
        const auto bottom = load<U16s>(row->bottom + start);
        past = choose(sign != 0, larger(past, bottom), past);
        store(row->bottom + start, choose(sign != 0, past, bottom));
        store(row->sign + start, sign);
    }
}

void resolveLanes(BoundaryRow* rows, int32_t count, FillRule rule) noexcept {
    const auto resolve = rule == FillRule::kNonZero ? &resolveSomeLanes<FillRule::kNonZero>
                                                    : &resolveSomeLanes<FillRule::kEvenOdd>;
    for (int32_t start = 0; start < kBlockBands; start += kShorts) resolve(rows, count, start);
}

}  // namespace
}  // namespace vg::raster
