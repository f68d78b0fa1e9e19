#pragma once

// Kernels: pixels of gradients, and rows of premultiplied pixels over others. Plain loops that the
// compiler turns into vectors; floats are computed in one order everywhere and never contracted.

#include <algorithm>
#include <cmath>

#include "vg/raster/gradient_runs.h"
#include "vg/raster/gradient_spreads.h"
#include "vg/raster/kernel_composite.h"

namespace vg::raster {
namespace {

/// Replaces entries of the ramp by its pixels.
inline void lookUp(const uint32_t* ramp, uint32_t* pixels, int32_t count) noexcept {
    constexpr int32_t kAtOnce = 8;
    int32_t i = 0;
    for (; i + kAtOnce <= count; i += kAtOnce) {
        uint32_t found[kAtOnce];
        for (int32_t k = 0; k < kAtOnce; ++k) found[k] = ramp[pixels[i + k]];
        std::memcpy(pixels + i, found, sizeof found);
    }
    for (; i < count; ++i) pixels[i] = ramp[pixels[i]];
}

template <class SpreadMode, class Integer>
void linearEntries(const LinearRun& run, int32_t count, uint32_t* out) noexcept {
    using Unsigned = std::make_unsigned_t<Integer>;  // the increment past the end may wrap
    const auto first = static_cast<Unsigned>(run.first);
    const auto step = static_cast<Unsigned>(run.step);
    for (int32_t i = 0; i < count; ++i) {
        const Unsigned parameter = first + static_cast<Unsigned>(i) * step;
        out[i] = SpreadMode::template entry<16>(static_cast<Integer>(parameter));
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

void linearPixels(const LinearRun& run, int32_t count, uint32_t* pixels) noexcept {
    const int64_t last = run.first + run.step * (count - 1);
    const bool isWithinShort = isShort(run.first) && isShort(last);
    bool isOneColor = false;
    withSpread(run.spread, [&](auto spread) {
        using SpreadMode = decltype(spread);
        isOneColor = isOneEntry<SpreadMode>(run, last);
        if (isOneColor) {
            std::fill_n(pixels, count, run.ramp[SpreadMode::template entry<16>(run.first)]);
        } else if (SpreadMode::kIsPeriodic || isWithinShort) {
            linearEntries<SpreadMode, int32_t>(run, count, pixels);
        } else {
            linearEntries<SpreadMode, int64_t>(run, count, pixels);
        }
    });
    if (!isOneColor) lookUp(run.ramp, pixels, count);
}

/// Truncated, after values below or above the limits, which are whole, have been moved there.
inline int32_t truncateWithin(float lowest, float highest, float value) noexcept {
    const float raised = value > lowest ? value : lowest;
    return static_cast<int32_t>(raised < highest ? raised : highest);
}

/// The entry of a parameter in 12.20 fixed point that is still a float.
template <class SpreadMode>
uint32_t entryOf(float parameter) noexcept {
    constexpr float kLastPadded = 0xFFFFF;
    constexpr float kLimit = 2147483520.0F;  // the largest float below 2^31
    return SpreadMode::template entry<20>(SpreadMode::kIsPeriodic
                                              ? truncateWithin(-kLimit, kLimit, parameter)
                                              : truncateWithin(0.0F, kLastPadded, parameter));
}

template <class SpreadMode>
void radialEntries(const RadialRun& run, int32_t count, uint32_t* out) noexcept {
    const RadialRun line = run;  // a copy, since `out` might hide it from the compiler
    for (int32_t i = 0; i < count; ++i) {
        const auto at = static_cast<float>(line.first + i);
        const float u = line.u.at(at);
        const float v = line.v.at(at);
        const float cross = line.cross.at(at);
        const float radicand = u * u + v * v - cross * cross;
        const float root = std::sqrt(radicand > 0.0F ? radicand : 0.0F);
        out[i] = entryOf<SpreadMode>((line.dot.at(at) + root) * line.scale);
    }
}

void radialPixels(const RadialRun& run, int32_t count, uint32_t* pixels) noexcept {
    withSpread(run.spread,
               [&](auto spread) { radialEntries<decltype(spread)>(run, count, pixels); });
    lookUp(run.ramp, pixels, count);
}

/// s + d (255 - a_s) / 255, rounded, in the lanes of two vectors.
QUOR_LANES_INLINE U32s over(U32s s, U32s d) noexcept {
    const U32s alpha = s >> 24;
    const U16s rest = 255 - (U16s)(alpha | alpha << 16);
    const U16s low = lowOf(d) * rest + 128;
    const U16s high = highOf(d) * rest + 128;
    const U32s scaledLow = (U32s)((low + (low >> 8)) >> 8);
    const U32s scaledHigh = (U32s)(high + (high >> 8)) & ~kLanes;
    return s + (scaledLow | scaledHigh);
}

/// Less than a vector of pixels.
inline void sourceOverPart(const uint32_t* source, uint32_t* pixels, int32_t count) noexcept {
    uint32_t s[kWords] = {}, d[kWords] = {};
    const size_t size = static_cast<size_t>(count) * sizeof(uint32_t);
    std::memcpy(s, source, size);
    std::memcpy(d, pixels, size);
    store(d, over(load<U32s>(s), load<U32s>(d)));
    std::memcpy(pixels, d, size);
}

/// The last vector as in run().
void sourceOver(const uint32_t* source, uint32_t* pixels, int32_t count) noexcept {
    if (count < kWords) return sourceOverPart(source, pixels, count);
    const int32_t last = count - kWords;
    const U32s lastPixels = over(load<U32s>(source + last), load<U32s>(pixels + last));
    for (int32_t i = 0; i < last; i += kWords) {
        store(pixels + i, over(load<U32s>(source + i), load<U32s>(pixels + i)));
    }
    store(pixels + last, lastPixels);
}

}  // namespace
}  // namespace vg::raster
