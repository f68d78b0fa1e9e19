#include "vg/raster/coverage/trapezoid.h"

#include <array>
#include <cassert>
#include <utility>

#include "vg/raster/geometry/fixed.h"

// The exact area that one edge covers in each column that it passes, as differences from column to
// column: the accumulation buffer of signed areas (R. Levien, "Inside the fastest font renderer in
// the world", 2016), here in integers.
//
// An edge from x_a to x_b (x_a <= x_b) over a band of height h covers, to its right, a trapezoid
// in every column that it passes. With s = h 2^19 / (x_b - x_a), the triangle in its first column
// is (32 - f_a)^2 s, and the columns after it follow by the same squares.
//
//        x_a
//     ----+-----------+-----------+------
//         |\          |           |            columns  p_a   ...   p_b
//         |   \       |           |            fractions f_a = x_a & 31, f_b = x_b & 31
//         |      \    |           |
//     ----+---------\-+-----------+------
//                    x_b
//
// 2^30 is one pixel. Unsigned arithmetic wraps. Divisions truncate; what they leave over goes to
// the last column but one, so that the amounts of an edge always sum to h 2^25.

namespace vg::raster {
namespace {

constexpr uint32_t kReciprocalBits = 19;
constexpr uint32_t kReciprocalCount = 2048;
constexpr uint32_t kShortCount = 64;

struct Reciprocal {
    uint32_t quotient;   ///< floor(2^19 / d)
    uint32_t remainder;  ///< (2^19 mod d) * 64
};

constexpr auto kReciprocals = [] {
    std::array<Reciprocal, kReciprocalCount> table{};
    for (uint32_t d = 1; d < kReciprocalCount; ++d) {
        table[d] = {(1U << kReciprocalBits) / d, (1U << kReciprocalBits) % d * 64};
    }
    return table;
}();

constexpr auto kShortReciprocals = [] {
    std::array<uint32_t, kShortCount> table{};
    for (uint32_t n = 1; n < kShortCount; ++n) table[n] = (1U << kReciprocalBits) / n;
    return table;
}();

/// s and its remainder r (times 64) for a band of height h and an edge d wide.
Reciprocal scaledReciprocal(uint32_t height, uint32_t d) noexcept {
    if (d < kReciprocalCount) {
        return {kReciprocals[d].quotient * height, kReciprocals[d].remainder * height};
    }
    const uint32_t dividend = height << kReciprocalBits;
    return {dividend / d, dividend % d * 64};
}

/// r / n. The product fits 32 bits, since r / 32 is at most 2048 (n + 3).
uint32_t shareOf(uint32_t remainder, uint32_t n) noexcept {
    return n < kShortCount ? (kShortReciprocals[n] * (remainder >> 5)) >> 14 : remainder / n;
}

struct Add {
    static void to(uint32_t& cell, uint32_t amount) noexcept { cell += amount; }
};
struct Subtract {
    static void to(uint32_t& cell, uint32_t amount) noexcept { cell -= amount; }
};

template <class Sign>
void accumulateOneColumn(uint32_t* cell, uint32_t fa, uint32_t fb, uint32_t height) noexcept {
    const uint32_t right = (fa + fb) * height << 19;
    Sign::to(cell[0], (height << 25) - right);
    Sign::to(cell[1], right);
}

template <class Sign>
void accumulateTwoColumns(uint32_t* cell, uint32_t fa, uint32_t fb, uint32_t height,
                          uint32_t s) noexcept {
    const uint32_t first = (32 - fa) * (32 - fa) * s;
    const uint32_t last = fb * fb * s;
    Sign::to(cell[0], first);
    Sign::to(cell[1], (height << 25) - last - first);
    Sign::to(cell[2], last);
}

/// `n` columns lie strictly between the second and the last. What the truncated s leaves over
/// (r in all) is spread over them, the rest of it goes to the last.
template <class Sign>
void accumulateManyColumns(uint32_t* cell, uint32_t fa, uint32_t fb, uint32_t n,
                           const Reciprocal& s) noexcept {
    const uint32_t share = n > 0 ? shareOf(s.remainder, n) : 0;
    Sign::to(cell[0], (32 - fa) * (32 - fa) * s.quotient);
    Sign::to(cell[1], (2048 - fa * fa) * s.quotient);
    for (uint32_t i = 0; i < n; ++i) Sign::to(cell[2 + i], (s.quotient << 11) + share);
    Sign::to(cell[n + 2], (2048 - (32 - fb) * (32 - fb)) * s.quotient + (s.remainder - n * share));
    Sign::to(cell[n + 3], fb * fb * s.quotient);
}

template <class Sign>
void accumulate(uint32_t* cells, int32_t xa, int32_t xb, uint32_t height) noexcept {
    assert(xa >= 0 && xb >= 0 && 1 <= height && height <= kSubpixels);
    if (xa > xb) std::swap(xa, xb);
    uint32_t* cell = cells + pixelOf(xa);
    const auto fa = static_cast<uint32_t>(fractionOf(xa));
    const auto fb = static_cast<uint32_t>(fractionOf(xb));
    const auto columns = static_cast<uint32_t>(pixelOf(xb) - pixelOf(xa));
    if (columns == 0) return accumulateOneColumn<Sign>(cell, fa, fb, height);
    const Reciprocal s = scaledReciprocal(height, static_cast<uint32_t>(xb - xa));
    if (columns == 1) return accumulateTwoColumns<Sign>(cell, fa, fb, height, s.quotient);
    accumulateManyColumns<Sign>(cell, fa, fb, columns - 2, s);
}

}  // namespace

void addTrapezoid(uint32_t* cells, int32_t xTop, int32_t xBottom, uint32_t height) noexcept {
    accumulate<Add>(cells, xTop, xBottom, height);
}

void subtractTrapezoid(uint32_t* cells, int32_t xTop, int32_t xBottom, uint32_t height) noexcept {
    accumulate<Subtract>(cells, xTop, xBottom, height);
}

}  // namespace vg::raster
