#pragma once

// Kernels: a band of very many edges, sorted by pigeonholes (dense_columns.h). A vector holds
// neighbouring holes; what the holes on the left leave behind comes in by running sums and maxima.

#include <array>
#include <iterator>
#include <utility>

#include "vg/raster/coverage/cells.h"
#include "vg/raster/coverage/dense_columns.h"
#include "vg/raster/coverage/trapezoid.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/kernels/kernel_order.h"
#include "vg/raster/kernels/lane_scans.h"
#include "vg/raster/kernels/lanes.h"

namespace vg::raster {
namespace {

using U8Half = uint8_t __attribute__((vector_size(kVectorBytes / 2)));

QUOR_LANES_INLINE void order(U16s& a, U16s& b) noexcept {
    const U16s least = smaller(a, b);
    b = larger(a, b);
    a = least;
}

struct LanePlace {
    int32_t vector, lane;
};

#if defined(__AVX2__)
/// A bit for every lane of four vectors that is not zero, in the order of placeOf().
QUOR_LANES_INLINE uint64_t signedLanes(const I16s* v) noexcept {
    const __m256i zero = _mm256_setzero_si256();
    const auto pair = [zero](I16s a, I16s b) {
        const __m256i bytes = _mm256_packs_epi16((__m256i)a, (__m256i)b);
        return ~static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(bytes, zero)));
    };
    return pair(v[0], v[1]) | uint64_t{pair(v[2], v[3])} << 32;
}
/// Packing takes vectors by their halves: bits are lane within the half, vector of the pair, half,
/// pair, from the lowest up.
inline LanePlace placeOf(int32_t bit) noexcept {
    return {(bit >> 4 & 2) | (bit >> 3 & 1), (bit & 7) | (bit >> 1 & 8)};
}
#else
QUOR_LANES_INLINE uint64_t signedLanes(const I16s* v) noexcept {
    constexpr I16s kBits = {1, 2, 4, 8, 16, 32, 64, 128};
    uint64_t bits = 0;
    for (int32_t i = 0; i < 4; ++i) {
        const auto halves = (U64s)((v[i] != 0) & kBits);
        const uint64_t some = halves[0] | halves[1];
        const uint64_t fewer = some | some >> 32;
        bits |= ((fewer | fewer >> 16) & 0xFF) << (8 * i);
    }
    return bits;
}
inline LanePlace placeOf(int32_t bit) noexcept { return {bit >> 3, bit & 7}; }
#endif

/// Sorts the keys of every lane.
QUOR_LANES_INLINE void orderSlots(U16s (&k)[4]) noexcept {
    order(k[0], k[1]);
    order(k[2], k[3]);
    order(k[0], k[2]);
    order(k[1], k[3]);
    order(k[1], k[2]);
}
QUOR_LANES_INLINE void orderSlots(U16s (&k)[8]) noexcept {
    constexpr int8_t kPairs[][2] = {{0, 2}, {1, 3}, {4, 6}, {5, 7}, {0, 4}, {1, 5}, {2, 6},
                                    {3, 7}, {0, 1}, {2, 3}, {4, 5}, {6, 7}, {2, 4}, {3, 5},
                                    {1, 4}, {3, 6}, {1, 2}, {3, 4}, {5, 6}};
    [&]<size_t... kIndex>(std::index_sequence<kIndex...>) {
        (order(k[kPairs[kIndex][0]], k[kPairs[kIndex][1]]), ...);
    }
    (std::make_index_sequence<std::size(kPairs)>{});
}

/// Sorts the keys of every lane: neighbours exchanged in turns.
template <int kMost>
QUOR_LANES_INLINE void orderSlots(U16s (&k)[kMost]) noexcept {
    for (int32_t turn = 0; turn < kMost; ++turn) {
        for (int32_t s = turn % 2; s + 1 < kMost; s += 2) order(k[s], k[s + 1]);
    }
}

struct EvenOdd {};
struct NonZero {};

/// What the holes to the left leave behind; the same in every lane.
struct FromLeft {
    U16s winding = {};
    U16s past = {};  ///< the furthest bottom of a boundary
};

/// Where boundaries of a band go.
struct BandCells {
    int32_t height;
    int32_t rowStart;
    CellView view;
};

