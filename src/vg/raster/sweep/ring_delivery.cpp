// Hands rows of the ring to a span function, or in one call to the kernel of flat colours.

#include "vg/raster/sweep/ring_delivery.h"

#include <algorithm>

#include "vg/raster/kernels/kernels.h"
#include "vg/raster/pixels/pixel_surface.h"
#include "vg/raster/span/gradient_paints.h"
#include "vg/raster/span/pending_clear.h"

namespace vg::raster {

int32_t originFor(const SweepTarget& target, int32_t firstColumn) noexcept {
    return target.flat == FlatBlend::kNone ? firstColumn & ~(kGradientChunk - 1) : firstColumn;
}

void deliverRows(CoverageRing& ring, int32_t originColumn, int32_t top, int32_t bottom,
                 SweepTarget& target) noexcept {
    // A polygon that ends on the surface's upper border may come with an empty row above it.
    top = std::min(top, target.surface.height - 1);
    if (top < bottom) return;
    finishClear(target.surface, bottom, top);
    if (target.flat == FlatBlend::kNone) {
        for (int32_t y = top; y >= bottom; --y) {
            target.function(target.surface, target.span, y,
                            {ring.row(y), ring.groupCount(), originColumn});
        }
        return;
    }
    const PixelSurface& surface = target.surface;
    const FlatRows rows = {ring.view(),
                           ring.stride(),
                           CoverageRing::kRows - 1,
                           top,
                           bottom,
                           surface.row(top) + originColumn,
                           surface.width - originColumn,
                           surface.width,
                           target.span.color};
    target.flat == FlatBlend::kSource ? kernels().compositeSource(rows)
                                      : kernels().compositeSourceOver(rows);
}

}  // namespace vg::raster
