#include "api/point_map.h"

#include "base/finite.h"

namespace quor {

MappedPoint mapPoint(const Document& document, const DrawingSurface& surface, float x, float y,
                     bool useSurfaceTransform) noexcept {
    SvgMatrix matrix = viewportMapping(document.viewport, surface.viewport, document.alignment);
    if (useSurfaceTransform) matrix = surface.transformMatrix() * matrix;
    MappedPoint mapped;
    matrix.apply(x, y, mapped.x, mapped.y);
    return {base::finite(mapped.x), base::finite(mapped.y)};
}

}  // namespace quor