/// floor(2^19 / d) for edges that reach no further than the next column.
constexpr auto kNearReciprocals = [] {
    std::array<uint32_t, 2 * kSubpixels> table{};
    for (uint32_t d = 1; d < table.size(); ++d) table[d] = (1U << 19) / d;
    return table;
}();

/// A boundary that leaves its column.
inline void addLeaving(int32_t top, int32_t bottom, int32_t sign, const BandCells& band) noexcept {
    const int32_t left = top < bottom ? top : bottom, right = top < bottom ? bottom : top;
    const int32_t column = left >> kSubpixelBits;
    uint32_t* const cells = band.view.cells + band.rowStart;
    if ((right >> kSubpixelBits) - column > 1) {
        const auto height = static_cast<uint32_t>(band.height);
        sign > 0 ? addTrapezoid(cells, top, bottom, height)
                 : subtractTrapezoid(cells, top, bottom, height);
        return band.view.touch(band.rowStart + column, band.rowStart + pixelOf(right) + 1);
    }
    const auto h = static_cast<uint32_t>(band.height * sign);
    const uint32_t s = kNearReciprocals[static_cast<uint32_t>(right - left)] * h;
    const auto fa = static_cast<uint32_t>(left & kSubpixelMask);
    const auto fb = static_cast<uint32_t>(right & kSubpixelMask);
    const uint32_t first = (32 - fa) * (32 - fa) * s, last = fb * fb * s;
    cells[column] += first;
    cells[column + 1] += (h << 25) - first - last;
    cells[column + 2] += last;
    band.view.touch(band.rowStart + column, band.rowStart + column + 2);
}

/// Boundaries that leave their columns, put by until there are many: few columns have more than a
/// few, and the end of a loop over a few is guessed wrongly each time.
class LeavingBoundaries {
public:
    /// Takes four vectors of boundaries; those with a sign leave. There must be room.
    [[gnu::always_inline]] void put(U16s tops, const U16s* bottoms, const I16s* signs) noexcept {
        Some& some = some_[count_];
        store(some.top, tops);
        for (int32_t s = 0; s < 4; ++s) {
            store(some.bottom[s], bottoms[s]);
            store(some.sign[s], signs[s]);
        }
        const uint64_t lanes = signedLanes(signs);
        lanes_[count_] = lanes;
        count_ += lanes != 0 ? 1 : 0;
        laneCount_ += __builtin_popcountll(lanes);
    }

    bool hasRoomFor(int32_t puts) const noexcept { return count_ <= kMost - puts; }

    /// Adds all to the band's cells and forgets them. The only branch that depends on the edges is
    /// the end.
    void add(const BandCells& band) noexcept {
        lanes_[count_] = 0;
        const Some* some = some_;
        const uint64_t* next = lanes_;
        uint64_t lanes = *next;
        for (; laneCount_ > 0; --laneCount_) {
            const LanePlace at = placeOf(__builtin_ctzll(lanes));
            addLeaving(some->top[at.lane], some->bottom[at.vector][at.lane],
                       some->sign[at.vector][at.lane], band);
            lanes &= lanes - 1;
            const bool isLast = lanes == 0;
            some += isLast ? 1 : 0;
            next += isLast ? 1 : 0;
            lanes = isLast ? *next : lanes;
        }
        count_ = 0;
    }

private:
    static constexpr int32_t kMost = 32;

    /// What one put() took.
    struct Some {
        uint16_t top[kShorts];
        uint16_t bottom[4][kShorts];
        int16_t sign[4][kShorts];
    };

    Some some_[kMost + 1];       ///< the one after the last may be written to, too
    uint64_t lanes_[kMost + 1];  ///< a bit for each that leaves
    int32_t count_ = 0;
    int32_t laneCount_ = 0;
};

/// The signs of the edges in some holes, the keys of each in order. `isNone` tells on which places
/// there is no edge; on return, on which there is no boundary.
template <int kMost>
QUOR_LANES_INLINE void signsOf(EvenOdd, const U16s* /*keys*/, U16s counts, U16s& windingLeft,
                               I16s* isNone, I16s* signs) noexcept {
    const U16s crossed = sumsFromLeft(counts) + windingLeft;
    windingLeft = lastLane(crossed);
    const I16s first = 1 - (I16s)((crossed - counts) << 1 & 2);
    for (int32_t s = 0; s < kMost; ++s) signs[s] = ~isNone[s] & (s % 2 == 0 ? first : -first);
}

