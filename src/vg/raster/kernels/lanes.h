#pragma once

// SIMD lanes in the compiler's vector extension: written once, turned into whatever instructions a
// file is compiled for. Everything here has internal linkage and is inlined, because files of
// different levels include it. Vectors are passed one by one: compilers move a structure of them in
// halves through memory, and a wider load then waits for both stores (no store forwarding).
// Comparisons give lanes of all ones or zero.

#include <cmath>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <immintrin.h>
#endif

// Compiled with -Wno-psabi: no function that passes vectors is left after inlining.
#define QUOR_LANES_INLINE [[gnu::always_inline]] static inline

namespace vg::raster {

// A vector is as wide as the registers: compilers split wider ones badly.
#if defined(__AVX2__)
constexpr int kVectorBytes = 32;
#else
constexpr int kVectorBytes = 16;
#endif
constexpr int kShorts = kVectorBytes / 2;  ///< 16-bit lanes of a vector
constexpr int kWords = kVectorBytes / 4;   ///< 32-bit lanes of a vector

using U16s = uint16_t __attribute__((vector_size(kVectorBytes)));
using I16s = int16_t __attribute__((vector_size(kVectorBytes)));
using U32s = uint32_t __attribute__((vector_size(kVectorBytes)));
using I32s = int32_t __attribute__((vector_size(kVectorBytes)));
using F32s = float __attribute__((vector_size(kVectorBytes)));
using U64s = uint64_t __attribute__((vector_size(kVectorBytes)));

/// As many 16-bit lanes as a vector has of 32 bits.
using U16Half = uint16_t __attribute__((vector_size(kVectorBytes / 2)));
using I16Half = int16_t __attribute__((vector_size(kVectorBytes / 2)));

using U32x2 = uint32_t __attribute__((vector_size(8)));
using U32x4 = uint32_t __attribute__((vector_size(16)));

#if defined(__AVX2__)
constexpr I32s kLaneNumbers = {0, 1, 2, 3, 4, 5, 6, 7};
#else
constexpr I32s kLaneNumbers = {0, 1, 2, 3};
#endif

template <class V>
QUOR_LANES_INLINE V load(const void* memory) noexcept {
    V v;
    std::memcpy(&v, memory, sizeof v);
    return v;
}

template <class V>
QUOR_LANES_INLINE void store(void* memory, V v) noexcept {
    std::memcpy(memory, &v, sizeof v);
}

/// True when any bit of any lane is set.
template <class V>
QUOR_LANES_INLINE bool any(V v) noexcept {
    const auto words = (U64s)v;
#if defined(__AVX2__)
    return _mm256_testz_si256((__m256i)words, (__m256i)words) == 0;
#elif defined(__SSE4_1__)
    return _mm_testz_si128((__m128i)words, (__m128i)words) == 0;
#else
    return (words[0] | words[1]) != 0;
#endif
}

/// Bit l is set when lane l of a comparison is.
QUOR_LANES_INLINE uint32_t bitsOf(I32s mask) noexcept {
#if defined(__AVX2__)
    return static_cast<uint32_t>(_mm256_movemask_ps((__m256)mask));
#elif defined(__SSE4_1__)
    return static_cast<uint32_t>(_mm_movemask_ps((__m128)mask));
#else
    constexpr I32s kBits = {1, 2, 4, 8};
    const auto pairs = (U64s)(mask & kBits);
    const uint64_t bits = pairs[0] | pairs[1];
    return static_cast<uint32_t>(bits | bits >> 32);
#endif
}

/// Gather: the entries of a table at the lanes' indices.
QUOR_LANES_INLINE U32s lookUp(const uint32_t* table, U32s entries) noexcept {
#if defined(__AVX2__)
    return (U32s)_mm256_i32gather_epi32(reinterpret_cast<const int*>(table), (__m256i)entries, 4);
#else
    return U32s{table[entries[0]], table[entries[1]], table[entries[2]], table[entries[3]]};
#endif
}

QUOR_LANES_INLINE F32s squareRoots(F32s v) noexcept {
#if defined(__AVX2__)
    return (F32s)_mm256_sqrt_ps((__m256)v);
#elif defined(__SSE2__)
    return (F32s)_mm_sqrt_ps((__m128)v);
#else
    for (int l = 0; l < kWords; ++l) v[l] = std::sqrt(v[l]);
    return v;
#endif
}

/// Stores the transpose: lane l of all four vectors to lanes[l].
QUOR_LANES_INLINE void storeTransposed(U32s a, U32s b, U32s c, U32s d,
                                       uint32_t (*lanes)[4]) noexcept {
#if defined(__AVX2__)
    const U32s lowAb = __builtin_shufflevector(a, b, 0, 8, 1, 9, 4, 12, 5, 13);
    const U32s highAb = __builtin_shufflevector(a, b, 2, 10, 3, 11, 6, 14, 7, 15);
    const U32s lowCd = __builtin_shufflevector(c, d, 0, 8, 1, 9, 4, 12, 5, 13);
    const U32s highCd = __builtin_shufflevector(c, d, 2, 10, 3, 11, 6, 14, 7, 15);
    store(lanes[0], __builtin_shufflevector(lowAb, lowCd, 0, 1, 8, 9, 2, 3, 10, 11));
    store(lanes[2], __builtin_shufflevector(highAb, highCd, 0, 1, 8, 9, 2, 3, 10, 11));
    store(lanes[4], __builtin_shufflevector(lowAb, lowCd, 4, 5, 12, 13, 6, 7, 14, 15));
    store(lanes[6], __builtin_shufflevector(highAb, highCd, 4, 5, 12, 13, 6, 7, 14, 15));
#else
    const U32s lowAb = __builtin_shufflevector(a, b, 0, 4, 1, 5);
    const U32s highAb = __builtin_shufflevector(a, b, 2, 6, 3, 7);
    const U32s lowCd = __builtin_shufflevector(c, d, 0, 4, 1, 5);
    const U32s highCd = __builtin_shufflevector(c, d, 2, 6, 3, 7);
    store(lanes[0], __builtin_shufflevector(lowAb, lowCd, 0, 1, 4, 5));
    store(lanes[1], __builtin_shufflevector(lowAb, lowCd, 2, 3, 6, 7));
    store(lanes[2], __builtin_shufflevector(highAb, highCd, 0, 1, 4, 5));
    store(lanes[3], __builtin_shufflevector(highAb, highCd, 2, 3, 6, 7));
#endif
}

/// Stores lane l of both vectors to lanes[l].
QUOR_LANES_INLINE void storeInterleaved(U32s a, U32s b, uint32_t (*lanes)[2]) noexcept {
#if defined(__AVX2__)
    store(lanes[0], __builtin_shufflevector(a, b, 0, 8, 1, 9, 2, 10, 3, 11));
    store(lanes[4], __builtin_shufflevector(a, b, 4, 12, 5, 13, 6, 14, 7, 15));
#else
    store(lanes[0], __builtin_shufflevector(a, b, 0, 4, 1, 5));
    store(lanes[2], __builtin_shufflevector(a, b, 2, 6, 3, 7));
#endif
}

/// 16-bit lanes in memory as 32-bit ones, and back without their upper halves.
QUOR_LANES_INLINE I32s widen(I16Half v) noexcept {
#if defined(__AVX2__)
    return (I32s)_mm256_cvtepi16_epi32((__m128i)v);
#else
    return __builtin_convertvector(v, I32s);
#endif
}
QUOR_LANES_INLINE I32s widen(U16Half v) noexcept {
#if defined(__AVX2__)
    return (I32s)_mm256_cvtepu16_epi32((__m128i)v);
#else
    return __builtin_convertvector(v, I32s);
#endif
}
QUOR_LANES_INLINE I32s widen(const uint16_t* memory) noexcept {
    return widen(load<U16Half>(memory));
}
QUOR_LANES_INLINE I32s widen(const int16_t* memory) noexcept {
    return widen(load<I16Half>(memory));
}
QUOR_LANES_INLINE U16Half narrow(I32s v) noexcept {
    return __builtin_convertvector((U32s)v, U16Half);
}

/// a where the mask is set, else b.
template <class M, class V>
QUOR_LANES_INLINE V choose(M mask, V a, V b) noexcept {
    return (((V)mask & a) | (~(V)mask & b));
}

/// The minimum; b where a or b is NaN.
template <class V>
QUOR_LANES_INLINE V smaller(V a, V b) noexcept {
    return a < b ? a : b;
}

template <class V>
QUOR_LANES_INLINE V larger(V a, V b) noexcept {
    return a > b ? a : b;
}

#if defined(__AVX2__)  // which compilers do not recognise in a comparison of floats
QUOR_LANES_INLINE F32s smaller(F32s a, F32s b) noexcept {
    return (F32s)_mm256_min_ps((__m256)a, (__m256)b);
}
QUOR_LANES_INLINE F32s larger(F32s a, F32s b) noexcept {
    return (F32s)_mm256_max_ps((__m256)a, (__m256)b);
}
#elif defined(__SSE2__)
QUOR_LANES_INLINE F32s smaller(F32s a, F32s b) noexcept {
    return (F32s)_mm_min_ps((__m128)a, (__m128)b);
}
QUOR_LANES_INLINE F32s larger(F32s a, F32s b) noexcept {
    return (F32s)_mm_max_ps((__m128)a, (__m128)b);
}
#endif

/// The inclusive prefix sum: adds to each lane all those before it, in log2(lanes) steps (Hillis
/// and Steele, "Data parallel algorithms", 1986).
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

}  // namespace vg::raster
