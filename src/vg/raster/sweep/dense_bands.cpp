#include "vg/raster/sweep/dense_bands.h"

#include <algorithm>
#include <utility>

#include "vg/raster/coverage/cells.h"
#include "vg/raster/coverage/trapezoid.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/kernels/kernels.h"

namespace vg::raster {
namespace {

/// An edge in a band as a number: x at the top, x at the bottom, direction. x has kBits.
template <class KeyWord, int kBits>
struct EdgeKey {
    using Word = KeyWord;
    static constexpr int32_t kWidest = 1 << kBits;

    static Word of(uint32_t top, uint32_t bottom, uint32_t falls) noexcept {
        return Word{top} << (kBits + 1) | Word{bottom} << 1 | falls;
    }
    static Word of(const LiveChain& chain, int32_t lane) noexcept {
        return of(chain.top[lane], chain.bottom[lane], chain.step > 0 ? 1 : 0);
    }
    static int32_t topOf(Word key) noexcept { return static_cast<int32_t>(key >> (kBits + 1)); }
    static int32_t bottomOf(Word key) noexcept {
        return static_cast<int32_t>(key >> 1) & (kWidest - 1);
    }
    static int32_t directionOf(Word key) noexcept { return (key & 1) != 0 ? 1 : -1; }
};

/// Half as wide, for polygons of up to 1024 columns.
using NarrowKey = EdgeKey<uint32_t, 15>;
using WideKey = EdgeKey<uint64_t, 16>;

/// The edges of some bands, band after band.
template <class Key, int32_t kBands>
struct Collection {
    typename Key::Word* keys[kBands];
    int32_t counts[kBands];

