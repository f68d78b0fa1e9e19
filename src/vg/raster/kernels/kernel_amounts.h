#pragma once

// Kernels: trapezoids of one edge in as many bands at once as a vector has lanes (trapezoid.cpp
// derives the geometry).
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

#include "vg/raster/coverage/band_block.h"
#include "vg/raster/coverage/cells.h"
#include "vg/raster/coverage/trapezoid.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/kernels/lanes.h"

namespace vg::raster {
namespace {

/// Offsets from the view's spare cells at which lanes of height 0 add their zeros.
constexpr int32_t kSpareCells[] = {0, 8, 16, 24, 32, 40, 48, 56};

/// Where each lane adds.
struct Places {
    int32_t cell[kWords];       ///< of its leftmost column
    int32_t group[kWords];      ///< that cell's entry in the map
    int32_t lastGroup[kWords];  ///< of the last cell that may not be zero
};

/// The low 16 bits of products of 32-bit lanes by 16-bit multiplications: cheaper, and enough where
/// the product fits them or is shifted left by 16 and more.
QUOR_LANES_INLINE U32s smallProduct(U32s a, U32s b) noexcept { return (U32s)((U16s)a * (U16s)b); }

/// The two cells of each lane for edges within one column.
QUOR_LANES_INLINE void amountsInOneColumn(I32s left, I32s right, I32s height,
                                          uint32_t (*lanes)[2]) noexcept {
    const U32s h = (U32s)height;
    const auto fractions = (U32s)((left & kSubpixelMask) + (right & kSubpixelMask));
    const U32s rest = smallProduct(fractions, h) << 19;
    storeInterleaved((h << 25) - rest, rest, lanes);
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
    const U32s rest = smallProduct(fa + fb, h) << 19;
    const U32s first = smallProduct(32 - fa, 32 - fa) * s;
    const U32s last = smallProduct(fb, fb) * s;
    const I32s isOne = steps == 0, isTwo = steps == 1;
    const U32s second = choose(isTwo, whole - first - last, (2048 - smallProduct(fa, fa)) * s);
    storeTransposed(choose(isOne, whole - rest, first), choose(isOne, rest, second),
                    ~(U32s)isOne & choose(isTwo, last, whole - first - second - last),
                    ~(U32s)(isOne | isTwo) & last, lanes);
}

/// Scatter with addition: each lane adds the cells of one Cells vector at its place. Branchless.
template <class Cells>
QUOR_LANES_INLINE void scatter(const void* lanes, const Places& places,
                               const CellView& view) noexcept {
    uint32_t* const cells = view.cells;
    uint8_t* const touched = view.touched;
    for (int32_t l = 0; l < kWords; ++l) {
        uint32_t* const cell = cells + places.cell[l];
        store(cell, load<Cells>(cell) + load<Cells>(static_cast<const Cells*>(lanes) + l));
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
    view.touch(rowStart + pixelOf(left), rowStart + pixelOf(right) + 1);
}

inline void addWideLanes(const I32s& left, const I32s& right, const I32s& height, uint32_t laneBits,
                         const int32_t* rowStart, const CellView& view) noexcept {
    for (; laneBits != 0; laneBits &= laneBits - 1) {
        const int32_t l = __builtin_ctz(laneBits);
        addWide(left[l], right[l], height[l], rowStart[l], view);
    }
}

/// One vector of lanes. Those of height 0 may hold anything: they add zeros to spare cells, each
/// lane to its own, so that no load waits for another lane's store.
QUOR_LANES_INLINE void addVector(I32s top, I32s bottom, I32s height, const int32_t* rowStart,
                                 const CellView& view) noexcept {
    I32s counts = height != 0;
    if (!any(counts)) return;
    const I32s left = smaller(top, bottom);
    const I32s right = larger(top, bottom);
    const I32s steps = ((right >> kSubpixelBits) - (left >> kSubpixelBits)) & counts;
    const bool isVertical = !any(steps);
    if (!isVertical) {
        if (const I32s wide = steps > 2; any(wide)) {
            addWideLanes(left, right, height, bitsOf(wide), rowStart, view);
            height &= ~wide;
            counts &= ~wide;
        }
    }
    const I32s cell = choose(counts, load<I32s>(rowStart) + (left >> kSubpixelBits),
                             load<I32s>(kSpareCells) + view.spare);
    Places places;
    store(places.cell, cell);
    store(places.group, cell >> 3);
    if (isVertical) {
        store(places.lastGroup, (cell + 1) >> 3);
        uint32_t lanes[kWords][2];
        amountsInOneColumn(left, right, height, lanes);
        return scatter<U32x2>(lanes, places, view);
    }
    store(places.lastGroup, (cell + 1 + (steps & counts)) >> 3);
    uint32_t lanes[kWords][4];
    amountsInThreeColumns(left, right, height, steps, lanes);
    scatter<U32x4>(lanes, places, view);
}

/// The bands of a vector from lane l on.
QUOR_LANES_INLINE void addLanes(const uint16_t* top, const uint16_t* bottom, const int16_t* sign,
                                int32_t l, const BandBlock& block, const CellView& view) noexcept {
    const I16Half height = load<I16Half>(sign + l) * load<I16Half>(block.height + l);
    addVector(widen(top + l), widen(bottom + l), widen(height), block.rowStart + l, view);
}

void addChains(LiveChain* const* chains, int32_t count, const BandBlock& block,
               const CellView& view) noexcept {
    for (int32_t i = 0; i < count; ++i) {
        const LiveChain& chain = *chains[i];
        for (int32_t l = chain.first; l < chain.last; l += kWords) {
            addLanes(chain.top, chain.bottom, chain.sign, l, block, view);
        }
    }
}

void addRows(const BoundaryRow* rows, int32_t count, const BandBlock& block,
             const CellView& view) noexcept {
    for (const BoundaryRow* row = rows; row != rows + count; ++row) {
        for (int32_t l = 0; l < kBlockBands; l += kWords) {
            addLanes(row->top, row->bottom, row->sign, l, block, view);
        }
    }
}

}  // namespace
}  // namespace vg::raster