template <int kMost>
QUOR_LANES_INLINE void signsOf(NonZero, const U16s* keys, U16s /*counts*/, U16s& windingLeft,
                               I16s* isNone, I16s* signs) noexcept {
    I16s directions[kMost];
    U16s net = {};
    for (int32_t s = 0; s < kMost; ++s) {
        directions[s] = ~isNone[s] & (I16s)((keys[s] << 1 & 2) - 1);
        net += (U16s)directions[s];
    }
    const U16s windings = sumsFromLeft(net) + windingLeft;
    windingLeft = lastLane(windings);
    Winding<FillRule::kNonZero> winding{(I16s)(windings - net)};
    for (int32_t s = 0; s < kMost; ++s) {
        signs[s] = winding.cross(directions[s]);
        isNone[s] = signs[s] == 0;
    }
}

/// Empties a vector of holes of up to kMost edges each. Of boundaries that stay within the column
/// the signs are summed up, and f_a + f_b with the sign.
template <class Rule, int kMost>
QUOR_LANES_INLINE void takeHoles(const uint16_t* slots, int32_t stride, U16s counts, U16s tops,
                                 FromLeft& left, LeavingBoundaries& leaving, I16s& signSum,
                                 I16s& fractionSum) noexcept {
    U16s keys[kMost];
    I16s isNone[kMost], signs[kMost];
    for (int32_t s = 0; s < kMost; ++s) {
        isNone[s] = static_cast<int16_t>(s + 1) > (I16s)counts;
        keys[s] = load<U16s>(slots + s * stride) | (U16s)isNone[s];
    }
    orderSlots(keys);
    signsOf<kMost>(Rule{}, keys, counts, left.winding, isNone, signs);

    const U16s origin = tops - static_cast<uint16_t>(kKeyBias);
    U16s bottoms[kMost], furthest = {};
    for (int32_t s = 0; s < kMost; ++s) {
        bottoms[s] = origin + (keys[s] >> 1);
        furthest = larger(furthest, bottoms[s] & ~(U16s)isNone[s]);
    }
    const U16s maxima = larger(maximaFromLeft(furthest), left.past);
    const U16s past = previousLanes(maxima, left.past);
    left.past = lastLane(maxima);

    const U16s columnStart = tops & static_cast<uint16_t>(~kSubpixelMask);
    const U16s topFraction = tops - columnStart;
    for (int32_t s = 0; s < kMost; ++s) {
        bottoms[s] = larger(bottoms[s], past);
        const U16s bottomFraction = bottoms[s] - columnStart;
        const I16s staying = (I16s)(bottomFraction >> kSubpixelBits == 0) & signs[s];
        signSum += staying;
        fractionSum += staying * (I16s)(topFraction + bottomFraction);
        signs[s] ^= staying;
    }
    for (int32_t s = 0; s < kMost; s += 4) leaving.put(tops, bottoms + s, signs + s);
}

/// Holes with so many edges are rare, and not worth their registers.
template <class Rule>
[[gnu::noinline]] void takeFullHoles(const uint16_t* slots, int32_t stride, const U16s& counts,
                                     const U16s& tops, FromLeft& left, LeavingBoundaries& leaving,
                                     I16s& signSum, I16s& fractionSum) noexcept {
    if (!any((I16s)counts > 8)) {
        takeHoles<Rule, 8>(slots, stride, counts, tops, left, leaving, signSum, fractionSum);
    } else {
        takeHoles<Rule, 16>(slots, stride, counts, tops, left, leaving, signSum, fractionSum);
    }
}

/// The sums of all lanes of two vectors, of which that of `low` fits 16 bits, in the halves of a
/// word; the lower half, when negative, takes 1 from the upper.
QUOR_LANES_INLINE int32_t sumsOf(I16s low, I16s high) noexcept {
    const I32s lowPairs = ((I32s)((U32s)low << 16) >> 16) + ((I32s)low >> 16);
    const auto highPairs = (U32s)high + ((U32s)high >> 16);
    U32s sums = (U32s)lowPairs + (highPairs << 16);
#if defined(__AVX2__)
    sums += __builtin_shufflevector(sums, sums, 4, 5, 6, 7, 0, 1, 2, 3);
    sums += __builtin_shufflevector(sums, sums, 2, 3, 0, 1, 6, 7, 4, 5);
    sums += __builtin_shufflevector(sums, sums, 1, 0, 3, 2, 5, 4, 7, 6);
#else
    sums += __builtin_shufflevector(sums, sums, 2, 3, 0, 1);
    sums += __builtin_shufflevector(sums, sums, 1, 0, 3, 2);
#endif
    return static_cast<int32_t>(sums[0]);
}

