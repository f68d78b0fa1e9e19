// How far a recorded polygon may move: across to 1/32 pixel, up and down by whole pixels.

#include "vg/raster/replay/band_list.h"

#include <algorithm>
#include <cmath>

#include "vg/raster/geometry/fixed.h"

namespace vg::raster {
namespace {

/// A distance in pixels in units of 1/32, truncated; what lies beyond any surface is clamped.
int32_t toSubpixels(float distance) noexcept {
    constexpr float kFar = 4.0F * kMaxCoordinate;
    const float scaled = distance * 32.0F;
    if (std::isnan(scaled)) return 0;
    return static_cast<int32_t>(std::clamp(scaled, -kFar, kFar));
}

float fractionalPart(float value) noexcept { return value - std::floor(value); }

}  // namespace

BandShift BandList::shiftTo(float x, float y) const noexcept {
    const int32_t movedY = startY + toSubpixels(y - originY);
    return {toSubpixels(x - originX), (movedY & ~kSubpixelMask) | fractionOf(startY)};
}

bool BandList::fits(const BandShift& shift, const PixelRect& clip) const noexcept {
    const auto limit = [](int32_t pixels) {
        return std::min(int64_t{pixels} * kSubpixels, int64_t{kMaxCoordinate});
    };
    return minX + shift.dx >= std::max(limit(clip.x0), int64_t{0}) &&
           maxX + shift.dx <= limit(clip.x1) && shift.startY <= limit(clip.y1) &&
           shift.startY - depth >= std::max(limit(clip.y0), int64_t{0});
}

void BandList::clear() noexcept {
    nonEmpty = false;
    isAlignedRectangle = false;
    startY = minX = maxX = depth = largestBand = 0;
    coords.clear();
    bands.clear();
    cells.clear();
}

bool allowsVerticalMove(Quality quality, bool allowSnapToPixel, float deltaY) noexcept {
    if (allowSnapToPixel) return true;
    const float distance = std::fabs(deltaY);
    if (quality == Quality::kFaster) return fractionalPart(2.0F * distance) < 0.0625F;
    return fractionalPart(distance) < 0.03125F;
}

}  // namespace vg::raster
