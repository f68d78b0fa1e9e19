#pragma once

#include <cstdint>

#include "vg/raster/kernels/gradient_runs.h"

namespace vg::raster {

/// A stop of a gradient: components 0..1, not premultiplied.
struct ColorStop {
    float offset;    ///< 0..1
    float color[4];  ///< red, green, blue, alpha

    bool operator==(const ColorStop&) const noexcept = default;
};

/// The pixels along a gradient, packed for the surface.
struct ColorRamp {
    static constexpr int32_t kSize = 1024;
    uint32_t pixels[kSize];
    uint32_t lastColor;  ///< the pixel of the last stop; a mirrored ramp has it in its middle
    bool isOpaque;       ///< every pixel is
};

/// Fills the ramp. No stops mean black at 0 and white at 1; others begin at offset 0, end at
/// offset 1, and offsets do not fall. False when memory runs out: the ramp is then not usable.
[[nodiscard]] bool buildColorRamp(const ColorStop* stops, int32_t count, const RampOptions& options,
                                  ColorRamp& ramp) noexcept;

}  // namespace vg::raster
