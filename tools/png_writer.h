#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tool {

/// Divides the colours of premultiplied pixels (alpha in bits 24 to 31, then red, green, blue) by
/// their alpha; where that is 0 they become 0.
void makeStraight(std::uint32_t* pixels, std::size_t count);

/// Whether the colours of pixels are multiplied by their alpha, as those of a surface.
enum class AlphaKind { kPremultiplied, kStraight };

/// Writes an 8-bit RGBA picture to a file, or to standard output for "-".
/// `pixels` are width * height words, top row first, alpha in bits 24 to 31, then red, green, blue.
/// PNG stores straight alpha: premultiplied ones are divided by it. Throws FileError.
void writePng(const std::string& path, const std::uint32_t* pixels, std::uint32_t width,
              std::uint32_t height, AlphaKind alpha = AlphaKind::kPremultiplied);

}  // namespace tool
