#pragma once

#include "vg/raster/pixels/pixel_surface.h"
#include "vg/raster/span/span_function.h"

namespace vg::raster {

/// Where a sweep delivers finished pixel rows.
struct SweepTarget {
    PixelSurface surface;
    SpanContext span;
    SpanFunction function = nullptr;
    FlatBlend flat = FlatBlend::kNone;  ///< unless kNone, taken instead of `function`
};

}  // namespace vg::raster
