#pragma once

#include <cassert>

#include "base/array.h"
#include "vg/raster/coverage/band_block.h"
#include "vg/raster/coverage/chain_edge.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/sweep/sweep_lines.h"

namespace vg::raster {

/// A run of a contour that only falls or only rises: at most one crossing with any band.
///
///      *            Edges are in contour order. A falling run is walked forwards from its first
///       \   *       edge, a rising one backwards from its last, so that the sweep always meets
///        \ / \      a chain from the top down.
///         *   \     .
struct Chain {
    int32_t firstEdge;
    int32_t step;       ///< +1 or -1 from edge to edge; the direction of its winding as well
    int32_t startBand;  ///< half-open range of the bands that it crosses
    int32_t endBand;
    int32_t next;  ///< the next chain that starts at the same band; -1 ends the list
};

/// The edges of a polygon as chains, filed by the band at which they start.
class MonotoneChains {
public:
    /// `originX` is taken off every x. False when memory runs out.
    [[nodiscard]] bool build(const FixedPolygon& polygon, const SweepLines& lines,
                             int32_t originX) noexcept;

    int32_t count() const noexcept { return chains_.count(); }
    const ChainEdge* edges() const noexcept { return edges_.data(); }
    const Chain& chain(int32_t index) const noexcept { return chains_[index]; }

    /// Bit l is set when chains start at band l of a block.
    uint32_t startsIn(int32_t block) const noexcept { return starts_[block]; }

    /// Head of the list of chains that start at a band. Precondition: there are some.
    int32_t firstAt(int32_t band) const noexcept {
        assert((startsIn(band / kBlockBands) >> band % kBlockBands & 1) != 0);
        return firstAt_[band];
    }

    /// The most chains that cross one block of bands.
    int32_t largestBlock() const noexcept { return largestBlock_; }

    void shrinkToFit() noexcept;

private:
    [[nodiscard]] bool reserve(const FixedPolygon& polygon, int32_t bandCount) noexcept;
    void splitContour(int32_t firstEdge, int32_t count) noexcept;
    void addRun(int32_t firstEdge, int32_t start, int32_t end, bool falls) noexcept;
    void addChain(const Chain& chain) noexcept;
    void countBlocks() noexcept;

    base::Array<ChainEdge> edges_;  ///< edge i ends at point i
    base::Array<FixedPoint> stepPoints_;
    base::Array<int32_t> stepBands_;
    base::Array<EdgeDirections> directions_;
    base::Array<Chain> chains_;
    base::Array<int32_t> firstAt_;    ///< by band; nothing where none starts
    base::Array<uint32_t> starts_;    ///< by block
    base::Array<int32_t> blockGain_;  ///< by block: chains that it has more than the one before
    int32_t largestBlock_ = 0;
};

}  // namespace vg::raster
