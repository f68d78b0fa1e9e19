// The sweep in blocks of sixteen bands, one to a vector lane (SIMD across scanlines instead of
// along them): evaluate the chains, prove their order or sort, add trapezoids, deliver finished
// rows.

#include "vg/raster/sweep/chain_sweep.h"

#include <algorithm>
#include <bit>
#include <iterator>

#include "vg/raster/coverage/band_block.h"
#include "vg/raster/coverage/cells.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/kernels/kernels.h"
#include "vg/raster/sweep/crossing_samples.h"
#include "vg/raster/sweep/ring_delivery.h"

namespace vg::raster {
namespace {

struct ColumnRange {
    int32_t first, count;
};

/// Where a row's scanlines lie: bit f for f/32.
uint32_t sampleFractions(Quality quality) noexcept {
    return quality == Quality::kFaster ? HalfRowSample::kFractions : CentreSample::kFractions;
}

/// The columns of a box, and one that the rounding of crossings may reach. Few columns are taken as
/// they are, so that they are in fewer groups; of many, groups and pixels begin at the same places.
ColumnRange columnsOf(const FixedBox& box) noexcept {
    constexpr int32_t kFew = 3 * kGroupCells;
    const int32_t left = pixelOf(box.minX), end = pixelOf(box.maxX) + 2;
    const int32_t first = end - left < kFew ? left : left & ~(kGroupCells - 1);
    return {first, end - first};
}

/// From so many chains on, a block goes to DenseBands: one edge for every four steps of 1/32 pixel
/// across, above which insertion sort makes too many exchanges, and at most 1024, so that the
/// linear search for a new chain's place stays cheap.
int32_t denseCountFor(int32_t columns) noexcept {
    return std::clamp(columns * (kSubpixels / 4), 32, 1024);
}

/// Compares a chain with one that began no lower: at its first band and, while x is equal, at the
/// bands below; with the other one's end where that has ended.
bool isLeftOf(const LiveChain& chain, const LiveChain& other) noexcept {
    int32_t lane = chain.first;
    const int32_t otherLane = std::min(lane, other.last - 1);
    if (chain.top[lane] != other.top[otherLane]) return chain.top[lane] < other.top[otherLane];
    const int32_t last = std::min(chain.last, other.last) - 1;
    while (lane < last && chain.bottom[lane] == other.bottom[lane]) ++lane;
    return chain.bottom[lane] < other.bottom[std::min(lane, otherLane)];
}

}  // namespace

bool ChainSweep::run(const FixedPolygon& polygon, FillRule rule, Quality quality,
                     SweepTarget& target) noexcept {
    quality_ = quality;
    if (polygon.points.count() < 3) return true;
    const FixedBox box = kernels().boxOf(polygon.points.data(), polygon.points.count());
    if (!collectLines(polygon, box)) return false;
    if (bandCount_ < 1) return true;
    if (!prepare(polygon, box, target)) return false;
    if (chains_.count() == 0) return true;
    runBlocks(rule, target);
    return true;
}

void ChainSweep::runBlocks(FillRule rule, SweepTarget& target) noexcept {
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
}

bool ChainSweep::collectLines(const FixedPolygon& polygon, const FixedBox& box) noexcept {
    const bool isDone = isExact() ? lines_.collectVertexHeights(polygon, box)
                                  : lines_.collectSamples(box, sampleFractions(quality_));
    bandCount_ = isExact() ? lines_.count() - 1 : lines_.count();
    return isDone;
}

int32_t ChainSweep::rowOfBand(int32_t band) const noexcept {
    return pixelOf(lines_.height(isExact() ? band + 1 : band));
}

bool ChainSweep::prepare(const FixedPolygon& polygon, const FixedBox& box,
                         const SweepTarget& target) noexcept {
    ColumnRange columns = columnsOf(box);
    originColumn_ = originFor(target, columns.first);
    columns.count += columns.first - originColumn_;
    denseCount_ = denseCountFor(columns.count);
    return ring_.reserve(columns.count) &&
           chains_.build(polygon, lines_, originColumn_ * kSubpixels) &&
           dense_.reserve(chains_.largestBlock(), columns.count) && reserveSlots();
}

bool ChainSweep::reserveSlots() noexcept {
    const int32_t most = chains_.largestBlock();
    live_.clear();
    fresh_.clear();
    free_.clear();
    rows_.clear();
    if ((slots_.count() < most && !slots_.resizeZeroed(most)) || !free_.reserveMore(most) ||
        !live_.reserveMore(most) || !fresh_.reserveMore(most) ||
        !rows_.reserveMore(std::min(most, denseCount_))) {
        return false;
    }
    for (int32_t i = most - 1; i >= 0; --i) free_.pushReserved(&slots_[i]);
    return true;
}

void ChainSweep::loadBlock(int32_t firstBand) noexcept {
    static_assert(SweepLines::kPadding >= kBlockBands + kLaneSlack);
    block_.firstBand = firstBand;
    const uint16_t* const heights = lines_.heights() + firstBand;
    std::copy_n(heights, std::size(block_.y), block_.y);
    const int32_t sampleHeight = quality_ == Quality::kFaster ? kSubpixels / 2 : kSubpixels;
    for (int32_t l = 0; l < kBlockBands; ++l) {
        const bool isBand = firstBand + l < bandCount_;
        const int32_t height = isExact() ? block_.y[l] - block_.y[l + 1]
                               : isBand  ? sampleHeight
                                         : 0;
        block_.height[l] = static_cast<int16_t>(height);
        block_.rowStart[l] = ring_.rowStart(pixelOf(block_.y[isExact() ? l + 1 : l]));
    }
    for (LiveChain* chain : live_) chain->first = 0;
    evaluate(live_.data(), live_.count());
}

void ChainSweep::evaluate(LiveChain* const* chains, int32_t count) noexcept {
    kernels().evaluate(chains, count, block_);
    if (!isExact()) kernels().makeVertical(chains, count, quality_ == Quality::kNonAntialiased);
}

void ChainSweep::startChains() noexcept {
    const int32_t block = block_.firstBand / kBlockBands;
    for (uint32_t starts = chains_.startsIn(block); starts != 0; starts &= starts - 1) {
        const int32_t lane = std::countr_zero(starts);
        for (int32_t i = chains_.firstAt(block_.firstBand + lane); i >= 0;) {
            const Chain& chain = chains_.chain(i);
            startChain(chain, lane);
            i = chain.next;
        }
    }
    evaluate(fresh_.data(), fresh_.count());
    for (LiveChain* chain : fresh_) fileByPosition(chain);
    fresh_.clear();
}

void ChainSweep::startChain(const Chain& chain, int32_t lane) noexcept {
    LiveChain* const live = free_.pop();
    live->edge = chains_.edges() + chain.firstEdge;
    live->step = chain.step;
    live->endBand = chain.endBand;
    live->first = lane;
    fresh_.pushReserved(live);
}

/// Inserts a chain by its place in its first band. A wrong place costs a sort, no pixels.
void ChainSweep::fileByPosition(LiveChain* chain) noexcept {
    int32_t place = live_.count();
    live_.pushReserved(chain);
    if (place >= denseCount_) return;
    LiveChain** const list = live_.data();
    for (; place > 0 && isLeftOf(*chain, *list[place - 1]); --place) list[place] = list[place - 1];
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
    slots_.truncate(std::min(slots_.count(), chains_.largestBlock()));
    slots_.shrinkToFit();
    fresh_.shrinkToFit();
    free_.shrinkToFit();
    live_.shrinkToFit();
    rows_.shrinkToFit();
}

}  // namespace vg::raster
