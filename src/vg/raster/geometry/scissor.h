#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/raster/geometry/polygon.h"

namespace vg::raster {

/// Pixels of a surface, x1 and y1 exclusive; never empty.
struct ScissorRect {
    uint16_t x0, y0, x1, y1;

    PixelRect pixels() const noexcept { return {x0, y0, x1, y1}; }
    bool operator==(const ScissorRect&) const noexcept = default;
};

/// The part of a surface that may be drawn on, as rectangles of which no two share a pixel.
///
/// The rectangles that are set are cut at each other's top and bottom into slabs; within a slab
/// their columns are united. Slabs of the same columns that touch become one. The result is in
/// order of rising y0, then x0, and has at most 1024 rectangles for each row of the surface.
class Scissor {
public:
    /// Takes `count` values, four to a rectangle: x, y, width, height in surface pixels, any
    /// integers; rectangles of no size are left out. False, with an empty scissor, when memory
    /// runs out.
    [[nodiscard]] bool rebuild(const int32_t* values, int32_t count, int32_t surfaceWidth,
                               int32_t surfaceHeight) noexcept;

    /// True when the rectangles are those of a surface of this size.
    bool isFor(int32_t surfaceWidth, int32_t surfaceHeight) const noexcept {
        return width_ == surfaceWidth && height_ == surfaceHeight;
    }

    const ScissorRect* begin() const noexcept { return rects_.begin(); }
    const ScissorRect* end() const noexcept { return rects_.end(); }

    void shrinkToFit() noexcept;

private:
    /// An event of the plane sweep: the bottom or the top of a rectangle.
    struct Border {
        uint16_t y, x0, x1;
        int16_t change;  ///< +1 at the bottom, -1 at the top

        bool operator<(const Border& other) const noexcept { return y < other.y; }
    };

    [[nodiscard]] bool collectBorders(const int32_t* values, int32_t count) noexcept;
    [[nodiscard]] bool addSlab(uint16_t y0, uint16_t y1) noexcept;
    /// Makes one of the last two slabs if they touch and have the same columns.
    void mergeSlabs(int32_t upper) noexcept;

    int32_t width_ = -1;  ///< of the surface
    int32_t height_ = -1;
    base::Array<ScissorRect> rects_;
    base::Array<Border> borders_;
    base::Array<int32_t> changes_;  ///< by column: how many rectangles begin less those that end
    int32_t slabBelow_ = 0;         ///< index in rects_ of the latest slab's first rectangle
};

}  // namespace vg::raster
