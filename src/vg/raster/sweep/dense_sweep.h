#pragma once

#include "base/array.h"
#include "vg/raster/coverage/chain_edge.h"
#include "vg/raster/coverage/coverage_ring.h"
#include "vg/raster/coverage/dense_columns.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/sweep/dense_bands.h"
#include "vg/raster/sweep/monotone_chains.h"
#include "vg/raster/sweep/sweep_target.h"

namespace vg::raster {

/// The exact sweep of noise: several edges in every pixel column of every band, most of which
/// change places with others from band to band. There is nothing to keep in order, then; each band,
/// one after the other, is done in three walks that do not branch on what the edges do:
///
///   pass     all edges go down by the band's height, a vector at a time (DenseEdges)
///   file     each is put into the pigeonhole of its x at the top (DenseColumns)
///   add      the holes are emptied from left to right, a vector of neighbours at a time
///
/// A band in which a hole overflows, or an edge goes very far to the side, is left to DenseBands.
class DenseSweep {
public:
    /// True where this sweep is the quicker one: for so many chains in some block of bands.
    static bool isFor(int32_t chainCount, int32_t columns) noexcept;

    /// Makes room. False when memory runs out.
    [[nodiscard]] bool reserve(const MonotoneChains& chains, int32_t bandCount,
                               int32_t columns) noexcept;

    /// Draws the chains in exact bands; column 0 of the ring is `originColumn` of the surface.
    /// Preconditions: reserve() for these chains, and `ring` and `bands` for these columns.
    void run(const MonotoneChains& chains, FillRule rule, const SweepLines& lines,
             DenseBands& bands, CoverageRing& ring, int32_t originColumn,
             SweepTarget& target) noexcept;

    void shrinkToFit() noexcept;

private:
    /// A chain while it is crossed.
    struct Crossing {
        const ChainEdge* edge;
        int32_t entry;       ///< of the edge
        int32_t nextEnding;  ///< the next chain whose edge ends at the same band; -1: none
    };

    DenseEdges edges() noexcept;
    DenseColumns holes() noexcept;
    void startChains(const MonotoneChains& chains, int32_t band) noexcept;
    void endEdges(const MonotoneChains& chains, int32_t band) noexcept;
    void setEdge(int32_t chain, int32_t step, const ChainEdge* edge) noexcept;
    void removeEntry(int32_t entry) noexcept;
    [[nodiscard]] bool fileEdges() noexcept;

    base::Array<uint32_t> place_, slope_;  ///< by entry, as the next three
    base::Array<uint16_t> top_, key_;
    base::Array<int32_t> chainOf_;
    base::Array<Crossing> crossings_;   ///< by chain
    base::Array<int32_t> firstEnding_;  ///< by band: a chain whose edge ends there; -1: none
    base::Array<uint8_t> counts_;       ///< see DenseColumns
    base::Array<uint16_t> slots_;
    int32_t entryCount_ = 0;
    int32_t positions_ = 0;
};

}  // namespace vg::raster