    Collection(LiveChain* const* chains, int32_t count, int32_t firstLane,
               uint64_t* memory) noexcept {
        for (int32_t i = 0; i < kBands; ++i) {
            keys[i] = reinterpret_cast<typename Key::Word*>(memory + i * (count + 1));
            counts[i] = 0;
        }
        for (int32_t i = 0; i < count; ++i) collect(*chains[i], firstLane);
    }

private:
    /// Writes a key for every band, whether the edge crosses it or not; what does not is
    /// overwritten by the next.
    void collect(const LiveChain& chain, int32_t firstLane) noexcept {
        for (int32_t i = 0; i < kBands; ++i) {
            const int32_t lane = firstLane + i;
            keys[i][counts[i]] = Key::of(chain, lane);
            counts[i] +=
                static_cast<int32_t>(chain.first <= lane) & static_cast<int32_t>(lane < chain.last);
        }
    }
};

/// The step of sorting for keys of 64 bits, which only the widest polygons have.
bool exchangeNeighbours(uint64_t* keys, int32_t count) noexcept {
    bool isOrdered = true;
    for (int32_t i = 0; i + 1 < count; ++i) {
        if (keys[i] <= keys[i + 1]) continue;
        std::swap(keys[i], keys[i + 1]);
        isOrdered = false;
    }
    return !isOrdered;
}
bool exchangeNeighbours(uint32_t* keys, int32_t count) noexcept {
    return kernels().exchangeNeighbours(keys, count);
}

/// Orders keys that are in order but for near neighbours; when they turn out not to be (all edges
/// in a few places), sorts from scratch.
template <class Word>
void finishOrder(Word* keys, int32_t count) noexcept {
    constexpr int32_t kMostSteps = 24;
    for (int32_t step = 0; step < kMostSteps; ++step) {
        if (!exchangeNeighbours(keys, count)) return;
    }
    std::sort(keys, keys + count);
}

}  // namespace

bool DenseBands::reserve(int32_t chainCount, int32_t columns) noexcept {
    columns_ = columns;
    if (!keys_.resize(kBandsAtOnce * (chainCount + 1)) || !sorted_.resize(chainCount + 1)) {
        return false;
    }
    if (columns <= reservedColumns_) return true;
    // All zero, so that new ones are the only ones to clear.
    if (!bucketPlaces_.resize(columns << kSubpixelBits) || !sums_[0].resizeZeroed(columns) ||
        !sums_[1].resizeZeroed(columns)) {
        return false;
    }
    reservedColumns_ = columns;
    return true;
}

void DenseBands::addBlock(LiveChain* const* chains, int32_t count, FillRule rule,
                          const BandBlock& block, const CellView& cells) noexcept {
    if ((columns_ << kSubpixelBits) < NarrowKey::kWidest) {
        addBands<NarrowKey>(chains, count, rule, block, cells);
    } else {
        addBands<WideKey>(chains, count, rule, block, cells);
    }
}

template <class Key>
void DenseBands::addBands(LiveChain* const* chains, int32_t count, FillRule rule,
                          const BandBlock& block, const CellView& cells) noexcept {
    for (int32_t lane = 0; lane < kBlockBands; lane += kBandsAtOnce) {
        const Collection<Key, kBandsAtOnce> bands(chains, count, lane, keys_.data());
        for (int32_t i = 0; i < kBandsAtOnce; ++i) {
            if (bands.counts[i] == 0) continue;
            addKeys<Key>(bands.keys[i], bands.counts[i], rule,
                         {block.height[lane + i], block.rowStart[lane + i], cells});
        }
    }
}

template <class Key>
void DenseBands::addKeys(const typename Key::Word* keys, int32_t count, FillRule rule,
                         const Band& band) noexcept {
    auto* const sorted = reinterpret_cast<typename Key::Word*>(sorted_.data());
    distribute<Key>(keys, count, sorted);
    finishOrder(sorted, count);
    rule == FillRule::kNonZero ? addBoundaries<Key, FillRule::kNonZero>(sorted, count, band)
                               : addBoundaries<Key, FillRule::kEvenOdd>(sorted, count, band);
    addSums(band);
}

void DenseBands::addBand(const DenseEdges& edges, FillRule rule, int32_t height, int32_t rowStart,
                         const CellView& cells) noexcept {
    uint64_t* const keys = keys_.data();
    for (int32_t i = 0; i < edges.count; ++i) {
        const uint32_t place = edges.place[i];
        keys[i] = WideKey::of(edges.top[i], place << 1 >> 16, place >> 31);
    }
    addKeys<WideKey>(keys, edges.count, rule, {height, rowStart, cells});
}

/// Sorts by x at the top.
template <class Key>
void DenseBands::distribute(const typename Key::Word* keys, int32_t count,
                            typename Key::Word* sorted) noexcept {
    int32_t* const places = bucketPlaces_.data();
    const int32_t buckets = columns_ << kSubpixelBits;
    std::fill_n(places, buckets, 0);
    for (int32_t i = 0; i < count; ++i) ++places[Key::topOf(keys[i])];
    int32_t place = 0;
    for (int32_t i = 0; i < buckets; ++i) place += std::exchange(places[i], place);
    for (int32_t i = 0; i < count; ++i) sorted[places[Key::topOf(keys[i])]++] = keys[i];
}

template <class Key, FillRule kRule>
void DenseBands::addBoundaries(const typename Key::Word* keys, int32_t count,
                               const Band& band) noexcept {
    int32_t winding = 0;
    int32_t past = 0;  // spans never overlap, even where edges cross inside a band
    for (int32_t i = 0; i < count; ++i) {
        const bool wasOutside = winding == 0;
        winding = kRule == FillRule::kNonZero ? winding + Key::directionOf(keys[i]) : 1 - winding;
        const bool isOutside = winding == 0;
        if (wasOutside == isOutside) continue;
        past = std::max(past, Key::bottomOf(keys[i]));
        addBoundary(Key::topOf(keys[i]), past, wasOutside, band);
    }
}

inline void DenseBands::addBoundary(int32_t top, int32_t bottom, bool isLeft,
                                    const Band& band) noexcept {
    const int32_t column = pixelOf(top);
    if (column == pixelOf(bottom)) [[likely]] {
        sums_[isLeft ? 1 : 0].data()[column] +=
            ColumnSum{1} << 32 | static_cast<uint32_t>(fractionOf(top) + fractionOf(bottom));
        return;
    }
    addWideBoundary(top, bottom, isLeft, band);
}

void DenseBands::addWideBoundary(int32_t top, int32_t bottom, bool isLeft,
                                 const Band& band) noexcept {
    const int32_t left = pixelOf(std::min(top, bottom));
    const int32_t right = pixelOf(std::max(top, bottom));
    uint32_t* const cells = band.cells.cells + band.rowStart;
    const auto height = static_cast<uint32_t>(band.height);
    isLeft ? addTrapezoid(cells, top, bottom, height)
           : subtractTrapezoid(cells, top, bottom, height);
    band.cells.touch(band.rowStart + left, band.rowStart + right + 1);
}

/// Adds what the columns have summed up to the cells.
void DenseBands::addSums(const Band& band) noexcept {
    const auto height = static_cast<uint32_t>(band.height);
    ColumnSum* const lefts = sums_[1].data();
    ColumnSum* const rights = sums_[0].data();
    for (int32_t column = 0; column < columns_; ++column) {
        if ((lefts[column] | rights[column]) == 0) continue;
        const ColumnSum left = std::exchange(lefts[column], 0);
        const ColumnSum right = std::exchange(rights[column], 0);
        const uint32_t boundaries =
            static_cast<uint32_t>(left >> 32) - static_cast<uint32_t>(right >> 32);
        const uint32_t rest = (static_cast<uint32_t>(left) - static_cast<uint32_t>(right)) * height
                              << 19;
        const int32_t cell = band.rowStart + column;
        band.cells.cells[cell] += (boundaries * height << 25) - rest;
        band.cells.cells[cell + 1] += rest;
        band.cells.touch(cell, cell + 1);
    }
}

void DenseBands::shrinkToFit() noexcept {
    keys_.shrinkToFit();
    sorted_.shrinkToFit();
    bucketPlaces_.shrinkToFit();
    sums_[0].shrinkToFit();
    sums_[1].shrinkToFit();
}

}  // namespace vg::raster
