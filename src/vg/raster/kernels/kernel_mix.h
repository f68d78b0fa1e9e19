#pragma once

// Kernels: pixels of a paint composited onto those of a surface, both premultiplied, and the
// coverage that mixes them.

#include "vg/raster/kernels/kernel_composite.h"

namespace vg::raster {
namespace {

/// Takes `count` cells, a multiple of 8, before which they summed to `sum`.
uint32_t takeCoverage(uint32_t* cells, int32_t count, uint32_t sum, uint32_t* coverage) noexcept {
    U32s carry = U32s{} + sum;
    for (int32_t i = 0; i < count; i += kWords) {
        const U32s sums = runningSums(load<U32s>(cells + i)) + carry;
        store(cells + i, U32s{});
        store(coverage + i, coverageOfLanes(sums));
        carry = lastLane(sums);
    }
    return carry[0];
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

QUOR_LANES_INLINE U32s mixed(U32s s, U32s d, U32s coverage) noexcept {
    return mixHalves(d, lowOf(s), highOf(s), coverage);
}

/// Less than a vector of words, the others zero.
inline U32s loadPart(const uint32_t* words, int32_t count) noexcept {
    uint32_t part[kWords] = {};
    std::memcpy(part, words, static_cast<size_t>(count) * sizeof(uint32_t));
    return load<U32s>(part);
}

/// Stores blend(i, load) for all vectors of `count` pixels, i being a vector's first pixel and
/// load(words) loading its part of other words. The last vector overlaps the one before it, so it
/// is computed before anything is stored.
template <class Blend>
QUOR_LANES_INLINE void forEachVector(uint32_t* pixels, int32_t count, Blend&& blend) noexcept {
    if (count < kWords) {
        const auto loadFirst = [=](const uint32_t* words) { return loadPart(words, count); };
        const U32s blended = blend(loadFirst, 0);
        std::memcpy(pixels, &blended, static_cast<size_t>(count) * sizeof(uint32_t));
        return;
    }
    const auto loadAll = [](const uint32_t* words) { return load<U32s>(words); };
    const int32_t last = count - kWords;
    const U32s lastPixels = blend(loadAll, last);
    for (int32_t i = 0; i < last; i += kWords) store(pixels + i, blend(loadAll, i));
    store(pixels + last, lastPixels);
}

void sourceOver(const uint32_t* source, uint32_t* pixels, int32_t count) noexcept {
    forEachVector(pixels, count, [=](auto loadFrom, int32_t i) {
        return over(loadFrom(source + i), loadFrom(pixels + i));
    });
}

void mixSource(const uint32_t* source, const uint32_t* coverage, uint32_t* pixels,
               int32_t count) noexcept {
    forEachVector(pixels, count, [=](auto loadFrom, int32_t i) {
        return mixed(loadFrom(source + i), loadFrom(pixels + i), loadFrom(coverage + i));
    });
}

void mixSourceOver(const uint32_t* source, const uint32_t* coverage, uint32_t* pixels,
                   int32_t count) noexcept {
    forEachVector(pixels, count, [=](auto loadFrom, int32_t i) {
        const U32s d = loadFrom(pixels + i);
        return mixed(over(loadFrom(source + i), d), d, loadFrom(coverage + i));
    });
}

}  // namespace
}  // namespace vg::raster