/// A column of 32 holes.
template <class Rule>
inline void takeColumn(const DenseColumns& holes, int32_t column, FromLeft& left,
                       LeavingBoundaries& leaving, const BandCells& band) noexcept {
    I16s signSum = {}, fractionSum = {};
    for (int32_t l = 0; l < kSubpixels; l += kShorts) {
        const int32_t first = (column << kSubpixelBits) + l;
        uint8_t* const memory = holes.counts + first;
        const U16s counts = __builtin_convertvector(load<U8Half>(memory), U16s);
        store(memory, U8Half{});
        const U16s tops = (U16s)load<I16s>(kLaneIndices) + static_cast<uint16_t>(first);
        const uint16_t* const slots = holes.slots + first;
        const int32_t stride = holes.positions;
        if (!any((I16s)counts > 4)) {
            takeHoles<Rule, 4>(slots, stride, counts, tops, left, leaving, signSum, fractionSum);
        } else {
            takeFullHoles<Rule>(slots, stride, counts, tops, left, leaving, signSum, fractionSum);
        }
    }
    // At most 32 * 16 boundaries, each with up to 62 of f_a + f_b.
    const int32_t sums = sumsOf(fractionSum, signSum);
    const int32_t fractions = static_cast<int16_t>(sums);
    const auto boundaries = static_cast<uint32_t>(((sums - fractions) >> 16) * band.height);
    const uint32_t rest = static_cast<uint32_t>(fractions * band.height) << 19;
    const int32_t cell = band.rowStart + column;
    band.view.cells[cell] += (boundaries << 25) - rest;
    band.view.cells[cell + 1] += rest;
    band.view.touch(cell, cell + 1);
}

QUOR_LANES_INLINE bool isEmptyColumn(const uint8_t* counts) noexcept {
    U64s all = {};
    for (int32_t i = 0; i < kSubpixels; i += kVectorBytes) all |= load<U64s>(counts + i);
    return !any(all);
}

template <class Rule>
void takeColumns(const DenseColumns& holes, const BandCells& band) noexcept {
    constexpr int32_t kPutsOfColumn = kSubpixels / kShorts * DenseColumns::kSlots / 4;
    FromLeft left;
    LeavingBoundaries leaving;
    const int32_t columns = holes.positions >> kSubpixelBits;
    for (int32_t column = 0; column < columns; ++column) {
        if (isEmptyColumn(holes.counts + (column << kSubpixelBits))) continue;
        if (!leaving.hasRoomFor(kPutsOfColumn)) leaving.add(band);
        takeColumn<Rule>(holes, column, left, leaving, band);
    }
    leaving.add(band);
}

void addColumns(const DenseColumns& holes, FillRule rule, int32_t height, int32_t rowStart,
                const CellView& view) noexcept {
    const BandCells band = {height, rowStart, view};
    rule == FillRule::kNonZero ? takeColumns<NonZero>(holes, band)
                               : takeColumns<EvenOdd>(holes, band);
}

/// Moves edges down by `height`, all of one vector at a time.
bool passBand(const DenseEdges& edges, int32_t height) noexcept {
    constexpr uint32_t kFalls = 0x80000000U;
    U32s tooFar = {};
    for (int32_t i = 0; i < edges.count; i += kWords) {
        const auto from = load<U32s>(edges.place + i);
        const U32s to = from + load<U32s>(edges.slope + i) * static_cast<uint32_t>(height);
        store(edges.place + i, to);
        const U32s top = (from & ~kFalls) >> 15;
        const U32s bottom = (to & ~kFalls) >> 15;
        const U32s change = bottom - top + static_cast<uint32_t>(kKeyBias);
        tooFar |= change;
        store(edges.top + i, narrow((I32s)top));
        store(edges.key + i, narrow((I32s)((change << 1 & 0xFFFF) | from >> 31)));
    }
    return !any(tooFar & ~static_cast<uint32_t>(2 * kKeyBias - 1));
}

}  // namespace
}  // namespace vg::raster
