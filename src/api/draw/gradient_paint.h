#pragma once

#include "api/draw/engine_paint.h"
#include "svg/gradient.h"
#include "svg/shapes.h"

namespace quor {

/// Prepares the engine paint of a gradient for a shape. The paint stays invalid for a gradient
/// without stops, and for one in units of the shape's box when that box has no area.
/// Precondition: `paint` is fresh.
Status prepareGradientPaint(SvgGradient& gradient, SvgShape& shape, EnginePaint& paint) noexcept;

}  // namespace quor
