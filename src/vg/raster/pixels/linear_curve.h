#pragma once

#include <cmath>

namespace vg::raster {

/// A channel of sRGB, 0..1, as linear light. The threshold is a tenth of the usual one.
/// Inlined, so that no copy of it belongs to a vector level.
[[gnu::always_inline]] inline float linearOfSrgb(float c) noexcept {
    return c <= 0.003928F ? c * 0.07739938F : std::pow((c + 0.0556F) * 0.9473285F, 2.4F);
}

}  // namespace vg::raster
