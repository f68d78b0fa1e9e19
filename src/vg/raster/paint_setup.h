#pragma once

#include <cstdint>

#include "vg/raster/draw_params.h"
#include "vg/raster/span_function.h"

namespace vg::raster {

/// The pixel of a flat colour paint: components clamped to 0..1, sent through the colour transform
/// where it is enabled, clamped again, premultiplied and packed.
uint32_t packPaintColor(const PaintParams& paint) noexcept;

/// Fills what the span functions need of the paint and selects them; none when the draw changes no
/// pixel.
SpanFunctions setupPaint(const PaintParams& paint, int32_t blendMode, SpanContext& span) noexcept;

}  // namespace vg::raster
