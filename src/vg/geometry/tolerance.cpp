#include "vg/geometry/tolerance.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/finite.h"

namespace vg {

void FlatteningTolerance::set(float squaredDistance) noexcept {
    if (squared > 0.0F && squared == squaredDistance) return;
    squared = squaredDistance;
    radius = std::sqrt(squared);
    const float fourthRoot = std::sqrt(radius);
    threeOverRadius = 3.0F / radius;
    sixtyFourRadius = 64.0F * radius;
    minimumSubdivisions = 1 + static_cast<int32_t>(1.0F / (3.0F * std::sqrt(fourthRoot)));
}

float drawTolerance(float curvesTolerance, float scale, const StrokeTolerance* stroke) noexcept {
    float tolerance = curvesTolerance / (scale * scale);
    if (stroke != nullptr && stroke->halfWidth > 1.0F) {
        const auto side = static_cast<float>(std::min(stroke->boundsWidth, stroke->boundsHeight));
        if (side > base::kSmallestExtent) {
            const float k = stroke->halfWidth / side + 1.0F;
            tolerance *= stroke->isDashed ? 1.0F / (k * k) / stroke->halfWidth : 1.0F / (k * k);
        }
    }
    // Scales of 0 and of 1e30 end up here as infinity, 0 or NaN; all derived values stay finite.
    constexpr float kSmallest = std::numeric_limits<float>::min();
    if (!(tolerance > kSmallest)) return kSmallest;
    return std::min(tolerance, std::numeric_limits<float>::max());
}

}  // namespace vg
