#pragma once

#include <cstdint>

#include "api/atlas_session.h"
#include "api/document.h"
#include "api/drawing_surface.h"

namespace quor {

/// Draws the rectangles, whose documents exist, on the surface, which is the engine's current one:
/// each element with its origin at its place in the surface's pixels.
Status drawPackedRects(const AtlasSession& atlas, const QuorPackedRect* rects, uint32_t count,
                       const DrawingSurface& surface, RenderingQuality quality) noexcept;

}  // namespace quor
