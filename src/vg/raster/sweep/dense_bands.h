#pragma once

#include "base/array.h"
#include "vg/raster/coverage/band_block.h"
#include "vg/raster/coverage/cells.h"
#include "vg/raster/coverage/coverage_ring.h"
#include "vg/raster/coverage/dense_columns.h"
#include "vg/raster/geometry/polygon.h"

namespace vg::raster {

/// Noise: so many edges a pixel that hardly two keep their order from band to band. Each band is
/// then sorted for itself, in four steps without a branch that depends on the edges:
///
///   collect     the edges of eight bands as keys that rise with x at the top, then at the bottom
///   distribute  by x at the top: then only keys of one bucket may be out of order
///   finish      neighbours are exchanged in pairs, all pairs at once, until none is out of order
///   add         the fill rule picks boundaries; those within a column are summed up by column,
///               and the sums go to the cells once a band
///
/// An edge that stays within column c from fractions f_a to f_b adds h 2^25 - R to cell c and
/// R = (f_a + f_b) h 2^19 to the next, h being the band's height (trapezoid.cpp): so all that
/// a column has to know is how many boundaries there are of each sign, and the sums of f_a + f_b.
class DenseBands {
public:
    /// Makes room for blocks of up to `chainCount` chains over `columns` columns. False when memory
    /// runs out.
    [[nodiscard]] bool reserve(int32_t chainCount, int32_t columns) noexcept;

    /// Adds a block of chains that are in no order.
    void addBlock(LiveChain* const* chains, int32_t count, FillRule rule, const BandBlock& block,
                  const CellView& cells) noexcept;

    /// Adds a band of edges that have just passed it.
    void addBand(const DenseEdges& edges, FillRule rule, int32_t height, int32_t rowStart,
                 const CellView& cells) noexcept;

    void shrinkToFit() noexcept;

private:
    static constexpr int32_t kBandsAtOnce = 8;  ///< collected in one walk along the chains

    /// The boundaries of one sign within a column: their number in the upper half, the sum of the
    /// fractions in the lower.
    using ColumnSum = uint64_t;

    /// Where the boundaries of a band go.
    struct Band {
        int32_t height;
        int32_t rowStart;
        CellView cells;
    };

    template <class Key>
    void addBands(LiveChain* const* chains, int32_t count, FillRule rule, const BandBlock& block,
                  const CellView& cells) noexcept;
    template <class Key>
    void addKeys(const typename Key::Word* keys, int32_t count, FillRule rule,
                 const Band& band) noexcept;
    template <class Key>
    void distribute(const typename Key::Word* keys, int32_t count,
                    typename Key::Word* sorted) noexcept;
    template <class Key, FillRule kRule>
    void addBoundaries(const typename Key::Word* keys, int32_t count, const Band& band) noexcept;
    void addBoundary(int32_t top, int32_t bottom, bool isLeft, const Band& band) noexcept;
    static void addWideBoundary(int32_t top, int32_t bottom, bool isLeft,
                                const Band& band) noexcept;
    void addSums(const Band& band) noexcept;

    base::Array<uint64_t> keys_;         ///< kBandsAtOnce bands, each followed by room for one more
    base::Array<uint64_t> sorted_;       ///< one band
    base::Array<int32_t> bucketPlaces_;  ///< by bucket: where its next key goes
    base::Array<ColumnSum>
        sums_[2];  ///< by column; right boundaries, left ones. Zero between bands
    int32_t columns_ = 0;
    int32_t reservedColumns_ = 0;  ///< that the last two arrays have room for
};

}  // namespace vg::raster
