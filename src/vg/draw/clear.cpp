// Clears now, or, a whole large surface, at the next draws: they then write each row once.

#include "vg/draw/clear.h"

#include <algorithm>
#include <cstdint>

#include "vg/context.h"
#include "vg/draw/scissored_fill.h"
#include "vg/raster/clear_rect.h"
#include "vg/raster/pixels/pixel_io.h"
#include "vg/surface.h"

namespace vg {
namespace {

raster::PixelRect intersect(const raster::PixelRect& a, const raster::PixelRect& b) noexcept {
    return {std::max(a.x0, b.x0), std::max(a.y0, b.y0), std::min(a.x1, b.x1), std::min(a.y1, b.y1)};
}

/// Surfaces of so many pixels do not fit the nearer caches.
constexpr int32_t kManyPixels = 1 << 17;

/// Whether a clear is better put off (see PendingClear).
bool clearsManyPixels(const Context& context, const Surface& surface,
                      const raster::PixelRect& rect) noexcept {
    return !context.scissoring && rect.x0 <= 0 && rect.y0 <= 0 && rect.x1 >= surface.width &&
           rect.y1 >= surface.height && surface.pixels.count() >= kManyPixels;
}

}  // namespace

bool clear(Context& context, Surface& surface, const raster::PixelRect& rect) noexcept {
    const uint32_t pixel = raster::packFloatColor(context.clearColor, surface.descriptor());
    if (clearsManyPixels(context, surface, rect)) {
        surface.pendingClear.begin(surface.height, pixel);
        return true;
    }
    const auto clearPart = [&](const raster::PixelRect& part) noexcept {
        raster::clearRect(surface.view(), intersect(rect, part), pixel);
        return true;
    };
    return forEachScissorRect(context, surface.width, surface.height, clearPart);
}

}  // namespace vg
