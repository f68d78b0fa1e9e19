#pragma once

#include <cstdint>

namespace vg::raster {

/// How the colours of a ramp come about, and what surface it is for.
struct RampOptions {
    bool isMirrored = false;  ///< there and back: offsets 0 to 1 and on to 2
    bool isSmooth = false;    ///< a cubic Hermite spline through the stops
    bool interpolatesPremultiplied = false;
    bool isLinearSpace = false;             ///< the surface holds linear colours
    bool isPremultiplied = true;            ///< the pixels are
    const float* colorTransform = nullptr;  ///< four scales, four biases; null: none
};

/// One channel between two stops.
struct RampCurve {
    float start, end;
    float startSlope, endSlope;  ///< of the smooth ramp, over the whole distance
};

inline constexpr float kLastRampEntry = 1023.0F;

/// Some entries of a ramp that lie between two stops. Entry i is at i * span / kLastRampEntry.
struct RampRun {
    int32_t first, end;
    float span;
    float offset, distance;  ///< of the first stop; from there to the second, more than 0
    RampCurve channels[4];   ///< red, green, blue, alpha
};

}  // namespace vg::raster
