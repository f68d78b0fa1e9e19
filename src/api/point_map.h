#pragma once

#include "api/document.h"
#include "api/drawing_surface.h"

namespace quor {

struct MappedPoint {
    float x;  ///< pixels from the left
    float y;  ///< pixels from the top
};

/// Where a point of the document lands on the surface, its viewport transform included or not.
/// Finite input gives finite output.
MappedPoint mapPoint(const Document& document, const DrawingSurface& surface, float x, float y,
                     bool useSurfaceTransform) noexcept;

}  // namespace quor
