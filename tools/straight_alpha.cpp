#include "straight_alpha.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace tool {

namespace {

// Written so that compilers turn loops over it into vector code: no branch, no integer division.

/// channel * 255 / alpha, rounded to nearest: (255 channel + alpha / 2) / alpha, the halved alpha
/// whole. `half` is that half plus 0.5, which keeps quotients at least 0.5 / 255 away from whole
/// numbers, far more than the error of the reciprocal. A channel cannot exceed its alpha, but for
/// rounding.
std::uint32_t straightChannel(std::int32_t channel, std::int32_t alpha, float half,
                              float reciprocal) {
    const auto sum = static_cast<float>(std::min(channel, alpha) * 255) + half;
    return static_cast<std::uint32_t>(static_cast<std::int32_t>(sum * reciprocal));
}

inline std::uint32_t divide(std::uint32_t pixel) {
    const auto alpha = static_cast<std::int32_t>(pixel >> 24);
    const auto channel = [pixel](int shift) {
        return static_cast<std::int32_t>(pixel >> shift & 0xFF);
    };
    const float half = static_cast<float>(alpha >> 1) + 0.5f;
    const float reciprocal = 1.0f / static_cast<float>(alpha + (alpha == 0));
    return static_cast<std::uint32_t>(alpha) << 24 |
           straightChannel(channel(16), alpha, half, reciprocal) << 16 |
           straightChannel(channel(8), alpha, half, reciprocal) << 8 |
           straightChannel(channel(0), alpha, half, reciprocal);
}

/// Pixels that are looked at together: where all are opaque or transparent, as most are, nothing
/// has to be divided.
constexpr std::size_t kBlock = 32;

void straightenBlock(const std::uint32_t* pixels, std::size_t count, std::uint32_t* straight) {
    std::uint32_t all = ~0u;
    std::uint32_t any = 0;
    for (std::size_t i = 0; i < count; ++i) all &= pixels[i], any |= pixels[i];
    if (all >> 24 == 255)
        std::copy_n(pixels, count, straight);
    else if (any >> 24 == 0)
        std::fill_n(straight, count, 0u);
    else
        for (std::size_t i = 0; i < count; ++i) straight[i] = divide(pixels[i]);
}

/// The word whose bytes in memory are red, green, blue, alpha.
constexpr std::uint32_t rgbaWord(std::uint32_t pixel) {
    if constexpr (std::endian::native == std::endian::big) return pixel << 8 | pixel >> 24;
    return (pixel & 0xFF00FF00) | (pixel >> 16 & 0xFF) | (pixel & 0xFF) << 16;
}

void storeBytes(const std::uint32_t* pixels, std::size_t count, unsigned char* bytes) {
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t word = rgbaWord(pixels[i]);
        std::memcpy(bytes + i * 4, &word, 4);
    }
}

}  // namespace

void makeStraight(std::uint32_t* pixels, std::size_t count) {
    for (std::size_t i = 0; i < count; i += kBlock) {
        std::uint32_t straight[kBlock];
        const std::size_t size = std::min(kBlock, count - i);
        straightenBlock(pixels + i, size, straight);
        std::copy_n(straight, size, pixels + i);
    }
}

void storeRgba(const std::uint32_t* pixels, std::size_t count, AlphaKind alpha,
               unsigned char* bytes) {
    if (alpha == AlphaKind::kStraight) return storeBytes(pixels, count, bytes);
    for (std::size_t i = 0; i < count; i += kBlock) {
        std::uint32_t straight[kBlock];
        const std::size_t size = std::min(kBlock, count - i);
        straightenBlock(pixels + i, size, straight);
        storeBytes(straight, size, bytes + i * 4);
    }
}

}  // namespace tool
