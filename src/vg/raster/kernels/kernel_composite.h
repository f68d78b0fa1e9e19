#pragma once

// Kernels: pixel rows of flat colour from their touched cells, by a prefix sum a row.
//
//   touched   0   1   1   0   0   0   1   0      a group is eight columns
//   coverage  0  ///////  constant       \\\\ 0
//
// Inside a touched group the prefix sum is taken column by column; between touched groups coverage
// is constant, so whole runs are skipped, stored, or blended with one factor.

#include <bit>

#include "vg/raster/coverage/cells.h"
#include "vg/raster/kernels/kernels.h"
#include "vg/raster/kernels/lanes.h"
#include "vg/raster/pixels/pixel_lanes.h"

namespace vg::raster {
namespace {

static_assert(std::endian::native == std::endian::little, "pixels and the map are read as bytes");

// The pixels of a vector are worked on as two vectors with 16 bits for each channel: `low` holds
// channels 0 and 2, `high` 1 and 3.

QUOR_LANES_INLINE U16s lowOf(U32s pixels) noexcept { return (U16s)(pixels & kLanes); }
QUOR_LANES_INLINE U16s highOf(U32s pixels) noexcept { return (U16s)pixels >> 8; }

/// A flat colour that replaces what it covers.
class FlatSource {
public:
    [[gnu::always_inline]] explicit FlatSource(uint32_t color) noexcept
        : pixels_(U32s{} + color), low_(lowOf(pixels_)), high_(highOf(pixels_)) {}

    [[gnu::always_inline]] U16s low(U16s /*d*/) const noexcept { return low_; }
    [[gnu::always_inline]] U16s high(U16s /*d*/) const noexcept { return high_; }
    [[gnu::always_inline]] U32s full(U32s /*d*/) const noexcept { return pixels_; }

private:
    U32s pixels_;
    U16s low_, high_;
};

/// A flat colour over what is there: s + d (255 - a_s) / 255, rounded.
class FlatSourceOver {
public:
    [[gnu::always_inline]] explicit FlatSourceOver(uint32_t color) noexcept
        : low_(lowOf(U32s{} + color)),
          high_(highOf(U32s{} + color)),
          rest_(U16s{} + static_cast<uint16_t>(255 - alphaOf(color))) {}

    [[gnu::always_inline]] U16s low(U16s d) const noexcept { return low_ + scaled(d); }
    [[gnu::always_inline]] U16s high(U16s d) const noexcept { return high_ + scaled(d); }
    [[gnu::always_inline]] U32s full(U32s d) const noexcept {
        return (U32s)low(lowOf(d)) | (U32s)(high(highOf(d)) << 8);
    }

private:
    [[gnu::always_inline]] U16s scaled(U16s d) const noexcept {
        const U16s product = d * rest_ + 128;
        return (product + (product >> 8)) >> 8;
    }

