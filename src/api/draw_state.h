#pragma once

#include "api/document.h"
#include "api/drawing_surface.h"
#include "svg/matrix.h"

namespace quor {

/// Sets the engine state that every draw starts from.
void setDrawState(RenderingQuality quality) noexcept;

/// From y downward and the surface's top left corner to the engine's y upward and the bottom left
/// corner.
SvgMatrix surfaceFlip(uint32_t surfaceHeight) noexcept;

}  // namespace quor
