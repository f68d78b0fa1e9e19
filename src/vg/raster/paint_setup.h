#pragma once

#include <cstdint>

#include "vg/raster/fill_params.h"
#include "vg/raster/span/span_function.h"

namespace vg::raster {

/// True when the span functions of a draw take its paint premultiplied; so must its ramp be.
bool takesPremultipliedPaint(uint32_t surfaceFormat, ImageMode imageMode) noexcept;

/// The pixel of a flat colour paint: components clamped to 0..1, sent through the colour transform
/// where it is enabled, clamped again, carried to the surface's colour space and packed.
uint32_t packPaintColor(const PaintParams& paint, bool isLinear, bool isPremultiplied) noexcept;

/// Fills what the span functions need of the paint and selects them; none when the draw changes no
/// pixel.
SpanFunctions setupPaint(const FillParams& params, SpanContext& span) noexcept;

}  // namespace vg::raster
