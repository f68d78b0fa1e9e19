#include "vg/raster/monotone_chains.h"

#include <algorithm>

#include "vg/raster/band_block.h"
#include "vg/raster/kernels.h"

namespace vg::raster {

bool MonotoneChains::build(const FixedPolygon& polygon, const SweepLines& lines,
                           int32_t originX) noexcept {
    if (!reserve(polygon, lines.count())) return false;
    int32_t first = 0;
    for (const int32_t size : polygon.contourSizes) {
        if (size == 0) continue;
        int32_t* const bandOf = bandOf_.data() + first;
        kernels().makeEdges(polygon.points.data() + first, size, lines, originX, bandOf,
                            edges_.data() + first);
        splitContour(bandOf, first, size);
        first += size;
    }
    countBlocks();
    return true;
}

bool MonotoneChains::reserve(const FixedPolygon& polygon, int32_t bandCount) noexcept {
    const int32_t count = polygon.points.count();
    const int32_t blockCount = bandCount / kBlockBands + 2;
    chains_.clear();
    blockGain_.clear();
    if (!edges_.resize(count) || !bandOf_.resize(count) || !chains_.reserveMore(count) ||
        !firstAt_.resize(bandCount) || !blockGain_.resizeZeroed(blockCount)) {
        return false;
    }
    std::fill(firstAt_.begin(), firstAt_.end(), -1);
    return true;
}

void MonotoneChains::splitContour(const int32_t* bandOf, int32_t firstEdge,
                                  int32_t count) noexcept {
    int32_t from = bandOf[count - 1];
    int32_t runTop = from;  // the band where the current run began
    int32_t runStart = 0;   // its first edge
    int32_t direction = 0;  // 0 until an edge is not horizontal
    const auto close = [&](int32_t end, int32_t band) {
        if (direction > 0) addChain({firstEdge + runStart, +1, runTop, band, -1});
        if (direction < 0) addChain({firstEdge + end - 1, -1, band, runTop, -1});
    };
    for (int32_t i = 0; i < count; ++i) {
        const int32_t to = bandOf[i];
        const int32_t turn = to > from ? 1 : to < from ? -1 : direction;
        if (turn != direction) {
            close(i, from);
            runTop = from;
            runStart = i;
            direction = turn;
        }
        from = to;
    }
    close(count, from);
}

void MonotoneChains::addChain(const Chain& chain) noexcept {
    ++blockGain_[chain.startBand / kBlockBands];
    --blockGain_[(chain.endBand - 1) / kBlockBands + 1];
    chains_.pushReserved(chain);
    chains_.last().next = firstAt_[chain.startBand];
    firstAt_[chain.startBand] = chains_.count() - 1;
}

void MonotoneChains::countBlocks() noexcept {
    largestBlock_ = 0;
    int32_t alive = 0;
    for (const int32_t gain : blockGain_) {
        alive += gain;
        largestBlock_ = std::max(largestBlock_, alive);
    }
}

void MonotoneChains::shrinkToFit() noexcept {
    edges_.shrinkToFit();
    bandOf_.shrinkToFit();
    chains_.shrinkToFit();
    firstAt_.shrinkToFit();
    blockGain_.shrinkToFit();
}

}  // namespace vg::raster
