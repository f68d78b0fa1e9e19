#pragma once

#include <cstdint>

namespace quor {

/// Pixels to be copied: rows from the top down without padding.
struct PixelBlock {
    const uint32_t* pixels;
    int32_t width;
    int32_t height;
    uint32_t format;  ///< VGImageFormat code: which byte of a pixel is which channel
};

/// Copies to width * height words that do not overlap the source.
void copyPixels(const PixelBlock& source, uint32_t* destination) noexcept;

/// Copies, and gives every pixel inside the border whose alpha is 0 the average colour of those of
/// its eight neighbours in the source whose alpha is not 0; alpha stays 0. A pixel without such a
/// neighbour is copied. Blocks below 3 x 3 pixels have no inside.
void copyPixelsDilated(const PixelBlock& source, uint32_t* destination) noexcept;

}  // namespace quor
