#pragma once

#include <algorithm>
#include <cstdint>

namespace quor::packing {

/// The largest side of a bin, in pixels; footprints and areas stay below its next power of two.
inline constexpr int kMaxSide = 2048;

/// Pixels. The packer works with footprints: the rectangle with a border at its right and bottom.
struct Size {
    int width;
    int height;

    int64_t area() const noexcept { return int64_t{width} * height; }
    int longerSide() const noexcept { return std::max(width, height); }
    Size transposed() const noexcept { return {height, width}; }
    bool fitsIn(const Size& other) const noexcept {
        return width <= other.width && height <= other.height;
    }
    bool operator==(const Size&) const noexcept = default;
};

/// The three orders in which rectangles are taken, each descending.
enum class Heuristic : uint8_t { kWidth = 0, kHeight = 1, kLongerSide = 2 };
inline constexpr int kHeuristicCount = 3;

/// What the heuristic sorts by.
inline int sortKey(Heuristic heuristic, const Size& size) noexcept {
    switch (heuristic) {
        case Heuristic::kWidth:
            return size.width;
        case Heuristic::kHeight:
            return size.height;
        case Heuristic::kLongerSide:
            break;
    }
    return size.longerSide();
}

/// What bins may be like.
struct BinRules {
    int maxDimension = kMaxSide;  ///< pixels a side at most, borders included
    int border = 0;               ///< pixels between rectangles and along the bin's edges
    bool isPowerOfTwo = false;    ///< sides are powers of two

    /// The largest side of a rectangle.
    int usableDimension() const noexcept { return maxDimension - 2 * border; }

    Size footprint(const Size& size) const noexcept {
        return {size.width + border, size.height + border};
    }
    /// The free area for footprints of a bin: its first border is not part of it.
    Size freeArea(const Size& bin) const noexcept {
        return {bin.width - border, bin.height - border};
    }
    /// The smallest bin whose free area holds `extent`.
    Size binFor(const Size& extent) const noexcept;
};

}  // namespace quor::packing
