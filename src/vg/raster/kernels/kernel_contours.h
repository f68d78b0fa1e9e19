#pragma once

// Kernels: from the points of a contour to edges with slopes and directions.

#include <algorithm>

#include "vg/raster/coverage/chain_edge.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/kernels/lanes.h"

namespace vg::raster {
namespace {

inline void include(FixedBox& box, FixedPoint point) noexcept {
    box.minX = std::min<int32_t>(box.minX, point.x);
    box.minY = std::min<int32_t>(box.minY, point.y);
    box.maxX = std::max<int32_t>(box.maxX, point.x);
    box.maxY = std::max<int32_t>(box.maxY, point.y);
}

/// Minima and maxima of x and y, interleaved in 16-bit lanes. The last vector may overlap the one
/// before it.
FixedBox boxOf(const FixedPoint* points, int32_t count) noexcept {
    FixedPoint corners[2 * kWords];
    if (count >= kWords) {
        U16s least = load<U16s>(points), most = least;
        for (int32_t i = kWords; i < count; i += kWords) {
            const auto some = load<U16s>(points + std::min(i, count - kWords));
            least = smaller(least, some);
            most = larger(most, some);
        }
        store(corners, least);
        store(corners + kWords, most);
        points = corners;
        count = 2 * kWords;
    }
    FixedBox box = {points[0].x, points[0].y, points[0].x, points[0].y};
    for (int32_t i = 1; i < count; ++i) include(box, points[i]);
    return box;
}

using F64s = double __attribute__((vector_size(kVectorBytes)));
using I32Half = int32_t __attribute__((vector_size(kVectorBytes / 2)));

QUOR_LANES_INLINE I32Half quotients(I32Half dividend, I32Half divisor) noexcept {
    return __builtin_convertvector(
        __builtin_convertvector(dividend, F64s) / __builtin_convertvector(divisor, F64s), I32Half);
}

/// The truncated quotient of doubles is that of the integers: unless it is an integer, the exact
/// quotient is at least 1/65504 away from one, far more than the rounding of a double.
QUOR_LANES_INLINE I32s quotients(I32s dividend, I32s divisor) noexcept {
#if defined(__AVX2__)
    const auto low = quotients(__builtin_shufflevector(dividend, dividend, 0, 1, 2, 3),
                               __builtin_shufflevector(divisor, divisor, 0, 1, 2, 3));
    const auto high = quotients(__builtin_shufflevector(dividend, dividend, 4, 5, 6, 7),
                                __builtin_shufflevector(divisor, divisor, 4, 5, 6, 7));
    return __builtin_shufflevector(low, high, 0, 1, 2, 3, 4, 5, 6, 7);
#else
    const auto low = quotients(__builtin_shufflevector(dividend, dividend, 0, 1),
                               __builtin_shufflevector(divisor, divisor, 0, 1));
    const auto high = quotients(__builtin_shufflevector(dividend, dividend, 2, 3),
                                __builtin_shufflevector(divisor, divisor, 2, 3));
    return __builtin_shufflevector(low, high, 0, 1, 2, 3);
#endif
}

/// Index of the highest line at or below `y`.
inline int32_t bandBelow(const uint32_t* rowBits, const int32_t* rowIndices, int32_t y) noexcept {
    const int32_t row = y >> kSubpixelBits;
    const uint32_t above = rowBits[row] & ((1U << (kSubpixelMask - (y & kSubpixelMask))) - 1);
    return rowIndices[row] + __builtin_popcount(above);
}

/// Copies the points, with a copy of the last one in front, and looks up their bands.
inline void openContour(const FixedPoint* points, int32_t count, const LineIndex& lines,
                        FixedPoint* stepPoints, int32_t* stepBands) noexcept {
    const uint32_t* const rowBits = lines.rowBits;
    const int32_t* const rowIndices = lines.rowIndices;
    std::copy_n(points, count, stepPoints + 1);
    for (int32_t i = 0; i < count; ++i) {
        stepBands[i + 1] = bandBelow(rowBits, rowIndices, points[i].y);
    }
    stepPoints[0] = points[count - 1];
    stepBands[0] = stepBands[count];
}

static_assert(sizeof(ChainEdge) == 4 * sizeof(uint32_t) && ChainEdge::kSlack >= kWords);

/// Makes a vector of edges. Their directions go to the bits from `bit` on.
QUOR_LANES_INLINE void makeSomeEdges(const FixedPoint* points, const int32_t* bands, I32s originX,
                                     int32_t bit, EdgeDirections& directions,
                                     ChainEdge* edges) noexcept {
    constexpr uint32_t kLowHalf = 0xFFFF;
    const auto from = load<U32s>(points), to = load<U32s>(points + 1);
    const auto fromX = (I32s)(from & kLowHalf), toX = (I32s)(to & kLowHalf);
    const auto fromY = (I32s)(from >> 16), toY = (I32s)(to >> 16);
    const auto fromBand = load<I32s>(bands), toBand = load<I32s>(bands + 1);
    const I32s dy = fromY - toY;
    const I32s falls = dy > 0;
    // Of a horizontal edge nobody asks the slope; that of the others does not depend on the way
    // they run.
    const I32s slope = quotients((toX - fromX) * (1 << 15), dy - (dy == 0));
    storeTransposed((U32s)(choose(falls, fromX, toX) - originX), (U32s)larger(fromY, toY),
                    (U32s)slope, (U32s)larger(fromBand, toBand),
                    reinterpret_cast<uint32_t(*)[4]>(edges));
    directions.falling |= bitsOf(toBand > fromBand) << bit;
    directions.flat |= bitsOf(toBand == fromBand) << bit;
}

void makeEdges(const FixedPoint* points, int32_t count, const LineIndex& lines, int32_t originX,
               const ContourSteps& steps, ChainEdge* edges) noexcept {
    constexpr int32_t kBits = EdgeDirections::kCount;
    openContour(points, count, lines, steps.points, steps.bands);
    const I32s origin = I32s{} + originX;
    for (int32_t base = 0; base < count; base += kBits) {
        EdgeDirections directions = {0, 0};
        const int32_t end = std::min(base + kBits, count);
        for (int32_t i = base; i < end; i += kWords) {
            makeSomeEdges(steps.points + i, steps.bands + i, origin, i - base, directions,
                          edges + i);
        }
        steps.directions[base / kBits] = directions;
    }
}

}  // namespace
}  // namespace vg::raster
