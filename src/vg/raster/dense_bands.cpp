#include "vg/raster/dense_bands.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace vg::raster {
namespace {

// Keys of edges rise with x at the top, then x at the bottom, then direction.

constexpr int32_t kTopShift = 32;

uint64_t keyOf(const LiveChain& chain, int32_t lane) noexcept {
    return static_cast<uint64_t>(chain.top[lane]) << kTopShift |
           static_cast<uint32_t>(chain.bottom[lane]) << 1 | (chain.step > 0 ? 1U : 0U);
}

uint32_t topOf(uint64_t key) noexcept { return static_cast<uint32_t>(key >> kTopShift); }
uint32_t bottomOf(uint64_t key) noexcept { return static_cast<uint32_t>(key) >> 1; }
int32_t directionOf(uint64_t key) noexcept { return (key & 1) != 0 ? 1 : -1; }

/// At least twice as many buckets as keys: nearly every key has one to itself.
int32_t bucketCountFor(int32_t keyCount) noexcept {
    return 2 * static_cast<int32_t>(std::bit_ceil(static_cast<uint32_t>(keyCount)));
}

/// Finishes keys that are in order but for neighbours; when they turn out not to be (all edges in
/// a few places), sorts from scratch.
void finishOrder(uint64_t* keys, int32_t count) noexcept {
    int32_t movesLeft = 8 * count;
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

bool DenseBands::reserve(int32_t chainCount) noexcept {
    return keys_.resize(kBandsAtOnce * chainCount) && sorted_.resize(chainCount) &&
           bucketEnd_.resize(bucketCountFor(chainCount)) &&
           rows_.resize(chainCount / kBlockBands + 1);
}

void DenseBands::addBlock(LiveChain* const* chains, int32_t count, FillRule rule,
                          const BandBlock& block, const CellView& cells) noexcept {
    for (int32_t lane = 0; lane < kBlockBands; lane += kBandsAtOnce) {
        Keys bands[kBandsAtOnce];
        collect(chains, count, lane, bands);
        for (int32_t i = 0; i < kBandsAtOnce; ++i) {
            if (bands[i].count == 0) continue;
            uint64_t* const sorted = distribute(bands[i]);
            finishOrder(sorted, bands[i].count);
            resolve(sorted, bands[i].count, rule);
            addBand(lane + i, block, cells);
        }
    }
}

void DenseBands::collect(LiveChain* const* chains, int32_t count, int32_t firstLane,
                         Keys (&bands)[kBandsAtOnce]) noexcept {
    for (int32_t i = 0; i < kBandsAtOnce; ++i) bands[i] = {keys_.data() + i * count, 0};
    for (int32_t i = 0; i < count; ++i) {
        const LiveChain& chain = *chains[i];
        const int32_t first = std::max(chain.first, firstLane);
        const int32_t last = std::min(chain.last, firstLane + kBandsAtOnce);
        for (int32_t lane = first; lane < last; ++lane) {
            Keys& band = bands[lane - firstLane];
            band.keys[band.count++] = keyOf(chain, lane);
        }
    }
}

/// Sorts by the leading bits of x at the top.
uint64_t* DenseBands::distribute(const Keys& band) noexcept {
    uint32_t widest = 0;
    for (int32_t i = 0; i < band.count; ++i) widest = std::max(widest, topOf(band.keys[i]));
    const int32_t bucketCount = bucketCountFor(band.count);
    int32_t shift = kTopShift;
    while (widest >> (shift - kTopShift) >= static_cast<uint32_t>(bucketCount)) ++shift;
    int32_t* const places = bucketEnd_.data();
    std::fill_n(places, bucketCount, 0);
    for (int32_t i = 0; i < band.count; ++i) ++places[band.keys[i] >> shift];
    int32_t place = 0;
    for (int32_t i = 0; i < bucketCount; ++i) place += std::exchange(places[i], place);
    uint64_t* const sorted = sorted_.data();
    for (int32_t i = 0; i < band.count; ++i) {
        sorted[places[band.keys[i] >> shift]++] = band.keys[i];
    }
    return sorted;
}

void DenseBands::resolve(const uint64_t* keys, int32_t count, FillRule rule) noexcept {
    rowCount_ = (count + kBlockBands - 1) / kBlockBands;
    BoundaryRow* const rows = rows_.data();
    for (int32_t i = 0; i < rowCount_; ++i) rows[i] = {};
    int32_t winding = 0;
    uint32_t past = 0;  // spans never overlap, even where edges cross inside a band
    int32_t row = 0, lane = 0;
    for (int32_t i = 0; i < count; ++i) {
        const bool wasOutside = winding == 0;
        winding = rule == FillRule::kNonZero ? winding + directionOf(keys[i]) : 1 - winding;
        const bool isOutside = winding == 0;
        if (wasOutside == isOutside) continue;
        past = std::max(past, bottomOf(keys[i]));
        rows[row].top[lane] = static_cast<uint16_t>(topOf(keys[i]));
        rows[row].bottom[lane] = static_cast<uint16_t>(past);
        rows[row].sign[lane] = wasOutside ? 1 : -1;
        if (++row == rowCount_) {
            row = 0;
            ++lane;
        }
    }
}

void DenseBands::addBand(int32_t lane, const BandBlock& block, const CellView& cells) noexcept {
    BandBlock band;  // the same band in every lane
    std::fill_n(band.height, kBlockBands, block.height[lane]);
    std::fill_n(band.rowStart, kBlockBands, block.rowStart[lane]);
    kernels().addRows(rows_.data(), rowCount_, band, cells);
}

void DenseBands::shrinkToFit() noexcept {
    keys_.shrinkToFit();
    sorted_.shrinkToFit();
    bucketEnd_.shrinkToFit();
    rows_.shrinkToFit();
}

}  // namespace vg::raster
