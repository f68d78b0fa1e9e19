#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tool {

/// Pixels as places in a list of their colours.
struct IndexedPicture {
    std::vector<std::uint32_t> colors;   ///< 1 to 256
    std::vector<unsigned char> indices;  ///< one a pixel
};

/// Nothing when the pixels have more than 256 colours. Drawings in one colour have no more: their
/// edges differ in alpha only.
std::optional<IndexedPicture> indexColors(const std::uint32_t* pixels, std::size_t count);

}  // namespace tool
