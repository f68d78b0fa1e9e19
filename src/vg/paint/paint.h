#pragma once

#include "vg/object_handles.h"
#include "vg/paint/ramp_cache.h"
#include "vg/paint/ramp_stops.h"

namespace vg {

struct Image;

/// A paint object. A context holds a reference while the paint is set for filling or stroking, so
/// destroying the handle does not take a paint from under a draw.
struct Paint final : Object {
    Paint() noexcept : Object(ObjectKind::kPaint) {}
    ~Paint() override;

    void releaseCaches() noexcept override { ramps.release(); }

    // Parameters, as set
    VGint type = VG_PAINT_TYPE_COLOR;
    float color[4] = {0.0F, 0.0F, 0.0F, 1.0F};  ///< red, green, blue, alpha
    VGint spreadMode = VG_COLOR_RAMP_SPREAD_PAD;
    RampStops stops;
    VGint interpolation = VG_COLOR_RAMP_INTERPOLATION_LINEAR_KRN;
    bool interpolatesPremultiplied = true;
    float linearGradient[4] = {0, 0, 1, 0};      ///< start x, y, end x, y
    float radialGradient[5] = {0, 0, 0, 0, 1};   ///< centre x, y, focus x, y, radius
    float conicalGradient[5] = {0, 0, 1, 0, 1};  ///< centre x, y, target x, y, repeats
    VGint tilingMode = VG_TILE_FILL;
    Image* pattern = nullptr;  ///< null: the pattern is the colour

    RampCache ramps;
    VGHandle handle = VG_INVALID_HANDLE;  ///< its own; 0 once the handle is destroyed
};

}  // namespace vg
