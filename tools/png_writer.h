#pragma once

#include <cstdint>
#include <string>

namespace tool {

/// Writes an 8-bit RGBA picture to a file, or to standard output for "-".
/// `pixels` are width * height words as a surface holds them, top row first: premultiplied, alpha
/// in bits 24 to 31, then red, green, blue; PNG stores straight alpha, so they are divided by it.
/// Throws FileError.
void writePng(const std::string& path, const std::uint32_t* pixels, std::uint32_t width,
              std::uint32_t height);

}  // namespace tool
