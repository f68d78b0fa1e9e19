#pragma once

// Kernels: edges from points, and the x of chains at sixteen bands.

#include "vg/raster/lanes.h"
#include "vg/raster/live_chain.h"

namespace vg::raster {
namespace {

/// Index of the highest line at or below `y`.
inline int32_t bandBelow(const uint32_t* rowBits, const int32_t* rowIndices, int32_t y) noexcept {
    const int32_t row = y >> kSubpixelBits;
    const uint32_t above = rowBits[row] & ~(0xFFFFFFFFU >> (kSubpixelMask - (y & kSubpixelMask)));
    return rowIndices[row] + __builtin_popcount(above);
}

/// The truncated quotient of doubles is that of the integers: unless it is an integer, the exact
/// quotient is at least 1/65504 away from one, far more than the rounding of a double.
/// It does not depend on the way the segment runs.
inline int32_t slopeOf(FixedPoint from, FixedPoint to) noexcept {
    const int32_t dx = to.x - from.x;
    const int32_t dy = from.y - to.y;
    const int32_t divisor = dy + (dy == 0);  // of a horizontal edge nobody asks the slope
    return static_cast<int32_t>(static_cast<double>(dx * (1 << 15)) / static_cast<double>(divisor));
}

void makeEdges(const FixedPoint* points, int32_t count, const SweepLines& lines, int32_t originX,
               int32_t* bandOf, ChainEdge* edges) noexcept {
    const uint32_t* const rowBits = lines.rowBits();
    const int32_t* const rowIndices = lines.rowIndices();
    FixedPoint from = points[count - 1];
    int32_t fromBand = bandBelow(rowBits, rowIndices, from.y);
    for (int32_t i = 0; i < count; ++i) {
        const FixedPoint to = points[i];
        const int32_t toBand = bandBelow(rowBits, rowIndices, to.y);
        bandOf[i] = toBand;
        const bool falls = from.y > to.y;
        edges[i] = {(falls ? from.x : to.x) - originX, falls ? from.y : to.y, slopeOf(from, to),
                    fromBand > toBand ? fromBand : toBand};
        from = to;
        fromBand = toBand;
    }
}

/// Writes the sixteen lanes from `lane`, where an edge is met. Those past the edge's end may wrap
/// around; they count for nothing.
QUOR_LANES_INLINE void evaluateEdge(LiveChain& chain, const ChainEdge& edge, int32_t lane,
                                    const int32_t* y) noexcept {
    const auto slope = static_cast<uint32_t>(edge.slope);
    const auto start = static_cast<uint32_t>(edge.y - y[lane]) * slope;
    chain.top[lane] = static_cast<uint16_t>(edge.x + (static_cast<int32_t>(start) >> 15));
    for (int32_t l = lane; l < lane + kBlockBands; l += kWords) {
        const auto down = (U32s)(edge.y - load<I32s>(y + l + 1));
        const U16Half x = narrow(edge.x + ((I32s)(down * slope) >> 15));
        store(chain.top + l + 1, x);
        store(chain.bottom + l, x);
    }
}

QUOR_LANES_INLINE void evaluateChain(LiveChain& chain, const BandBlock& block) noexcept {
    const int32_t left = chain.endBand - block.firstBand;
    chain.last = left < kBlockBands ? left : kBlockBands;
    const ChainEdge* edge = chain.edge;
    for (int32_t lane = chain.first; lane < chain.last; lane = edge->endBand - block.firstBand) {
        while (edge->endBand <= block.firstBand + lane) edge += chain.step;
        evaluateEdge(chain, *edge, lane, block.y);
    }
    chain.edge = edge;
}

void evaluate(LiveChain* const* chains, int32_t count, const BandBlock& block) noexcept {
    for (int32_t i = 0; i < count; ++i) evaluateChain(*chains[i], block);
}

/// Half a pixel and less goes to the column on the left, more to the next.
QUOR_LANES_INLINE U16s nearestColumn(U16s x) noexcept { return (x + 15) & 0xFFE0; }

/// Makes sample lines of bands: every edge stands upright where it crosses the band's top, or on
/// the side of the column that it belongs to. Rounding keeps the order.
void standUpright(LiveChain* const* chains, int32_t count, bool onColumns) noexcept {
    for (int32_t i = 0; i < count; ++i) {
        LiveChain& chain = *chains[i];
        for (int32_t l = 0; l < kBlockBands; l += kShorts) {
            const auto crossing = load<U16s>(chain.top + l);
            const U16s x = onColumns ? nearestColumn(crossing) : crossing;
            store(chain.top + l, x);
            store(chain.bottom + l, x);
        }
    }
}

}  // namespace
}  // namespace vg::raster
