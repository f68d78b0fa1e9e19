// A set of heights as one bit a height and one word a pixel row: lists and ranks by bit counts.

#include "vg/raster/sweep/sweep_lines.h"

#include <algorithm>
#include <bit>

#include "vg/raster/kernels/kernels.h"

namespace vg::raster {
namespace {

constexpr uint32_t kTopBit = 1U << kSubpixelMask;

/// The bit of a line at a fraction of a row.
constexpr uint32_t bitOf(int32_t fraction) noexcept { return kTopBit >> fraction; }

/// Bit f becomes bit 31 - f.
constexpr uint32_t mirrored(uint32_t fractions) noexcept {
    uint32_t lines = 0;
    for (int32_t f = 0; f < kSubpixels; ++f) lines |= (fractions >> f & 1) != 0 ? bitOf(f) : 0;
    return lines;
}

}  // namespace

bool SweepLines::collectVertexHeights(const FixedPolygon& polygon) noexcept {
    heights_.clear();
    if (polygon.points.isEmpty()) return true;
    return collectVertexHeights(polygon,
                                kernels().boxOf(polygon.points.data(), polygon.points.count()));
}

bool SweepLines::collectVertexHeights(const FixedPolygon& polygon, const FixedBox& box) noexcept {
    const int32_t bottomRow = pixelOf(box.minY);
    const int32_t topRow = pixelOf(box.maxY);
    lines_[bottomRow] = 0;
    std::fill(lines_ + bottomRow + 1, lines_ + topRow + 1, kTopBit);
    for (const FixedPoint& point : polygon.points) {
        lines_[pixelOf(point.y)] |= bitOf(fractionOf(point.y));
    }
    return listHeights(topRow, bottomRow);
}

bool SweepLines::collectSamples(const FixedPolygon& polygon, uint32_t fractions) noexcept {
    heights_.clear();
    if (polygon.points.isEmpty()) return true;
    return collectSamples(kernels().boxOf(polygon.points.data(), polygon.points.count()),
                          fractions);
}

bool SweepLines::collectSamples(const FixedBox& box, uint32_t fractions) noexcept {
    const int32_t bottomRow = pixelOf(box.minY);
    const int32_t topRow = pixelOf(box.maxY);
    std::fill(lines_ + bottomRow, lines_ + topRow + 1, mirrored(fractions));
    return listHeights(topRow, bottomRow);
}

bool SweepLines::listHeights(int32_t topRow, int32_t bottomRow) noexcept {
    heights_.clear();
    if (!heights_.reserveMore((topRow - bottomRow + 1) * kSubpixels + kPadding)) return false;
    uint16_t* const first = heights_.data();
    uint16_t* next = first;
    for (int32_t row = topRow; row >= bottomRow; --row) {
        firstIndex_[row] = static_cast<int32_t>(next - first);
        const int32_t highest = (row << kSubpixelBits) | kSubpixelMask;
        uint32_t bits = lines_[row];
        const auto takeLine = [&] {
            *next = static_cast<uint16_t>(highest - std::countr_zero(bits));
            next += bits != 0 ? 1 : 0;
            bits &= bits - 1;
        };
        takeLine();  // most rows have one line or two: taken without a branch to mispredict
        takeLine();
        while (bits != 0) takeLine();
    }
    const auto count = static_cast<int32_t>(next - first);
    if (count > 0) std::fill_n(next, kPadding, next[-1]);
    return heights_.resize(count);
}

int32_t SweepLines::indexAtOrBelow(int32_t y) const noexcept {
    const int32_t row = pixelOf(y);
    const uint32_t above = lines_[row] & (bitOf(fractionOf(y)) - 1);
    return firstIndex_[row] + std::popcount(above);
}

}  // namespace vg::raster
