// Splits contours into y-monotone chains (Preparata and Shamos, "Computational Geometry", 1985) and
// files them in lists by starting band.

#include "vg/raster/sweep/monotone_chains.h"

#include <algorithm>
#include <bit>

#include "vg/raster/coverage/band_block.h"
#include "vg/raster/kernels/kernels.h"

namespace vg::raster {

bool MonotoneChains::build(const FixedPolygon& polygon, const SweepLines& lines,
                           int32_t originX) noexcept {
    if (!reserve(polygon, lines.count())) return false;
    const ContourSteps steps = {stepPoints_.data(), stepBands_.data(), directions_.data()};
    int32_t first = 0;
    for (const int32_t size : polygon.contourSizes) {
        if (size == 0) continue;
        kernels().makeEdges(polygon.points.data() + first, size, lines.index(), originX, steps,
                            edges_.data() + first);
        splitContour(first, size);
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
    starts_.clear();
    return edges_.resize(count + ChainEdge::kSlack) &&
           stepPoints_.resize(count + 1 + ChainEdge::kSlack) &&
           stepBands_.resize(count + 1 + ChainEdge::kSlack) &&
           directions_.resize(count / EdgeDirections::kCount + 1) && chains_.reserveMore(count) &&
           firstAt_.resize(bandCount) && blockGain_.resizeZeroed(blockCount) &&
           starts_.resizeZeroed(blockCount);
}

/// Splits a contour at its local extrema of y. An edge that does neither goes on like the
/// one before it. That is the carry of an addition, generated (falling), killed (rising) or
/// propagated (flat) from bit to bit, so one 64-bit addition decides 32 edges.
void MonotoneChains::splitContour(int32_t firstEdge, int32_t count) noexcept {
    int32_t runStart = 0;
    bool falls = false;
    for (int32_t base = 0; base < count; base += EdgeDirections::kCount) {
        const EdgeDirections& edges = directions_[base / EdgeDirections::kCount];
        const uint64_t makes = edges.falling, makesOrPasses = edges.falling | edges.flat;
        const uint64_t sum = makes + makesOrPasses + (falls ? 1 : 0);
        const uint64_t carries = sum ^ makes ^ makesOrPasses;  // bit i + 1: edge i falls
        uint64_t turns = carries ^ carries >> 1;               // bit i: edge i - 1 goes another way
        const int32_t left = std::min(count - base, EdgeDirections::kCount);
        for (turns &= (uint64_t{1} << left) - 1; turns != 0; turns &= turns - 1) {
            const int32_t turn = base + std::countr_zero(turns);
            addRun(firstEdge, runStart, turn, falls);
            runStart = turn;
            falls = !falls;
        }
    }
    addRun(firstEdge, runStart, count, falls);
}

/// Makes a chain of the edges from step `start` of the contour to step `end`.
void MonotoneChains::addRun(int32_t firstEdge, int32_t start, int32_t end, bool falls) noexcept {
    const int32_t from = stepBands_[start], to = stepBands_[end];
    if (from == to) return;
    addChain(falls ? Chain{firstEdge + start, +1, from, to, -1}
                   : Chain{firstEdge + end - 1, -1, to, from, -1});
}

void MonotoneChains::addChain(const Chain& chain) noexcept {
    const int32_t block = chain.startBand / kBlockBands;
    const uint32_t start = 1U << chain.startBand % kBlockBands;
    ++blockGain_[block];
    --blockGain_[(chain.endBand - 1) / kBlockBands + 1];
    chains_.pushReserved(chain);
    if ((starts_[block] & start) != 0) chains_.last().next = firstAt_[chain.startBand];
    firstAt_[chain.startBand] = chains_.count() - 1;
    starts_[block] |= start;
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
    stepPoints_.shrinkToFit();
    stepBands_.shrinkToFit();
    directions_.shrinkToFit();
    chains_.shrinkToFit();
    firstAt_.shrinkToFit();
    starts_.shrinkToFit();
    blockGain_.shrinkToFit();
}

}  // namespace vg::raster
