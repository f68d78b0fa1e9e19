#include <algorithm>
#include <cstdint>

#include "vg/context.h"
#include "vg/raster/clear_rect.h"
#include "vg/raster/pixels/pixel_io.h"
#include "vg/scissored_fill.h"
#include "vg/surface.h"
#include "vg/vg.h"

namespace {

vg::raster::PixelRect intersect(const vg::raster::PixelRect& a,
                                const vg::raster::PixelRect& b) noexcept {
    return {std::max(a.x0, b.x0), std::max(a.y0, b.y0), std::min(a.x1, b.x1), std::min(a.y1, b.y1)};
}

/// Surfaces of so many pixels do not fit the nearer caches.
constexpr int32_t kManyPixels = 1 << 17;

/// Whether a clear is better put off (see PendingClear).
bool clearsManyPixels(const vg::Context& context, const vg::Surface& surface,
                      const vg::raster::PixelRect& rect) noexcept {
    return !context.scissoring && rect.x0 <= 0 && rect.y0 <= 0 && rect.x1 >= surface.width &&
           rect.y1 >= surface.height && surface.pixels.count() >= kManyPixels;
}

/// Stores the clear colour in the part of the rectangle that lies in the scissor. False when memory
/// runs out.
bool clearRect(vg::Context& context, vg::Surface& surface,
               const vg::raster::PixelRect& rect) noexcept {
    const uint32_t pixel = vg::raster::packFloatColor(context.clearColor, surface.descriptor());
    if (clearsManyPixels(context, surface, rect)) {
        surface.pendingClear.begin(surface.height, pixel);
        return true;
    }
    const auto clearPart = [&](const vg::raster::PixelRect& part) noexcept {
        vg::raster::clearRect(surface.view(), intersect(rect, part), pixel);
        return true;
    };
    return vg::forEachScissorRect(context, surface.width, surface.height, clearPart);
}

}  // namespace

void vgClear(VGint x, VGint y, VGint width, VGint height) {
    vg::Context* context = vg::currentPair();
    if (context == nullptr) return;
    if (width < 1 || height < 1) return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    if (clearRect(*context, *vg::currentSurface(), vg::pixelRect(x, y, width, height))) return;
    context->recoverMemory();
    context->raise(VG_OUT_OF_MEMORY_ERROR);
}
