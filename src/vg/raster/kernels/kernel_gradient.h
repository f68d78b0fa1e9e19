#pragma once

// Kernels: pixels of gradients. Floats are computed in one order everywhere and never contracted.

#include <algorithm>

#include "vg/raster/kernels/gradient_runs.h"
#include "vg/raster/kernels/gradient_spreads.h"
#include "vg/raster/kernels/lanes.h"

namespace vg::raster {
namespace {

/// Stores pixelsAt(i), a vector that begins at pixel i, for all of `count` pixels. The last vector
/// overlaps the one before it.
template <class PixelsAt>
QUOR_LANES_INLINE void storePixels(uint32_t* pixels, int32_t count, PixelsAt&& pixelsAt) noexcept {
    if (count < kWords) {
        const U32s part = pixelsAt(0);
        std::memcpy(pixels, &part, static_cast<size_t>(count) * sizeof(uint32_t));
        return;
    }
    const int32_t last = count - kWords;
    for (int32_t i = 0; i < last; i += kWords) store(pixels + i, pixelsAt(i));
    store(pixels + last, pixelsAt(last));
}

/// The entries of parameters in fixed point, 1.0 being 2^kOneBits (SpreadPad::entry() and others).
template <class SpreadMode, int kOneBits>
QUOR_LANES_INLINE U32s entriesOf(I32s parameters) noexcept {
    constexpr int32_t kLast = (1 << kOneBits) - 1;
    if constexpr (std::is_same_v<SpreadMode, SpreadPad>) {
        return (U32s)smaller(larger(parameters, I32s{}), I32s{} + kLast) >> (kOneBits - 10);
    } else if constexpr (std::is_same_v<SpreadMode, SpreadRepeat>) {
        return ((U32s)parameters & kLast) >> (kOneBits - 10);
    } else {
        return entriesOf<SpreadRepeat, kOneBits>(parameters >> 1);
    }
}

inline bool isShort(int64_t value) noexcept { return value == static_cast<int32_t>(value); }

/// Across the direction of a gradient, and beyond the ends of a padded one, nothing changes.
template <class SpreadMode>
bool isOneEntry(const LinearRun& run, int64_t last) noexcept {
    if (run.step == 0) return true;
    return !SpreadMode::kIsPeriodic &&
           SpreadMode::template entry<16>(run.first) == SpreadMode::template entry<16>(last);
}

template <class SpreadMode>
void linearRun(const LinearRun& run, int32_t count, uint32_t* pixels) noexcept {
    const uint32_t* const ramp = run.ramp;
    const int64_t last = run.first + run.step * (count - 1);
    if (isOneEntry<SpreadMode>(run, last)) {
        const U32s color = U32s{} + ramp[SpreadMode::template entry<16>(run.first)];
        storePixels(pixels, count, [=](int32_t) { return color; });
    } else if (SpreadMode::kIsPeriodic || (isShort(run.first) && isShort(last))) {
        // The low 32 bits decide; lanes past the end may wrap.
        const auto first = static_cast<uint32_t>(run.first);
        const auto step = static_cast<uint32_t>(run.step);
        const U32s lanes = (U32s)kLaneNumbers * step;
        storePixels(pixels, count, [=](int32_t i) {
            const U32s parameters = lanes + (first + static_cast<uint32_t>(i) * step);
            return lookUp(ramp, entriesOf<SpreadMode, 16>((I32s)parameters));
        });
    } else {
        for (int32_t i = 0; i < count; ++i) {
            pixels[i] = ramp[SpreadMode::template entry<16>(run.first + run.step * i)];
        }
    }
}

void linearPixels(const LinearRun& run, int32_t count, uint32_t* pixels) noexcept {
    withSpread(run.spread, [&](auto spread) { linearRun<decltype(spread)>(run, count, pixels); });
}

/// Truncated, after values below or above the limits, which are whole, have been moved there.
QUOR_LANES_INLINE I32s truncateWithin(float lowest, float highest, F32s values) noexcept {
    const F32s raised = larger(values, F32s{} + lowest);
    return __builtin_convertvector(smaller(raised, F32s{} + highest), I32s);
}

/// The entries of parameters in 12.20 fixed point that are still floats.
template <class SpreadMode>
QUOR_LANES_INLINE U32s entriesOf(F32s parameters) noexcept {
    constexpr float kLastPadded = 0xFFFFF;
    constexpr float kLimit = 2147483520.0F;  // the largest float below 2^31
    if constexpr (SpreadMode::kIsPeriodic) {
        return entriesOf<SpreadMode, 20>(truncateWithin(-kLimit, kLimit, parameters));
    } else {
        return (U32s)truncateWithin(0.0F, kLastPadded, parameters) >> 10;
    }
}

QUOR_LANES_INLINE F32s valuesOf(const RowLine& line, F32s at) noexcept {
    return line.start + at * line.step;
}

/// With the focus in the centre, `dot` and `cross` are 0 everywhere, and adding them does nothing.
template <class SpreadMode, bool kIsCentred>
void radialRun(const RadialRun& run, int32_t count, uint32_t* pixels) noexcept {
    const RadialRun line = run;  // a copy, since `pixels` might hide it from the compiler
    storePixels(pixels, count, [&](int32_t i) {
        const F32s at = __builtin_convertvector(kLaneNumbers + (line.first + i), F32s);
        const F32s u = valuesOf(line.u, at);
        const F32s v = valuesOf(line.v, at);
        const F32s squares = u * u + v * v;
        if constexpr (kIsCentred) {
            return lookUp(line.ramp, entriesOf<SpreadMode>(squareRoots(squares) * line.scale));
        }
        const F32s cross = valuesOf(line.cross, at);
        const F32s root = squareRoots(larger(squares - cross * cross, F32s{}));
        const F32s parameters = (valuesOf(line.dot, at) + root) * line.scale;
        return lookUp(line.ramp, entriesOf<SpreadMode>(parameters));
    });
}

constexpr bool isZero(const RowLine& line) noexcept {
    return line.start == 0.0F && line.step == 0.0F;
}

void radialPixels(const RadialRun& run, int32_t count, uint32_t* pixels) noexcept {
    const bool isCentred = isZero(run.dot) && isZero(run.cross);
    withSpread(run.spread, [&](auto spread) {
        using SpreadMode = decltype(spread);
        isCentred ? radialRun<SpreadMode, true>(run, count, pixels)
                  : radialRun<SpreadMode, false>(run, count, pixels);
    });
}

}  // namespace
}  // namespace vg::raster
