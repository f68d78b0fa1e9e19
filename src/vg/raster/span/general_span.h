#pragma once

#include "vg/raster/span/span_function.h"

namespace vg::raster {

/// The span function for what the tables do not hold: it converts, blends and writes one pixel at a
/// time. Reads SpanContext::general, a paint in the plain form, and the mask where there is one.
SpanFunctions generalSpanFunctions() noexcept;

/// The operator of a blend column (blend_modes.h); null for a column without.
BlendOperator blendOperator(int32_t column) noexcept;

}  // namespace vg::raster
