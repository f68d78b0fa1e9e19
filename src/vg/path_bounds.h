#pragma once

#include <algorithm>
#include <limits>

#include "vg/affine_map.h"
#include "vg/path.h"
#include "vg/vector2.h"

namespace vg {

/// A box that grows; empty until its first point.
struct Bounds {
    Vector2 low{kInfinity, kInfinity};
    Vector2 high{-kInfinity, -kInfinity};

    static constexpr double kInfinity = std::numeric_limits<double>::infinity();

    bool isEmpty() const noexcept { return low.x > high.x; }
    bool contains(Vector2 a) const noexcept {
        return low.x <= a.x && a.x <= high.x && low.y <= a.y && a.y <= high.y;
    }
    void include(Vector2 a) noexcept {
        low = {std::min(low.x, a.x), std::min(low.y, a.y)};
        high = {std::max(high.x, a.x), std::max(high.y, a.y)};
    }
};

/// The tight box of the image of a path: end points and the extremes of curves and arcs. Moves
/// count only where something is drawn from them, or when the path draws nothing at all.
Bounds boundsOf(const Path& path, const AffineMap& map) noexcept;

}  // namespace vg
