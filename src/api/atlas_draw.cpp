// Draws the elements of a bin one by one, each at its place.

#include "api/atlas_draw.h"

#include "api/draw/document_draw.h"
#include "api/element_draw.h"

namespace quor {

Status drawPackedRects(const AtlasSession& atlas, const QuorPackedRect* rects, uint32_t count,
                       const DrawingSurface& surface, RenderingQuality quality) noexcept {
    setDrawState(quality);
    ElementDraw elementDraw;
    for (uint32_t i = 0; i < count; ++i) {
        const Status status =
            elementDraw.draw(atlas.elementOf(rects[i]), static_cast<int32_t>(rects[i].x),
                             static_cast<int32_t>(rects[i].y), surface.height());
        if (status != Status::kOk) return status;
    }
    return Status::kOk;
}

}  // namespace quor
