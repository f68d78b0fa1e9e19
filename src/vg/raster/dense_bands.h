#pragma once

#include "vg/raster/coverage_ring.h"
#include "vg/raster/live_chain.h"

namespace vg::raster {

/// Noise: so many edges a pixel that hardly two keep their order from band to band. Each band is
/// then sorted for itself: distributed over buckets of x at the top, finished by insertion.
///
/// Neighbours in the order add to the same cells, so that one addition would wait for the other.
/// Boundaries are therefore dealt out to the vector lanes in long stretches (R rows):
///
///            lane 0      lane 1            lane 15
///   row 0    boundary 0  boundary R   ...  boundary 15 R
///   row 1    boundary 1  boundary R+1 ...
class DenseBands {
public:
    /// Makes room for blocks of up to `chainCount` chains. False when memory runs out.
    [[nodiscard]] bool reserve(int32_t chainCount) noexcept;

    /// Adds a block of chains that are in no order.
    void addBlock(LiveChain* const* chains, int32_t count, FillRule rule, const BandBlock& block,
                  const CellView& cells) noexcept;

    void shrinkToFit() noexcept;

private:
    static constexpr int32_t kBandsAtOnce = 8;  ///< collected in one walk along the chains

    /// The edges of one band as keys (see dense_bands.cpp).
    struct Keys {
        uint64_t* keys;
        int32_t count;
    };

    void collect(LiveChain* const* chains, int32_t count, int32_t firstLane,
                 Keys (&bands)[kBandsAtOnce]) noexcept;
    uint64_t* distribute(const Keys& band) noexcept;
    void resolve(const uint64_t* keys, int32_t count, FillRule rule) noexcept;
    void addBand(int32_t lane, const BandBlock& block, const CellView& cells) noexcept;

    base::Array<uint64_t> keys_;      ///< kBandsAtOnce bands
    base::Array<uint64_t> sorted_;    ///< one band
    base::Array<int32_t> bucketEnd_;  ///< as many as keys, rounded up to a power of two, twice
    base::Array<BoundaryRow> rows_;
    int32_t rowCount_ = 0;
};

}  // namespace vg::raster
