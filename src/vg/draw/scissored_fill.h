#pragma once

#include "vg/context.h"
#include "vg/raster/fill_params.h"

namespace vg {

struct Surface;

/// Calls work(rect) for each of the disjoint rectangles of a surface of this size that may be drawn
/// on: the whole of it while scissoring is off. Stops, and returns false, when a call does so, or
/// before the first one when memory runs out.
template <class Work>
[[nodiscard]] bool forEachScissorRect(Context& context, int32_t width, int32_t height,
                                      const Work& work) noexcept {
    if (!context.scissoring) return work(raster::PixelRect{0, 0, width, height});
    const raster::Scissor* scissor = context.scissorFor(width, height);
    if (scissor == nullptr) return false;
    for (const raster::ScissorRect& rect : *scissor) {
        if (!work(rect.pixels())) return false;
    }
    return true;
}

/// Fills the part of the polygon that lies in the scissor; sets params.clip. False when memory runs
/// out: the surface may then be drawn on in part.
[[nodiscard]] bool fillScissored(Context& context, const Surface& surface,
                                 raster::FillParams& params) noexcept;

}  // namespace vg
