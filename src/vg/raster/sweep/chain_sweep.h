#pragma once

#include "base/array.h"
#include "vg/raster/coverage/band_block.h"
#include "vg/raster/coverage/coverage_ring.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/sweep/dense_bands.h"
#include "vg/raster/sweep/monotone_chains.h"
#include "vg/raster/sweep/sweep_lines.h"
#include "vg/raster/sweep/sweep_target.h"

namespace vg::raster {

/// The sweep of all qualities. The best one adds exact areas in bands that end at every vertex
/// height and every pixel-row boundary. The others sample edges on scanlines, two or one a pixel
/// row; a scanline is a band, too: the part of the row that it represents, between vertical edges.
///
/// The scanline algorithm transposed for SIMD: instead of all edges of one band, one monotone chain
/// at sixteen bands at once, a band to a vector lane.
///
///              chain A   chain B          Chains that cross the block are kept in a list from
///   band 0  -----\---------/-------       left to right. A walk along the list compares each
///   band 1  ------\-------/--------       chain with the one before it, in all lanes at once,
///   band 2  -------|-----|---------       and sums windings. If no top and no bottom is out of
///     ...                                 order in any lane, list order is every band's order:
///   band 15 --------\-----\--------       no sorting, and no boundary has to be moved past
///                                         another. Then each chain adds its trapezoids by itself.
///
/// Where the proof fails (edges cross, end at the same place in the wrong order, or were filed
/// wrongly) the block is ordered lane by lane; with very many edges each band is sorted for itself
/// (see DenseBands). The pixels do not depend on which road a block takes.
class ChainSweep {
public:
    /// False when memory runs out; the target may then be drawn on in part.
    [[nodiscard]] bool run(const FixedPolygon& polygon, FillRule rule, Quality quality,
                           SweepTarget& target) noexcept;

    void shrinkToFit() noexcept;

private:
    [[nodiscard]] bool prepare(const FixedPolygon& polygon, const FixedBox& box,
                               const SweepTarget& target) noexcept;
    [[nodiscard]] bool collectLines(const FixedPolygon& polygon, const FixedBox& box) noexcept;
    [[nodiscard]] bool reserveSlots() noexcept;
    void runBlocks(FillRule rule, SweepTarget& target) noexcept;
    int32_t rowOfBand(int32_t band) const noexcept;
    void loadBlock(int32_t firstBand) noexcept;
    void evaluate(LiveChain* const* chains, int32_t count) noexcept;
    void startChains() noexcept;
    void startChain(const Chain& chain, int32_t lane) noexcept;
    void fileByPosition(LiveChain* chain) noexcept;
    /// False when the list turned out not to be every band's order.
    bool addBlock(FillRule rule) noexcept;
    void addUnorderedBlock(FillRule rule) noexcept;
    void restoreOrder() noexcept;
    void dropEndedChains() noexcept;

    bool isExact() const noexcept { return quality_ == Quality::kBetter; }

    Quality quality_ = Quality::kBetter;
    SweepLines lines_;
    int32_t bandCount_ = 0;
    MonotoneChains chains_;
    CoverageRing ring_;
    DenseBands dense_;
    BandBlock block_ = {};
    base::Array<LiveChain> slots_;
    base::Array<LiveChain*> free_;   ///< slots that hold no chain
    base::Array<LiveChain*> live_;   ///< the active list, left to right as of the latest block
    base::Array<LiveChain*> fresh_;  ///< those that start in this block, from the top down
    base::Array<BoundaryRow> rows_;
    int32_t originColumn_ = 0;  ///< the surface's column of cell 0
    int32_t denseCount_ = 0;    ///< with this many chains, bands are sorted one by one
};

}  // namespace vg::raster
