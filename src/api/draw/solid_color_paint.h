#pragma once

#include "api/draw/engine_paint.h"
#include "svg/gradient.h"

namespace quor {

/// Prepares the engine paint of a `solidColor` element. Precondition: `paint` is fresh.
Status prepareSolidColorPaint(SvgSolidColor& server, EnginePaint& paint) noexcept;

}  // namespace quor
