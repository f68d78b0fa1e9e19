#include "vg/raster/chain_sweep.h"

#include <algorithm>
#include <iterator>

#include "vg/raster/crossing_samples.h"
#include "vg/raster/ring_delivery.h"

namespace vg::raster {
namespace {

struct ColumnRange {
    int32_t first, count;
};

/// Where a row's sample lines lie: bit f for f/32.
uint32_t sampleFractions(Quality quality) noexcept {
    return quality == Quality::kFaster ? HalfRowSample::kFractions : CentreSample::kFractions;
}

/// The columns from a group boundary to the polygon's right end, and one that the rounding of
/// crossings may reach.
ColumnRange columnsOf(const FixedPolygon& polygon) noexcept {
    uint16_t left = 0xFFFF, right = 0;
    for (const FixedPoint& point : polygon.points) {
        left = std::min(left, point.x);
        right = std::max(right, point.x);
    }
    const int32_t first = pixelOf(left) & ~(CoverageRing::kGroup - 1);
    return {first, pixelOf(right) + 2 - first};
}

/// Bands in all lanes are sorted together as long as few edges cross from one to the next: up to
/// one edge for every four steps of 1/32 pixel, but never so many that a search along the list
/// would hurt.
int32_t denseCountFor(int32_t columns) noexcept {
    return std::clamp(columns * (kSubpixels / 4), 32, 1024);
}

bool isLeftOf(const LiveChain& a, const LiveChain& b, int32_t lane) noexcept {
    return a.top[lane] != b.top[lane] ? a.top[lane] < b.top[lane] : a.bottom[lane] < b.bottom[lane];
}

}  // namespace

bool ChainSweep::run(const FixedPolygon& polygon, FillRule rule, Quality quality,
                     SweepTarget& target) noexcept {
    quality_ = quality;
    if (polygon.points.count() < 3) return true;
    if (!collectLines(polygon)) return false;
    if (bandCount_ < 1) return true;
    if (!prepare(polygon, target)) return false;
    int32_t row = rowOfBand(0);  // the row of the next band
    for (int32_t band = 0; band < bandCount_; band += kBlockBands) {
        loadBlock(band);
        startChains();
        const bool isOrdered = addBlock(rule);
        dropEndedChains();
        if (!isOrdered && live_.count() < denseCount_) restoreOrder();
        const int32_t next = band + kBlockBands;
        const int32_t nextRow =
            next < bandCount_ ? rowOfBand(next) : pixelOf(lines_.height(lines_.count() - 1)) - 1;
        deliverRows(ring_, originColumn_, row, nextRow + 1, target);
        row = nextRow;
    }
    return true;
}

bool ChainSweep::collectLines(const FixedPolygon& polygon) noexcept {
    const bool isDone = isExact() ? lines_.collectVertexHeights(polygon)
                                  : lines_.collectSamples(polygon, sampleFractions(quality_));
    bandCount_ = isExact() ? lines_.count() - 1 : lines_.count();
    return isDone;
}

int32_t ChainSweep::rowOfBand(int32_t band) const noexcept {
    return pixelOf(lines_.height(isExact() ? band + 1 : band));
}

bool ChainSweep::prepare(const FixedPolygon& polygon, const SweepTarget& target) noexcept {
    ColumnRange columns = columnsOf(polygon);
    if (target.flat == FlatBlend::kNone) columns = {0, columns.first + columns.count};
    originColumn_ = columns.first;
    denseCount_ = denseCountFor(columns.count);
    if (!ring_.reserve(columns.count)) return false;
    if (!chains_.build(polygon, lines_, originColumn_ * kSubpixels)) return false;
    const int32_t most = chains_.largestBlock();
    live_.clear();
    free_.clear();
    rows_.clear();
    if (!slots_.resizeZeroed(most) || !free_.reserveMore(most) || !live_.reserveMore(most) ||
        !rows_.reserveMore(std::min(most, denseCount_)) || !dense_.reserve(most, columns.count)) {
        return false;
    }
    for (int32_t i = most - 1; i >= 0; --i) free_.pushReserved(&slots_[i]);
    return true;
}

void ChainSweep::loadBlock(int32_t firstBand) noexcept {
    static_assert(SweepLines::kPadding >= 2 * kBlockBands);
    block_.firstBand = firstBand;
    const uint16_t* const heights = lines_.heights() + firstBand;
    std::copy_n(heights, std::size(block_.y), block_.y);
    const int32_t sampleHeight = quality_ == Quality::kFaster ? kSubpixels / 2 : kSubpixels;
    for (int32_t l = 0; l < kBlockBands; ++l) {
        const bool isBand = firstBand + l < bandCount_;
        block_.height[l] = isExact() ? block_.y[l] - block_.y[l + 1] : isBand ? sampleHeight : 0;
        block_.rowStart[l] = ring_.rowStart(pixelOf(block_.y[isExact() ? l + 1 : l]));
    }
    for (LiveChain* chain : live_) chain->first = 0;
    evaluate(live_.data(), live_.count());
}

void ChainSweep::evaluate(LiveChain* const* chains, int32_t count) noexcept {
    kernels().evaluate(chains, count, block_);
    if (!isExact()) kernels().standUpright(chains, count, quality_ == Quality::kNonAntialiased);
}

void ChainSweep::startChains() noexcept {
    for (int32_t lane = 0; lane < kBlockBands && block_.height[lane] != 0; ++lane) {
        for (int32_t i = chains_.firstAt(block_.firstBand + lane); i >= 0;) {
            const Chain& chain = chains_.chain(i);
            startChain(chain, lane);
            i = chain.next;
        }
    }
}

void ChainSweep::startChain(const Chain& chain, int32_t lane) noexcept {
    LiveChain* const live = free_.pop();
    live->edge = chains_.edges() + chain.firstEdge;
    live->step = chain.step;
    live->endBand = chain.endBand;
    live->first = lane;
    evaluate(&live, 1);
    fileByPosition(live, lane);
}

/// Files a chain among those that cross its first band. A wrong place costs time, no pixels.
void ChainSweep::fileByPosition(LiveChain* chain, int32_t lane) noexcept {
    int32_t place = live_.count();
    if (place < denseCount_) {
        for (int32_t i = place - 1; i >= 0; --i) {
            const LiveChain& other = *live_[i];
            if (lane < other.first || lane >= other.last) continue;
            if (!isLeftOf(*chain, other, lane)) break;
            place = i;
        }
    }
    live_.pushReserved(chain);
    LiveChain** const list = live_.data();
    std::move_backward(list + place, list + live_.count() - 1, list + live_.count());
    list[place] = chain;
}

bool ChainSweep::addBlock(FillRule rule) noexcept {
    const int32_t count = live_.count();
    if (count < denseCount_ && kernels().proveOrder(live_.data(), count, rule)) {
        kernels().addChains(live_.data(), count, block_, ring_.view());
        return true;
    }
    addUnorderedBlock(rule);
    return false;
}

void ChainSweep::addUnorderedBlock(FillRule rule) noexcept {
    const int32_t count = live_.count();
    if (count < denseCount_ && kernels().orderLanes(live_.data(), count, rows_.data())) {
        kernels().resolveLanes(rows_.data(), count, rule);
        kernels().addRows(rows_.data(), count, block_, ring_.view());
    } else {
        dense_.addBlock(live_.data(), count, rule, block_, ring_.view());
    }
}

/// Puts the list in the order of the block's end, the most likely one of the next block.
void ChainSweep::restoreOrder() noexcept {
    constexpr int32_t kEnd = kBlockBands - 1;
    std::sort(live_.begin(), live_.end(), [](const LiveChain* a, const LiveChain* b) {
        return a->bottom[kEnd] != b->bottom[kEnd] ? a->bottom[kEnd] < b->bottom[kEnd]
                                                  : a->top[kEnd] < b->top[kEnd];
    });
}

void ChainSweep::dropEndedChains() noexcept {
    const int32_t end = block_.firstBand + kBlockBands;
    LiveChain** kept = live_.begin();
    for (LiveChain* chain : live_) {
        if (chain->endBand > end) {
            *kept++ = chain;
        } else {
            free_.pushReserved(chain);
        }
    }
    live_.truncate(static_cast<int32_t>(kept - live_.begin()));
}

void ChainSweep::shrinkToFit() noexcept {
    lines_.shrinkToFit();
    chains_.shrinkToFit();
    dense_.shrinkToFit();
    slots_.shrinkToFit();
    free_.shrinkToFit();
    live_.shrinkToFit();
    rows_.shrinkToFit();
}

}  // namespace vg::raster
