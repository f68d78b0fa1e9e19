#pragma once

#include <cstdint>

namespace tool {

/// A part of a document, in its units; width and height are above 0.
struct Region {
    float x, y, width, height;
};

/// Pixels; x1 and y1 are beyond the last ones.
struct PixelBox {
    std::uint32_t x0, y0, x1, y1;

    std::uint32_t width() const { return x1 - x0; }
    std::uint32_t height() const { return y1 - y0; }
};

}  // namespace tool
