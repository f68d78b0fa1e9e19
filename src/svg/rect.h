#pragma once

#include "base/finite.h"

namespace quor {

/// A rectangle with the normalised diagonal that SVG lengths refer to.
/// A record that was never set has the diagonal -1.
struct Rect {
    float x = 0.0F;
    float y = 0.0F;
    float width = 0.0F;
    float height = 0.0F;
    float diagonal = -1.0F;  ///< sqrt(width^2 + height^2) / sqrt(2)

    /// Negative sizes become 0.
    void set(float newX, float newY, float newWidth, float newHeight) noexcept;

    bool isSet() const noexcept { return diagonal >= 0.0F; }
    bool isDegenerate() const noexcept {
        return !(width > base::kSmallestExtent && height > base::kSmallestExtent);
    }
};

/// A bounding box; minX > maxX means empty.
struct Box {
    float minX = 0.0F;
    float minY = 0.0F;
    float maxX = -1.0F;
    float maxY = -1.0F;

    bool isEmpty() const noexcept { return !(minX <= maxX && minY <= maxY); }
    /// Grows to hold `other`, an empty one excepted.
    void unite(const Box& other) noexcept;
};

}  // namespace quor
