#pragma once

#include <cmath>

namespace vg::raster {

/// A channel of sRGB, 0..1, as linear light. The threshold, a tenth of that of
/// color_space_tables.h, is deliberate: colours that are computed in floats have always been
/// converted so, and their pixels are not to change. Always inlined, so that no copy of it belongs
/// to one vector level.
[[gnu::always_inline]] inline float linearOfSrgb(float c) noexcept {
    return c <= 0.003928F ? c * 0.07739938F : std::pow((c + 0.0556F) * 0.9473285F, 2.4F);
}

}  // namespace vg::raster
