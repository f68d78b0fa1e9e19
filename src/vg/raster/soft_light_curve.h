#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace vg::raster {

inline constexpr int32_t kCurveBits = 7;  ///< fractional bits of softLightCurve

/// 2^15 times the square root of i / 1024, rounded down.
inline constexpr std::array<uint16_t, 1025> kRootTable = [] {
    std::array<uint16_t, 1025> roots{};
    uint32_t root = 0;
    for (uint64_t i = 0; i <= 1024; ++i) {
        while (uint64_t{root + 1} * (root + 1) <= i << 20) ++root;
        roots[i] = static_cast<uint16_t>(root);
    }
    return roots;
}();

/// a_d D(d / a_d) with kCurveBits fractional bits, where D(m) = ((16 m - 12) m + 4) m up to a
/// quarter and the square root of m from there. Precondition: 0 <= d <= alpha <= 255, alpha > 0.
constexpr int32_t softLightCurve(int32_t d, int32_t alpha) noexcept {
    if (4 * d <= alpha) {  // d (16 d^2 - 12 d a + 4 a^2) / a^2: below 2^31 with all bits
        const int32_t square = alpha * alpha;
        return d * ((16 * d * d - 12 * d * alpha + 4 * square) << kCurveBits) / square;
    }
    const int32_t m = (d * 1024 + alpha / 2) / alpha;
    return alpha * kRootTable[static_cast<size_t>(m)] >> (15 - kCurveBits);
}

}  // namespace vg::raster
