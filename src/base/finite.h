#pragma once

#include <cmath>
#include <limits>

namespace base {

/// NaN becomes 0, the infinities become the largest finite floats, all else stays.
/// Every float that enters the library or the engine passes through here once.
inline float finite(float value) noexcept {
    if (std::isnan(value)) return 0.0F;
    if (std::isinf(value)) {
        return value > 0.0F ? std::numeric_limits<float>::max()
                            : std::numeric_limits<float>::lowest();
    }
    return value;
}

/// The smallest size, scale or length that still counts as something (2^-23).
inline constexpr float kSmallestExtent = 1.1920929e-7F;

}  // namespace base
