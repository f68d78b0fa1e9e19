// The road of one fill: setup, transform and clip, then rectangle, sweep or replay.

#include "vg/raster/rasterizer.h"

#include <cassert>

#include "vg/raster/geometry/aligned_rectangle.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/kernels/kernels.h"
#include "vg/raster/paint_setup.h"
#include "vg/raster/pixels/pixel_surface.h"
#include "vg/raster/span/pending_clear.h"

namespace vg::raster {

namespace {

/// Whole rows of a flat colour that replaces what is there.
bool overwritesRows(const SweepTarget& target, const PixelRect& rect) noexcept {
    return target.flat == FlatBlend::kSource && rect.x0 == 0 && rect.x1 == target.surface.width;
}

void fillAlignedRectangle(const SweepTarget& target, const PixelRect& rect,
                          RunFunction run) noexcept {
    const PixelSurface& surface = target.surface;
    const bool overwrites = overwritesRows(target, rect);
    for (int32_t y = rect.y0; y < rect.y1; ++y) {
        overwrites ? forgetClear(surface, y) : finishClear(surface, y, y);
        run(surface, target.span, y, rect.x0, rect.x1);
    }
}

/// Chooses the functions of a draw. There are none when it changes no pixel.
SpanFunctions setupTarget(const FillParams& params, SweepTarget& target) noexcept {
    target.surface = params.surface;
    const SpanFunctions functions = setupPaint(params, target.span);
    target.function = functions.span;
    target.flat = functions.flat;
    return functions;
}

bool isWithin(const FixedPolygon& polygon, int32_t maxWidth, int32_t maxHeight) noexcept {
    if (polygon.points.isEmpty()) return true;
    const FixedBox box = kernels().boxOf(polygon.points.data(), polygon.points.count());
    return box.maxX - box.minX <= maxWidth * kSubpixels &&
           box.maxY - box.minY <= maxHeight * kSubpixels;
}

/// The box of a rectangle along pixel borders; startY is its top or the centre of its top row.
PixelRect movedBox(const BandList& list, const BandShift& shift) noexcept {
    return {pixelOf(list.minX + shift.dx), pixelOf(shift.startY - list.depth),
            pixelOf(list.maxX + shift.dx), pixelOf(shift.startY + kSubpixelMask)};
}

}  // namespace

bool Rasterizer::fill(const FillParams& params) noexcept {
    SweepTarget target;
    const SpanFunctions functions = setupTarget(params, target);
    if (functions.span == nullptr) return true;
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

RecordResult Rasterizer::record(const FillParams& params, const BandCacheRules& rules,
                                BandList& list) noexcept {
    list.clear();
    if (!transform_.run(params.polygon, params.userToSurface, params.clip, fixed_)) {
        return RecordResult::kOutOfMemory;
    }
    if (transform_.wasClipped()) return RecordResult::kClipped;
    if (!isWithin(fixed_, rules.maxWidth, rules.maxHeight)) return RecordResult::kTooLarge;
    const RecordResult result = recorder_.record(fixed_, params.fillRule, params.quality, list);
    list.originX = params.userToSurface.m02;
    list.originY = params.userToSurface.m12;
    PixelRect rect;
    list.isAlignedRectangle = list.nonEmpty && isAlignedRectangle(fixed_, rect);
    return result;
}

bool Rasterizer::replay(const FillParams& params, BandList& list, const BandShift& shift) noexcept {
    assert(!list.nonEmpty || list.fits(shift, params.clip));
    SweepTarget target;
    const SpanFunctions functions = setupTarget(params, target);
    if (functions.span == nullptr) return true;
    if (list.isAlignedRectangle && fractionOf(shift.dx) == 0) {
        fillAlignedRectangle(target, movedBox(list, shift), functions.run);
        return true;
    }
    return replayer_.replayBands(list, params.quality, shift, target);
}

void Rasterizer::shrinkBuffers() noexcept {
    transform_.shrinkToFit();
    fixed_.points.shrinkToFit();
    fixed_.contourSizes.shrinkToFit();
    sweep_.shrinkToFit();
    recorder_.shrinkToFit();
    replayer_.shrinkToFit();
}

}  // namespace vg::raster
