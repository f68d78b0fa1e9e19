#include "vg/raster/sweep_lines.h"

#include <algorithm>
#include <bit>

namespace vg::raster {
namespace {

struct HeightRange {
    int32_t lowest, highest;
};

HeightRange rangeOf(const FixedPolygon& polygon) noexcept {
    HeightRange range = {kMaxCoordinate, 0};
    for (const FixedPoint& point : polygon.points) {
        range.lowest = std::min<int32_t>(range.lowest, point.y);
        range.highest = std::max<int32_t>(range.highest, point.y);
    }
    return range;
}

/// Bits of the fractions from 0 to `fraction`.
constexpr uint32_t bitsUpTo(int32_t fraction) noexcept {
    return 0xFFFFFFFFU >> (kSubpixelMask - fraction);
}

}  // namespace

bool SweepLines::collectVertexHeights(const FixedPolygon& polygon) noexcept {
    heights_.clear();
    if (polygon.points.isEmpty()) return true;
    const HeightRange range = rangeOf(polygon);
    const int32_t bottomRow = pixelOf(range.lowest);
    const int32_t topRow = pixelOf(range.highest);
    lines_[bottomRow] = 0;
    std::fill(lines_ + bottomRow + 1, lines_ + topRow + 1, 1U);
    for (const FixedPoint& point : polygon.points) {
        lines_[pixelOf(point.y)] |= 1U << fractionOf(point.y);
    }
    return listHeights(topRow, bottomRow);
}

bool SweepLines::collectSamples(const FixedPolygon& polygon, uint32_t fractions) noexcept {
    heights_.clear();
    if (polygon.points.isEmpty()) return true;
    const HeightRange range = rangeOf(polygon);
    const int32_t bottomRow = pixelOf(range.lowest);
    const int32_t topRow = pixelOf(range.highest);
    std::fill(lines_ + bottomRow, lines_ + topRow + 1, fractions);
    return listHeights(topRow, bottomRow);
}

bool SweepLines::listHeights(int32_t topRow, int32_t bottomRow) noexcept {
    if (!heights_.reserveMore((topRow - bottomRow + 1) * kSubpixels + kPadding)) return false;
    for (int32_t row = topRow; row >= bottomRow; --row) {
        firstIndex_[row] = heights_.count();
        for (uint32_t bits = lines_[row]; bits != 0;) {
            const int32_t fraction = kSubpixelMask - std::countl_zero(bits);
            heights_.pushReserved(static_cast<uint16_t>((row << kSubpixelBits) | fraction));
            bits &= ~(1U << fraction);
        }
    }
    if (!heights_.isEmpty()) std::fill_n(heights_.end(), kPadding, heights_.last());
    return true;
}

int32_t SweepLines::indexAtOrBelow(int32_t y) const noexcept {
    const int32_t row = pixelOf(y);
    const uint32_t above = lines_[row] & ~bitsUpTo(fractionOf(y));
    return firstIndex_[row] + std::popcount(above);
}

}  // namespace vg::raster
