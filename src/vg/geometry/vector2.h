#pragma once

#include <cmath>
#include <limits>

#include "vg/raster/geometry/polygon.h"

namespace vg {

/// A point or a direction of the plane. Geometry is computed in double: products of any finite
/// floats stay finite, and points are rounded to float once, at the very end.
struct Vector2 {
    double x = 0.0;
    double y = 0.0;

    friend bool operator==(Vector2 a, Vector2 b) noexcept { return a.x == b.x && a.y == b.y; }
    friend Vector2 operator+(Vector2 a, Vector2 b) noexcept { return {a.x + b.x, a.y + b.y}; }
    friend Vector2 operator-(Vector2 a, Vector2 b) noexcept { return {a.x - b.x, a.y - b.y}; }
    friend Vector2 operator*(Vector2 a, double factor) noexcept {
        return {a.x * factor, a.y * factor};
    }
};

inline double dot(Vector2 a, Vector2 b) noexcept { return a.x * b.x + a.y * b.y; }
inline double cross(Vector2 a, Vector2 b) noexcept { return a.x * b.y - a.y * b.x; }
inline double lengthOf(Vector2 a) noexcept { return std::sqrt(dot(a, a)); }

/// The direction turned by a quarter turn, from +x towards +y.
inline Vector2 perpendicular(Vector2 a) noexcept { return {-a.y, a.x}; }

/// True when both coordinates are numbers that a float can hold.
inline bool fitsFloat(Vector2 a) noexcept {
    constexpr double kLargest = std::numeric_limits<float>::max();
    return std::fabs(a.x) <= kLargest && std::fabs(a.y) <= kLargest;
}

inline raster::Point toPoint(Vector2 a) noexcept {
    return {static_cast<float>(a.x), static_cast<float>(a.y)};
}

}  // namespace vg
