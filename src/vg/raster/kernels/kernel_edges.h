#pragma once

// Kernels: x of chains at the tops and bottoms of sixteen bands.

#include "vg/raster/coverage/band_block.h"
#include "vg/raster/coverage/chain_edge.h"
#include "vg/raster/kernels/lanes.h"

namespace vg::raster {
namespace {

/// Writes the lanes from `lane`, where the edge begins in this block, to `end`, and some more in
/// the last vector: those may wrap around and are never read.
QUOR_LANES_INLINE void evaluateEdge(LiveChain& chain, const ChainEdge& edge, int32_t lane,
                                    int32_t end, const int32_t* y) noexcept {
    const auto slope = static_cast<uint32_t>(edge.slope);
    const auto start = static_cast<uint32_t>(edge.y - y[lane]) * slope;
    chain.top[lane] = static_cast<uint16_t>(edge.x + (static_cast<int32_t>(start) >> 15));
    for (int32_t l = lane; l < end; l += kWords) {
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
    for (int32_t lane = chain.first; lane < chain.last;) {
        while (edge->endBand <= block.firstBand + lane) edge += chain.step;
        const int32_t end = edge->endBand - block.firstBand;
        evaluateEdge(chain, *edge, lane, end < kBlockBands ? end : kBlockBands, block.y);
        lane = end;
    }
    chain.edge = edge;
}

void evaluate(LiveChain* const* chains, int32_t count, const BandBlock& block) noexcept {
    for (int32_t i = 0; i < count; ++i) evaluateChain(*chains[i], block);
}

/// The left border of the column: a fraction of half a pixel rounds down, more rounds up.
QUOR_LANES_INLINE U16s nearestColumn(U16s x) noexcept { return (x + 15) & 0xFFE0; }

/// Makes scanlines of bands: every edge becomes vertical where it crosses the band's top, or on the
/// column border that it rounds to. Rounding is monotone, so it keeps the order.
void makeVertical(LiveChain* const* chains, int32_t count, bool onColumns) noexcept {
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
