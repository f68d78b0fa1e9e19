#include "vg/raster/sweep/dense_sweep.h"

#include <algorithm>

#include "vg/raster/coverage/chain_edge.h"
#include "vg/raster/coverage/dense_columns.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/kernels/kernels.h"
#include "vg/raster/sweep/ring_delivery.h"

namespace vg::raster {

bool DenseSweep::isFor(int32_t chainCount, int32_t columns) noexcept {
    // Windings have 16 bits. With few edges a column, too many holes are looked at in vain.
    return chainCount <= INT16_MAX && chainCount >= std::max(4 * columns, 32);
}

bool DenseSweep::reserve(const MonotoneChains& chains, int32_t bandCount,
                         int32_t columns) noexcept {
    const int32_t most = chains.largestBlock() + DenseEdges::kSlack;
    entryCount_ = 0;
    positions_ = columns << kSubpixelBits;
    if (!place_.resize(most) || !slope_.resize(most) || !top_.resize(most) || !key_.resize(most) ||
        !chainOf_.resize(most) || !crossings_.resize(chains.count()) ||
        !firstEnding_.resize(bandCount + 1) || !slots_.resize(DenseColumns::kSlots * positions_)) {
        return false;
    }
    if (counts_.count() < positions_ && !counts_.resizeZeroed(positions_)) return false;
    std::fill(place_.begin(), place_.end(), 0U);
    std::fill(slope_.begin(), slope_.end(), 0U);
    std::fill(firstEnding_.begin(), firstEnding_.end(), -1);
    return true;
}

DenseEdges DenseSweep::edges() noexcept {
    return {place_.data(), slope_.data(), top_.data(), key_.data(), entryCount_};
}

DenseColumns DenseSweep::holes() noexcept { return {counts_.data(), slots_.data(), positions_}; }

void DenseSweep::run(const MonotoneChains& chains, FillRule rule, const SweepLines& lines,
                     DenseBands& bands, CoverageRing& ring, int32_t originColumn,
                     SweepTarget& target) noexcept {
    const int32_t bandCount = lines.count() - 1;
    for (int32_t band = 0; band < bandCount; ++band) {
        endEdges(chains, band);
        startChains(chains, band);
        const int32_t bottom = lines.height(band + 1);
        const int32_t height = lines.height(band) - bottom;
        const int32_t row = pixelOf(bottom), rowStart = ring.rowStart(row);
        if (kernels().passBand(edges(), height) && fileEdges()) {
            kernels().addColumns(holes(), rule, height, rowStart, ring.view());
        } else {
            std::fill(counts_.begin(), counts_.end(), uint8_t{0});
            bands.addBand(edges(), rule, height, rowStart, ring.view());
        }
        if (fractionOf(bottom) == 0 || band + 1 == bandCount) {
            deliverRows(ring, originColumn, row, row, target);
        }
    }
}

void DenseSweep::startChains(const MonotoneChains& chains, int32_t band) noexcept {
    if (!chains.startsAt(band)) return;
    for (int32_t i = chains.firstAt(band); i >= 0; i = chains.chain(i).next) {
        const Chain& chain = chains.chain(i);
        const ChainEdge* edge = chains.edges() + chain.firstEdge;
        while (edge->endBand <= band) edge += chain.step;
        crossings_[i].entry = entryCount_;
        chainOf_[entryCount_++] = i;
        setEdge(i, chain.step, edge);
    }
}

/// Goes on to the next edge of every chain whose edge ends where the band begins.
void DenseSweep::endEdges(const MonotoneChains& chains, int32_t band) noexcept {
    for (int32_t i = firstEnding_[band]; i >= 0;) {
        const Chain& chain = chains.chain(i);
        const ChainEdge* edge = crossings_[i].edge;
        const int32_t next = crossings_[i].nextEnding;
        if (chain.endBand <= band) {
            removeEntry(crossings_[i].entry);
        } else {
            while (edge->endBand <= band) edge += chain.step;
            setEdge(i, chain.step, edge);
        }
        i = next;
    }
}

/// Enters an edge that begins where the band does.
void DenseSweep::setEdge(int32_t chain, int32_t step, const ChainEdge* edge) noexcept {
    Crossing& crossing = crossings_[chain];
    crossing.edge = edge;
    crossing.nextEnding = firstEnding_[edge->endBand];
    firstEnding_[edge->endBand] = chain;
    place_[crossing.entry] = static_cast<uint32_t>(edge->x) << 15 | (step > 0 ? 1U << 31 : 0U);
    slope_[crossing.entry] = static_cast<uint32_t>(edge->slope);
}

/// The last entry takes the place of the one removed.
void DenseSweep::removeEntry(int32_t entry) noexcept {
    const int32_t last = --entryCount_;
    place_[entry] = place_[last];
    slope_[entry] = slope_[last];
    chainOf_[entry] = chainOf_[last];
    crossings_[chainOf_[entry]].entry = entry;
    place_[last] = slope_[last] = 0;  // vectors go on past the last entry
}

/// False when a hole overflowed.
bool DenseSweep::fileEdges() noexcept {
    const DenseEdges all = edges();
    const DenseColumns into = holes();
    uint32_t fullest = 0;
    for (int32_t i = 0; i < all.count; ++i) {
        const uint32_t top = all.top[i];
        const uint32_t held = into.counts[top];
        into.slots[(held % DenseColumns::kSlots) * static_cast<uint32_t>(into.positions) + top] =
            all.key[i];
        into.counts[top] = static_cast<uint8_t>(held + 1);
        fullest |= held;
    }
    return fullest < DenseColumns::kSlots;
}

void DenseSweep::shrinkToFit() noexcept {
    place_.shrinkToFit();
    slope_.shrinkToFit();
    top_.shrinkToFit();
    key_.shrinkToFit();
    chainOf_.shrinkToFit();
    crossings_.shrinkToFit();
    firstEnding_.shrinkToFit();
    slots_.shrinkToFit();
}

}  // namespace vg::raster
