#include "vg/raster/exact_sweep.h"

#include <algorithm>
#include <iterator>

namespace vg::raster {
namespace {

struct ColumnRange {
    int32_t first, count;
};

/// The columns from a group boundary to the polygon's right end.
ColumnRange columnsOf(const FixedPolygon& polygon) noexcept {
    uint16_t left = 0xFFFF, right = 0;
    for (const FixedPoint& point : polygon.points) {
        left = std::min(left, point.x);
        right = std::max(right, point.x);
    }
    const int32_t first = pixelOf(left) & ~(CoverageRing::kGroup - 1);
    return {first, pixelOf(right) + 1 - first};
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

bool ExactSweep::run(const FixedPolygon& polygon, FillRule rule, const SweepLines& lines,
                     SweepTarget& target) noexcept {
    if (lines.count() < 2) return true;
    if (!prepare(polygon, lines, target)) return false;
    const int32_t lastLine = lines.count() - 1;
    int32_t row = pixelOf(lines.height(1));  // the row of the next band
    for (int32_t band = 0; band < lastLine; band += kBlockBands) {
        loadBlock(band, lines);
        startChains();
        const bool isOrdered = addBlock(rule);
        dropEndedChains();
        if (!isOrdered && live_.count() < denseCount_) restoreOrder();
        const int32_t next = band + kBlockBands;
        const int32_t nextRow =
            next < lastLine ? pixelOf(lines.height(next + 1)) : pixelOf(lines.height(lastLine)) - 1;
        flushRows(row, nextRow + 1, target);
        row = nextRow;
    }
    return true;
}

bool ExactSweep::prepare(const FixedPolygon& polygon, const SweepLines& lines,
                         const SweepTarget& target) noexcept {
    ColumnRange columns = columnsOf(polygon);
    if (target.flat == FlatBlend::kNone) columns = {0, columns.first + columns.count};
    originColumn_ = columns.first;
    denseCount_ = denseCountFor(columns.count);
    if (!ring_.reserve(columns.count)) return false;
    if (!chains_.build(polygon, lines, originColumn_ * kSubpixels)) return false;
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

void ExactSweep::loadBlock(int32_t firstBand, const SweepLines& lines) noexcept {
    static_assert(SweepLines::kPadding >= 2 * kBlockBands);
    block_.firstBand = firstBand;
    const uint16_t* const heights = lines.heights() + firstBand;
    std::copy_n(heights, std::size(block_.y), block_.y);
    for (int32_t l = 0; l < kBlockBands; ++l) {
        block_.height[l] = block_.y[l] - block_.y[l + 1];
        block_.rowStart[l] = ring_.rowStart(pixelOf(block_.y[l + 1]));
    }
    for (LiveChain* chain : live_) chain->first = 0;
    kernels().evaluate(live_.data(), live_.count(), block_);
}

void ExactSweep::startChains() noexcept {
    for (int32_t lane = 0; lane < kBlockBands && block_.height[lane] != 0; ++lane) {
        for (int32_t i = chains_.firstAt(block_.firstBand + lane); i >= 0;) {
            const Chain& chain = chains_.chain(i);
            startChain(chain, lane);
            i = chain.next;
        }
    }
}

void ExactSweep::startChain(const Chain& chain, int32_t lane) noexcept {
    LiveChain* const live = free_.pop();
    live->edge = chains_.edges() + chain.firstEdge;
    live->step = chain.step;
    live->endBand = chain.endBand;
    live->first = lane;
    kernels().evaluate(&live, 1, block_);
    fileByPosition(live, lane);
}

/// Files a chain among those that cross its first band. A wrong place costs time, no pixels.
void ExactSweep::fileByPosition(LiveChain* chain, int32_t lane) noexcept {
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

bool ExactSweep::addBlock(FillRule rule) noexcept {
    const int32_t count = live_.count();
    if (count < denseCount_ && kernels().proveOrder(live_.data(), count, rule)) {
        kernels().addChains(live_.data(), count, block_, ring_.view());
        return true;
    }
    addUnorderedBlock(rule);
    return false;
}

void ExactSweep::addUnorderedBlock(FillRule rule) noexcept {
    const int32_t count = live_.count();
    if (count < denseCount_ && kernels().orderLanes(live_.data(), count, rows_.data())) {
        kernels().resolveLanes(rows_.data(), count, rule);
        kernels().addRows(rows_.data(), count, block_, ring_.view());
    } else {
        dense_.addBlock(live_.data(), count, rule, block_, ring_.view());
    }
}

/// Puts the list in the order of the block's end, the most likely one of the next block.
void ExactSweep::restoreOrder() noexcept {
    constexpr int32_t kEnd = kBlockBands - 1;
    std::sort(live_.begin(), live_.end(), [](const LiveChain* a, const LiveChain* b) {
        return a->bottom[kEnd] != b->bottom[kEnd] ? a->bottom[kEnd] < b->bottom[kEnd]
                                                  : a->top[kEnd] < b->top[kEnd];
    });
}

void ExactSweep::dropEndedChains() noexcept {
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

void ExactSweep::flushRows(int32_t top, int32_t bottom, SweepTarget& target) noexcept {
    if (top < bottom) return;
    if (target.flat == FlatBlend::kNone) {
        for (int32_t row = top; row >= bottom; --row) flushRow(row, target);
        return;
    }
    const PixelSurface& surface = target.surface;
    const FlatRows rows = {ring_.view(),
                           ring_.stride(),
                           CoverageRing::kRows - 1,
                           top,
                           bottom,
                           surface.row(top) + originColumn_,
                           surface.width - originColumn_,
                           surface.width,
                           target.span.color};
    target.flat == FlatBlend::kSource ? kernels().compositeSource(rows)
                                      : kernels().compositeSourceOver(rows);
}

/// Delivers one row through the span function.
void ExactSweep::flushRow(int32_t row, SweepTarget& target) noexcept {
    const CellView cells = ring_.row(row);
    int32_t first = 0, last = 0;
    if (!takeTouchedRange(cells, ring_.groupCount(), first, last)) return;
    const int32_t lastColumn = target.surface.width - 1;
    target.span.cells = cells.cells;  // originColumn_ is 0
    target.function(target.surface, target.span, row,
                    std::min(first * CoverageRing::kGroup, lastColumn),
                    std::min(last * CoverageRing::kGroup + CoverageRing::kGroup - 1, lastColumn));
}

void ExactSweep::shrinkToFit() noexcept {
    chains_.shrinkToFit();
    dense_.shrinkToFit();
    slots_.shrinkToFit();
    free_.shrinkToFit();
    live_.shrinkToFit();
    rows_.shrinkToFit();
}

}  // namespace vg::raster
