#pragma once

#include <utility>

#include "api/packing/geometry.h"
#include "base/array.h"

namespace quor::packing {

/// A footprint of a size class with its top left corner in the bin's free area.
struct Placement {
    int sizeClass;
    int x;
    int y;
};

/// What one attempt put into one bin.
struct Fill {
    base::Array<Placement> placements;
    int64_t filledArea = 0;
    Size extent = {0, 0};  ///< of the placements, from the free area's corner

    void clear() noexcept {
        placements.clear();
        filledArea = 0;
        extent = {0, 0};
    }
    /// False when memory runs out.
    bool add(int sizeClass, int x, int y, const Size& size) noexcept {
        extent = {std::max(extent.width, x + size.width), std::max(extent.height, y + size.height)};
        filledArea += size.area();
        return placements.push({sizeClass, x, y});
    }
    /// Mirrors everything at the diagonal.
    void transpose() noexcept {
        extent = extent.transposed();
        for (Placement& placement : placements) std::swap(placement.x, placement.y);
    }
    void swap(Fill& other) noexcept {
        placements.swap(other.placements);
        std::swap(filledArea, other.filledArea);
        std::swap(extent, other.extent);
    }
};

}  // namespace quor::packing
