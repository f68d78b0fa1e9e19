#pragma once

#include <algorithm>
#include <limits>

#include "vg/geometry/vector2.h"

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

}  // namespace vg
