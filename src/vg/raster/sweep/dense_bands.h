#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/raster/coverage/band_block.h"
#include "vg/raster/coverage/cells.h"
#include "vg/raster/geometry/polygon.h"

namespace vg::raster {

/// Blocks of bands with so many edges that hardly two keep their order from band to band (random
/// points, fine hatching). Each band is sorted for itself:
///
///   collect   the edges of eight bands in one walk along the chains, as keys that rise with x at
///             the top, then x at the bottom, then direction
///   sort      a counting sort by x at the top; then only keys of one bucket are out of order, and
///             an insertion sort finishes them
///   add       the fill rule picks boundaries; those within a column are summed up by column, and
///             the sums go to the cells once a band
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

    void shrinkToFit() noexcept;

private:
    static constexpr int32_t kBandsAtOnce = 8;  ///< collected in one walk along the chains

    /// Boundaries within one column: how many left ones there are more than right ones, and the
    /// sum of their fractions, with the same sign.
    struct ColumnSum {
        int32_t boundaries, fractions;
    };

    /// Where the boundaries of a band go.
    struct Destination {
        int32_t height;
        int32_t rowStart;
        const CellView& cells;
    };

    int32_t* collect(LiveChain* const* chains, int32_t count, int32_t firstLane) noexcept;
    const uint64_t* sorted(const uint64_t* keys, int32_t count) noexcept;
    template <FillRule kRule>
    void addBoundaries(const uint64_t* keys, int32_t count, const Destination& band) noexcept;
    void addBoundary(int32_t top, int32_t bottom, bool isLeft, const Destination& band) noexcept;
    void addSums(const Destination& band) noexcept;

    base::Array<uint64_t> keys_;         ///< kBandsAtOnce bands of stride_ keys each
    base::Array<uint64_t> sorted_;       ///< one band
    base::Array<int32_t> bucketPlaces_;  ///< by x at the top: where the next key goes
    base::Array<ColumnSum> sums_;        ///< by column; zero between bands
    int32_t counts_[kBandsAtOnce] = {};  ///< keys of each band
    int32_t stride_ = 0;
    int32_t columns_ = 0;
};

}  // namespace vg::raster
