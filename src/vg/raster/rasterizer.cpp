#include "vg/raster/rasterizer.h"

#include "vg/raster/aligned_rectangle.h"
#include "vg/raster/paint_setup.h"

namespace vg::raster {

namespace {

void fillAlignedRectangle(const SweepTarget& target, const PixelRect& rect,
                          RunFunction run) noexcept {
    for (int32_t y = rect.y0; y < rect.y1; ++y) {
        run(target.surface, target.span, y, rect.x0, rect.x1);
    }
}

}  // namespace

bool Rasterizer::fill(const FillParams& params) noexcept {
    SweepTarget target;
    target.surface = params.surface;
    const SpanFunctions functions = setupPaint(params, target.span);
    if (functions.span == nullptr) return true;
    target.function = functions.span;
    target.flat = functions.flat;
    if (!transform_.run(params.polygon, params.userToSurface, params.clip, fixed_)) {
        return false;
    }
    PixelRect rect;
    if (isAlignedRectangle(fixed_, rect)) {
        fillAlignedRectangle(target, rect, functions.run);
        return true;
    }
    return sweep_.run(fixed_, params.fillRule, params.quality, target);
}

void Rasterizer::shrinkBuffers() noexcept {
    transform_.shrinkToFit();
    fixed_.points.shrinkToFit();
    fixed_.contourSizes.shrinkToFit();
    sweep_.shrinkToFit();
}

}  // namespace vg::raster
