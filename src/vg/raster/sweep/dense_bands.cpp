// Sorts the edges of one band after the other: counting sort (Knuth, "The Art of Computer
// Programming", volume 3, 5.2, algorithm D) by x at the top, insertion sort within its buckets.

#include "vg/raster/sweep/dense_bands.h"

#include <algorithm>
#include <utility>

#include "vg/raster/coverage/trapezoid.h"
#include "vg/raster/geometry/fixed.h"

namespace vg::raster {
namespace {

/// An edge in a band as a number: x at the top, x at the bottom, direction, from the highest bit
/// down.
uint64_t keyOf(const LiveChain& chain, int32_t lane) noexcept {
    return uint64_t{chain.top[lane]} << 17 | uint64_t{chain.bottom[lane]} << 1 |
           (chain.step > 0 ? 1U : 0U);
}
int32_t topOf(uint64_t key) noexcept { return static_cast<int32_t>(key >> 17); }
int32_t bottomOf(uint64_t key) noexcept { return static_cast<int32_t>(key >> 1 & 0xFFFF); }
int32_t directionOf(uint64_t key) noexcept { return (key & 1) != 0 ? 1 : -1; }

/// Insertion sort of keys that are in order but for near neighbours. When they turn out not to be
/// (all edges in a few places) it gives up for a sort whose worst case is bounded.
void finishOrder(uint64_t* keys, int32_t count) noexcept {
    int64_t movesLeft = 16 * int64_t{count};
    for (int32_t i = 1; i < count; ++i) {
        const uint64_t key = keys[i];
        int32_t place = i;
        for (; place > 0 && key < keys[place - 1]; --place) keys[place] = keys[place - 1];
        keys[place] = key;
        movesLeft -= i - place;
        if (movesLeft < 0) return std::sort(keys, keys + count);
    }
}

}  // namespace

bool DenseBands::reserve(int32_t chainCount, int32_t columns) noexcept {
    columns_ = columns;
    stride_ = chainCount + 1;  // collect() writes one key past the last
    return keys_.resize(kBandsAtOnce * stride_) && sorted_.resize(stride_) &&
           bucketPlaces_.resize(columns << kSubpixelBits) &&
           (columns <= sums_.count() || sums_.resizeZeroed(columns));
}

void DenseBands::addBlock(LiveChain* const* chains, int32_t count, FillRule rule,
                          const BandBlock& block, const CellView& cells) noexcept {
    const auto add = rule == FillRule::kNonZero ? &DenseBands::addBoundaries<FillRule::kNonZero>
                                                : &DenseBands::addBoundaries<FillRule::kEvenOdd>;
    for (int32_t lane = 0; lane < kBlockBands; lane += kBandsAtOnce) {
        const int32_t* const counts = collect(chains, count, lane);
        for (int32_t i = 0; i < kBandsAtOnce; ++i) {
            if (counts[i] == 0) continue;
            const Destination band = {block.height[lane + i], block.rowStart[lane + i], cells};
            (this->*add)(sorted(keys_.data() + i * stride_, counts[i]), counts[i], band);
            addSums(band);
        }
    }
}

/// Fills keys_ and returns the number of keys of each band. Writes a key for every band, whether
/// the edge crosses it or not; what does not is overwritten by the next: no branch to mispredict.
int32_t* DenseBands::collect(LiveChain* const* chains, int32_t count, int32_t firstLane) noexcept {
    uint64_t* next[kBandsAtOnce];
    for (int32_t i = 0; i < kBandsAtOnce; ++i) next[i] = keys_.data() + i * stride_;
    for (int32_t c = 0; c < count; ++c) {
        const LiveChain& chain = *chains[c];
        for (int32_t i = 0; i < kBandsAtOnce; ++i) {
            const int32_t lane = firstLane + i;
            *next[i] = keyOf(chain, lane);
            next[i] +=
                static_cast<int32_t>(chain.first <= lane) & static_cast<int32_t>(lane < chain.last);
        }
    }
    for (int32_t i = 0; i < kBandsAtOnce; ++i) {
        counts_[i] = static_cast<int32_t>(next[i] - (keys_.data() + i * stride_));
    }
    return counts_;
}

const uint64_t* DenseBands::sorted(const uint64_t* keys, int32_t count) noexcept {
    int32_t* const places = bucketPlaces_.data();
    const int32_t buckets = columns_ << kSubpixelBits;
    std::fill_n(places, buckets, 0);
    for (int32_t i = 0; i < count; ++i) ++places[topOf(keys[i])];
    int32_t place = 0;  // the exclusive prefix sum of the counts is where the buckets begin
    for (int32_t i = 0; i < buckets; ++i) place += std::exchange(places[i], place);
    uint64_t* const into = sorted_.data();
    for (int32_t i = 0; i < count; ++i) into[places[topOf(keys[i])]++] = keys[i];
    finishOrder(into, count);
    return into;
}

template <FillRule kRule>
void DenseBands::addBoundaries(const uint64_t* keys, int32_t count,
                               const Destination& band) noexcept {
    int32_t winding = 0;
    int32_t past = 0;  // spans never overlap, even where edges cross inside a band
    for (int32_t i = 0; i < count; ++i) {
        const bool wasOutside = winding == 0;
        winding = kRule == FillRule::kNonZero ? winding + directionOf(keys[i]) : 1 - winding;
        const bool isOutside = winding == 0;
        if (wasOutside == isOutside) continue;
        past = std::max(past, bottomOf(keys[i]));
        addBoundary(topOf(keys[i]), past, wasOutside, band);
    }
}

inline void DenseBands::addBoundary(int32_t top, int32_t bottom, bool isLeft,
                                    const Destination& band) noexcept {
    const int32_t column = pixelOf(top);
    if (column == pixelOf(bottom)) [[likely]] {
        const int32_t sign = isLeft ? 1 : -1;
        ColumnSum& sum = sums_[column];
        sum.boundaries += sign;
        sum.fractions += sign * (fractionOf(top) + fractionOf(bottom));
        return;
    }
    uint32_t* const row = band.cells.cells + band.rowStart;
    const auto height = static_cast<uint32_t>(band.height);
    isLeft ? addTrapezoid(row, top, bottom, height) : subtractTrapezoid(row, top, bottom, height);
    const auto [left, right] = std::minmax({column, pixelOf(bottom)});
    band.cells.touch(band.rowStart + left, band.rowStart + right + 1);
}

/// Adds what the columns have summed up to the cells, and leaves the sums zero.
void DenseBands::addSums(const Destination& band) noexcept {
    const auto height = static_cast<uint32_t>(band.height);
    ColumnSum* const sums = sums_.data();
    for (int32_t column = 0; column < columns_; ++column) {
        const ColumnSum sum = std::exchange(sums[column], {});
        if ((sum.boundaries | sum.fractions) == 0) continue;
        const uint32_t rest = static_cast<uint32_t>(sum.fractions) * height << 19;
        const int32_t cell = band.rowStart + column;
        band.cells.cells[cell] += (static_cast<uint32_t>(sum.boundaries) * height << 25) - rest;
        band.cells.cells[cell + 1] += rest;
        band.cells.touch(cell, cell + 1);
    }
}

void DenseBands::shrinkToFit() noexcept {
    keys_.shrinkToFit();
    sorted_.shrinkToFit();
    bucketPlaces_.shrinkToFit();
    sums_.shrinkToFit();
}

}  // namespace vg::raster
