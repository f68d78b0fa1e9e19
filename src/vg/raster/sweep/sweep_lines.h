#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/raster/coverage/chain_edge.h"
#include "vg/raster/geometry/fixed.h"

namespace vg::raster {

/// The heights that a sweep visits, from the top down, and the way from a height to its index.
///
/// The exact sweep stops at every vertex height and every pixel-row boundary between the highest
/// and the lowest vertex; the sampled sweeps stop at fixed fractions of every pixel row.
class SweepLines {
public:
    /// Heights of the exact sweep; `box` is the polygon's. False when memory runs out.
    [[nodiscard]] bool collectVertexHeights(const FixedPolygon& polygon,
                                            const FixedBox& box) noexcept;
    [[nodiscard]] bool collectVertexHeights(const FixedPolygon& polygon) noexcept;

    /// Heights at the given fractions of every pixel row that the box reaches; `fractions` has one
    /// bit for each, bit f for f/32. False when memory runs out.
    [[nodiscard]] bool collectSamples(const FixedBox& box, uint32_t fractions) noexcept;
    [[nodiscard]] bool collectSamples(const FixedPolygon& polygon, uint32_t fractions) noexcept;

    int32_t count() const noexcept { return heights_.count(); }
    int32_t height(int32_t index) const noexcept { return heights_[index]; }

    /// All heights; past the last line its height is repeated kPadding times.
    const uint16_t* heights() const noexcept { return heights_.data(); }
    static constexpr int32_t kPadding = 48;

    /// For kernels that look up many heights.
    LineIndex index() const noexcept { return {lines_, firstIndex_}; }

    /// The index of the highest line at or below `y`, count() without one. Precondition: `y` lies
    /// in a pixel row of the box that the lines were collected for.
    int32_t indexAtOrBelow(int32_t y) const noexcept;

    void shrinkToFit() noexcept { heights_.shrinkToFit(); }

private:
    [[nodiscard]] bool listHeights(int32_t topRow, int32_t bottomRow) noexcept;

    uint32_t lines_[kRowCount] = {};      ///< bit 31 - f of word r: a line at height 32 r + f
    int32_t firstIndex_[kRowCount] = {};  ///< index of the first line at or below row r's top
    base::Array<uint16_t> heights_;       ///< falling
};

}  // namespace vg::raster