    U16s low_, high_;
    U16s rest_;
};

/// Linear interpolation from pixels to others (given by their low and high channels) by a coverage
/// of 0..256 each: d 256 + (s - d) coverage, which is never negative, in 16 bits.
QUOR_LANES_INLINE U32s mixHalves(U32s pixels, U16s low, U16s high, U32s coverage) noexcept {
    const auto share = (U16s)(coverage | coverage << 16);
    const U16s mixedLow = ((U16s)pixels << 8) + (low - lowOf(pixels)) * share;
    const U16s mixedHigh = (U16s)(pixels & ~kLanes) + (high - highOf(pixels)) * share;
    return (U32s)(mixedLow >> 8) | ((U32s)mixedHigh & ~kLanes);
}

template <class Paint>
QUOR_LANES_INLINE U32s mixPixels(const Paint& paint, U32s pixels, U32s coverage) noexcept {
    return mixHalves(pixels, paint.low(lowOf(pixels)), paint.high(highOf(pixels)), coverage);
}

/// Coverage 0..256 of running sums.
QUOR_LANES_INLINE U32s coverageOfLanes(U32s sums) noexcept {
    return (U32s)smaller(larger((I32s)sums >> 22, I32s{}), I32s{} + 256);
}

/// `count` (a whole number of vectors) pixels of equal coverage.
template <class Paint>
QUOR_LANES_INLINE void blendRun(const Paint& paint, uint32_t* pixels, int32_t count,
                                uint32_t coverage) noexcept {
    if (coverage == 0) return;
    uint32_t* const end = pixels + count;
    if (coverage == 256) {
        for (; pixels != end; pixels += kWords) store(pixels, paint.full(load<U32s>(pixels)));
    } else {
        const U32s share = U32s{} + coverage;
        for (; pixels != end; pixels += kWords) {
            store(pixels, mixPixels(paint, load<U32s>(pixels), share));
        }
    }
}

/// The first `count` pixels of a vector, less than all.
template <class Paint>
inline void blendPart(const Paint& paint, uint32_t* pixels, int32_t count, U32s coverage) noexcept {
    if (count <= 0) return;  // nothing left, or a closing cell just past the right edge
    uint32_t part[kWords] = {};
    const size_t size = static_cast<size_t>(count) * sizeof(uint32_t);
    std::memcpy(part, pixels, size);
    store(part, mixPixels(paint, load<U32s>(part), coverage));
    std::memcpy(pixels, part, size);
}

/// `count` fully covered pixels. The last vector overlaps the one before it, so it is computed
/// before anything is stored.
template <class Paint>
void run(uint32_t* pixels, int32_t count, uint32_t color) noexcept {
    const Paint paint(color);
    if (count < kWords) return blendPart(paint, pixels, count, U32s{} + 256);
    uint32_t* const last = pixels + (count - kWords);
    const U32s lastPixels = paint.full(load<U32s>(last));
    blendRun(paint, pixels, (count - 1) & ~(kWords - 1), 256);
    store(last, lastPixels);
}

/// One row of cells and what it is drawn on.
struct FlatRow {
    uint32_t* cells;
    uint8_t* touched;
    uint32_t* pixels;
    int32_t width;
    int32_t toFetch;  ///< pixels from here to a row drawn soon, see fetchBelow()
};

/// Prefetches the pixels below: an edge goes on about where it is, and on a large surface the rows
/// it meets next are not in the cache. Longer runs are fetched by the hardware prefetcher.
QUOR_LANES_INLINE void fetchBelow(const FlatRow& row, int32_t column) noexcept {
    __builtin_prefetch(row.pixels + column + row.toFetch, 1);
}

/// Blends one vector of a touched group, leaves its cells zero, returns the sum at its end in
/// every lane, as `carry` holds that of the cells before.
template <class Paint>
QUOR_LANES_INLINE U32s blendCells(const Paint& paint, const FlatRow& row, int32_t column,
                                  U32s carry) noexcept {
    uint32_t* const cells = row.cells + column;
    const U32s sums = runningSums(load<U32s>(cells)) + carry;
    store(cells, U32s{});
    const U32s coverage = coverageOfLanes(sums);
    uint32_t* const pixels = row.pixels + column;
    fetchBelow(row, column);
    if (column + kWords <= row.width) {
        store(pixels, mixPixels(paint, load<U32s>(pixels), coverage));
    } else {
        blendPart(paint, pixels, row.width - column, coverage);
    }
    return lastLane(sums);
}

template <class Paint>
QUOR_LANES_INLINE void compositeRow(const Paint& paint, const FlatRow& row,
                                    int32_t groupCount) noexcept {
    U32s sum = {};
    int32_t column = 0;  // everything to its left is done
    for (int32_t base = 0; base < groupCount; base += 8) {
        auto touched = load<uint64_t>(row.touched + base);
        if (touched == 0) continue;
        store<uint64_t>(row.touched + base, 0);
        for (; touched != 0; touched &= touched - 1) {
            const int32_t group = (base + (__builtin_ctzll(touched) >> 3)) * kGroupCells;
            if (group != column) {
                blendRun(paint, row.pixels + column, group - column, coverageOf(sum[0]));
            }
            for (column = group; column < group + kGroupCells; column += kWords) {
                sum = blendCells(paint, row, column, sum);
            }
        }
    }
}

template <class Paint>
void composite(const FlatRows& rows) noexcept {
    constexpr int32_t kRowsBelow = 4;
    const Paint paint(rows.color);
    for (int32_t y = rows.top; y >= rows.bottom; --y) {
        const int32_t start = (y & rows.ringMask) * rows.stride;
        const FlatRow row = {rows.ring.cells + start, rows.ring.touched + start / kGroupCells,
                             rows.pixels + static_cast<int64_t>(rows.top - y) * rows.pitch,
                             rows.width, y >= kRowsBelow ? kRowsBelow * rows.pitch : 0};
        compositeRow(paint, row, rows.stride / kGroupCells);
    }
}

}  // namespace
}  // namespace vg::raster
