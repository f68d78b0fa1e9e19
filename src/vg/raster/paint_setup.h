#pragma once

#include <cstdint>

#include "vg/raster/draw_params.h"

namespace vg::raster {

/// The pixel of a flat colour paint: components clamped to 0..1, sent through the colour transform
/// where it is enabled, clamped again, premultiplied and packed.
uint32_t packPaintColor(const PaintParams& paint) noexcept;

}  // namespace vg::raster
