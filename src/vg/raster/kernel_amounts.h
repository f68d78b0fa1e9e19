#pragma once

// Kernels: trapezoids of one edge in as many bands at once as a vector has lanes (the geometry is
// told in trapezoid.cpp).
//
// All amounts of an edge over at most three columns are linear in h, the band's height times the
// boundary's sign, and sum to h 2^25; a boundary that counts for nothing has h = 0. With
// s = h floor(2^19 / d), f_a and f_b the fractions of the left and of the right end:
//
//     columns       cell 0            cell 1            cell 2        cell 3
//     1             h 2^25 - R        R = (f_a+f_b) h 2^19
//     2             A = (32-f_a)^2 s  h 2^25 - A - B    B = f_b^2 s
//     3             A                 (2048 - f_a^2) s  the rest      B
//
// Every lane adds four cells at its own place with one 16-byte addition.

#include "vg/raster/fixed.h"
#include "vg/raster/kernels.h"
#include "vg/raster/lanes.h"
#include "vg/raster/trapezoid.h"

namespace vg::raster {
namespace {

/// Where each lane adds.
struct Places {
    int32_t cell[kWords];       ///< of its leftmost column
    int32_t group[kWords];      ///< that cell's entry in the map
    int32_t lastGroup[kWords];  ///< of the last cell that may not be zero
};

/// The four cells of each lane for edges within one column.
QUOR_LANES_INLINE void amountsInOneColumn(I32s left, I32s right, I32s height,
                                          uint32_t (*lanes)[4]) noexcept {
    const U32s h = (U32s)height;
    const U32s rest = ((U32s)((left & kSubpixelMask) + (right & kSubpixelMask)) * h) << 19;
    storeTransposed((h << 25) - rest, rest, U32s{}, U32s{}, lanes);
}

/// floor(2^19 / d): a float division followed by truncation is exact for every d in 1..65504.
QUOR_LANES_INLINE U32s reciprocal(I32s d) noexcept {
    const F32s quotient = 524288.0F / __builtin_convertvector(d, F32s);
    return (U32s) __builtin_convertvector(quotient, I32s);
}

/// The four cells of each lane for edges over one column to three; `steps` is one less.
QUOR_LANES_INLINE void amountsInThreeColumns(I32s left, I32s right, I32s height, I32s steps,
                                             uint32_t (*lanes)[4]) noexcept {
    const U32s h = (U32s)height;
    const I32s d = right - left;
    const U32s s = h * reciprocal(d - (d == 0));
    const U32s fa = (U32s)(left & kSubpixelMask);
    const U32s fb = (U32s)(right & kSubpixelMask);
    const U32s whole = h << 25;
    const U32s rest = ((fa + fb) * h) << 19;
    const U32s first = (32 - fa) * (32 - fa) * s;
    const U32s last = fb * fb * s;
    const I32s isOne = steps == 0, isTwo = steps == 1;
    const U32s second = choose(isTwo, whole - first - last, (2048 - fa * fa) * s);
    storeTransposed(choose(isOne, whole - rest, first), choose(isOne, rest, second),
                    ~(U32s)isOne & choose(isTwo, last, whole - first - second - last),
                    ~(U32s)(isOne | isTwo) & last, lanes);
}

QUOR_LANES_INLINE void scatter(const uint32_t (*lanes)[4], const Places& places, uint32_t laneBits,
                               const CellView& view) noexcept {
    uint32_t* const cells = view.cells;
    uint8_t* const touched = view.touched;
    for (; laneBits != 0; laneBits &= laneBits - 1) {
        const int32_t l = __builtin_ctz(laneBits);
        uint32_t* const cell = cells + places.cell[l];
        store(cell, load<U32x4>(cell) + load<U32x4>(lanes[l]));
        touched[places.group[l]] = 1;
        touched[places.lastGroup[l]] = 1;
    }
}

/// An edge over more than three columns.
inline void addWide(int32_t left, int32_t right, int32_t height, int32_t rowStart,
                    const CellView& view) noexcept {
    uint32_t* const cells = view.cells + rowStart;
    if (height > 0) addTrapezoid(cells, left, right, static_cast<uint32_t>(height));
    if (height < 0) subtractTrapezoid(cells, left, right, static_cast<uint32_t>(-height));
    const int32_t firstGroup = (rowStart + (left >> kSubpixelBits)) >> 3;
    const int32_t lastGroup = (rowStart + (right >> kSubpixelBits) + 1) >> 3;
    for (int32_t group = firstGroup; group <= lastGroup; ++group) view.touched[group] = 1;
}

inline void addWideLanes(const I32s& left, const I32s& right, const I32s& height, uint32_t laneBits,
                         const int32_t* rowStart, const CellView& view) noexcept {
    for (; laneBits != 0; laneBits &= laneBits - 1) {
        const int32_t l = __builtin_ctz(laneBits);
        addWide(left[l], right[l], height[l], rowStart[l], view);
    }
}

/// Some lanes of a block. Those of height 0 may hold anything.
QUOR_LANES_INLINE void addVector(I32s top, I32s bottom, I32s height, const int32_t* rowStart,
                                 const CellView& view) noexcept {
    const I32s counts = height != 0;
    uint32_t laneBits = bitsOf(counts);
    if (laneBits == 0) return;
    const I32s left = smaller(top, bottom);
    const I32s right = larger(top, bottom);
    const I32s steps = ((right >> kSubpixelBits) - (left >> kSubpixelBits)) & counts;
    const I32s start = load<I32s>(rowStart);
    const I32s cell = start + (left >> kSubpixelBits);
    Places places;
    store(places.cell, cell);
    store(places.group, cell >> 3);
    store(places.lastGroup, (cell + steps + 1) >> 3);
    uint32_t lanes[kWords][4];
    if (!any(steps)) {
        amountsInOneColumn(left, right, height, lanes);
    } else {
        amountsInThreeColumns(left, right, height, steps, lanes);
        if (const uint32_t wideBits = bitsOf(steps > 2); wideBits != 0) {
            addWideLanes(left, right, height, wideBits, rowStart, view);
            laneBits &= ~wideBits;
        }
    }
    scatter(lanes, places, laneBits, view);
}

QUOR_LANES_INLINE void addLanes(const uint16_t* top, const uint16_t* bottom, const int16_t* sign,
                                const BandBlock& block, const CellView& view) noexcept {
    for (int32_t l = 0; l < kBlockBands; l += kWords) {
        addVector(widen(top + l), widen(bottom + l), widen(sign + l) * load<I32s>(block.height + l),
                  block.rowStart + l, view);
    }
}

void addChains(LiveChain* const* chains, int32_t count, const BandBlock& block,
               const CellView& view) noexcept {
    for (int32_t i = 0; i < count; ++i) {
        const LiveChain& chain = *chains[i];
        addLanes(chain.top, chain.bottom, chain.sign, block, view);
    }
}

void addRows(const BoundaryRow* rows, int32_t count, const BandBlock& block,
             const CellView& view) noexcept {
    for (const BoundaryRow* row = rows; row != rows + count; ++row) {
        addLanes(row->top, row->bottom, row->sign, block, view);
    }
}

}  // namespace
}  // namespace vg::raster
