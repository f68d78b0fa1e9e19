#pragma once

// What goes from lane to lane of a vector: sums and maxima from the left, and what a vector hands
// on to the next.

#include "vg/raster/kernels/lanes.h"

namespace vg::raster {

/// Adds to each lane all those before it.
QUOR_LANES_INLINE U32s runningSums(U32s v) noexcept {
#if defined(__AVX2__)
    v += (U32s)_mm256_slli_si256((__m256i)v, 4);  // each half by itself
    v += (U32s)_mm256_slli_si256((__m256i)v, 8);
    const __m256i lasts = _mm256_shuffle_epi32((__m256i)v, 0xFF);
    return v + (U32s)_mm256_permute2x128_si256(lasts, lasts, 0x08);  // the lower one to the upper
#else
    constexpr U32s kZero = {};
    v += __builtin_shufflevector(v, kZero, 4, 0, 1, 2);
    return v + __builtin_shufflevector(v, kZero, 4, 4, 0, 1);
#endif
}

/// The last lane in every lane.
QUOR_LANES_INLINE U32s lastLane(U32s v) noexcept {
#if defined(__AVX2__)
    return __builtin_shufflevector(v, v, 7, 7, 7, 7, 7, 7, 7, 7);
#else
    return __builtin_shufflevector(v, v, 3, 3, 3, 3);
#endif
}

/// Every lane takes the value `kBy` lanes before it, in either half of the vector by itself; the
/// first ones take 0.
template <int kBy>
QUOR_LANES_INLINE U16s shiftedInHalves(U16s v) noexcept {
#if defined(__AVX2__)
    return (U16s)_mm256_slli_si256((__m256i)v, kBy * 2);
#else
    constexpr U16s kZero = {};
    constexpr auto from = [](int l) { return l < kBy ? 8 : l - kBy; };
    return __builtin_shufflevector(v, kZero, from(0), from(1), from(2), from(3), from(4), from(5),
                                   from(6), from(7));
#endif
}

/// In the upper half of the vector the last lane of the lower one, 0 in the lower.
QUOR_LANES_INLINE U16s lastOfLowerHalf(U16s v) noexcept {
#if defined(__AVX2__)
    const __m256i last = _mm256_shuffle_epi8((__m256i)v, _mm256_set1_epi16(0x0F0E));
    return (U16s)_mm256_permute2x128_si256(last, last, 0x08);
#else
    return U16s{} & v;
#endif
}

/// The last lane in every lane.
QUOR_LANES_INLINE U16s lastLane(U16s v) noexcept {
#if defined(__AVX2__)
    const __m256i last = _mm256_shuffle_epi8((__m256i)v, _mm256_set1_epi16(0x0F0E));
    return (U16s)_mm256_permute4x64_epi64(last, 0xFF);
#else
    return __builtin_shufflevector(v, v, 7, 7, 7, 7, 7, 7, 7, 7);
#endif
}

/// Every lane takes the one before it; the first takes that of `before`, which is the same in all.
QUOR_LANES_INLINE U16s previousLanes(U16s v, U16s before) noexcept {
#if defined(__AVX2__)
    const __m256i middle = _mm256_permute2x128_si256((__m256i)before, (__m256i)v, 0x21);
    return (U16s)_mm256_alignr_epi8((__m256i)v, middle, 14);
#else
    return __builtin_shufflevector(v, before, 8, 0, 1, 2, 3, 4, 5, 6);
#endif
}

/// Adds to each lane all those before it.
QUOR_LANES_INLINE U16s sumsFromLeft(U16s v) noexcept {
    v += shiftedInHalves<1>(v);
    v += shiftedInHalves<2>(v);
    v += shiftedInHalves<4>(v);
    return v + lastOfLowerHalf(v);
}

QUOR_LANES_INLINE U16s maximaFromLeft(U16s v) noexcept {
    v = larger(v, shiftedInHalves<1>(v));
    v = larger(v, shiftedInHalves<2>(v));
    v = larger(v, shiftedInHalves<4>(v));
    return larger(v, lastOfLowerHalf(v));
}

}  // namespace vg::raster
