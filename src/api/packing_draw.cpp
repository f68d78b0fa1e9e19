#include "api/packing_draw.h"

#include "api/draw_state.h"
#include "api/element_draw.h"

namespace quor {

Status drawPackedRects(const Packing& packing, const QuorPackedRect* rects, uint32_t count,
                       const DrawingSurface& surface, RenderingQuality quality) noexcept {
    setDrawState(quality);
    ElementDraw elementDraw;
    for (uint32_t i = 0; i < count; ++i) {
        const Status status =
            elementDraw.draw(packing.elementOf(rects[i]), static_cast<int32_t>(rects[i].x),
                             static_cast<int32_t>(rects[i].y), surface.height());
        if (status != Status::kOk) return status;
    }
    return Status::kOk;
}

}  // namespace quor
