#pragma once

#include <cstdint>

namespace vg::raster {

// SIMD within a register: two 8-bit channels at a time, in bits 0-7 and 16-23 of a word, with room
// for a product each.

inline constexpr uint32_t kLanes = 0x00FF00FF;

constexpr uint32_t alphaOf(uint32_t pixel) noexcept { return pixel >> 24; }

/// Two products (0..255 * 255) divided by 255, rounded: x + 128, plus that over 256, over 256 (J.
/// Blinn, "Three wrongs make a right", 1995).
constexpr uint32_t divideLanes255(uint32_t products) noexcept {
    const uint32_t sum = products + 0x00800080;
    return ((sum + ((sum >> 8) & kLanes)) >> 8) & kLanes;
}

/// Both channels times `factor` (0..255) divided by 255, rounded.
constexpr uint32_t scaleLanes255(uint32_t lanes, uint32_t factor) noexcept {
    return divideLanes255(lanes * factor);
}

/// All four channels times `factor` / 255, rounded.
constexpr uint32_t scale255(uint32_t pixel, uint32_t factor) noexcept {
    return scaleLanes255(pixel & kLanes, factor) | scaleLanes255((pixel >> 8) & kLanes, factor)
                                                       << 8;
}

/// d + ((s - d) * coverage >> 8) in every channel, rounded down; coverage 0..256.
/// Written as (d (256 - coverage) + s coverage) >> 8, which is the same and never negative.
constexpr uint32_t mix(uint32_t d, uint32_t s, uint32_t coverage) noexcept {
    const uint32_t rest = 256 - coverage;
    const uint32_t low = ((d & kLanes) * rest + (s & kLanes) * coverage) >> 8;
    const uint32_t high = ((d >> 8) & kLanes) * rest + ((s >> 8) & kLanes) * coverage;
    return (low & kLanes) | (high & ~kLanes);
}

}  // namespace vg::raster
