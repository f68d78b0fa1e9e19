#pragma once

#include <cstddef>
#include <cstdint>

namespace tool {

/// Divides the colours of premultiplied pixels (alpha in bits 24 to 31, then red, green, blue) by
/// their alpha, rounded to nearest; where that is 0 they become 0.
void makeStraight(std::uint32_t* pixels, std::size_t count);

/// Whether the colours of pixels are multiplied by their alpha, as those of a surface.
enum class AlphaKind { kPremultiplied, kStraight };

/// Stores pixels as bytes red, green, blue, alpha; alpha straight.
void storeRgba(const std::uint32_t* pixels, std::size_t count, AlphaKind alpha,
               unsigned char* bytes);

}  // namespace tool
