#pragma once

#include <cstdint>

namespace vg::raster {

struct ChainEdge;

/// Bands that are worked on at once, one to a vector lane.
inline constexpr int32_t kBlockBands = 16;

/// Lanes past the block that vector loads and stores may reach.
inline constexpr int32_t kLaneSlack = 8;

/// Sixteen consecutive bands of the exact sweep, from the top down: band l lies between y[l] and
/// y[l + 1]. Past the last band of the polygon heights repeat, so that the lanes there are empty.
struct BandBlock {
    int32_t firstBand;  ///< index of lane 0's band in the polygon
    int32_t y[kBlockBands + 1 + kLaneSlack];
    int16_t height[kBlockBands + kLaneSlack];    ///< 0..32, in 1/32 pixel; 0 past the block
    int32_t rowStart[kBlockBands + kLaneSlack];  ///< the first cell of the band's pixel row
};

/// A chain that crosses the current block, with its ends in each of the block's bands.
///
/// Only lanes first <= l < last are the chain's own; the others are unspecified. Edges are
/// evaluated a whole vector at a time: what an edge writes past its last band, the next edge
/// overwrites.
struct LiveChain {
    static constexpr int32_t kRoom = kBlockBands + 1 + kLaneSlack;

    const ChainEdge* edge;  ///< the edge at the end of the block, or just above it
    int32_t step;
    int32_t endBand;
    int32_t first, last;
    uint16_t top[kRoom];     ///< x at the band's top, from the left of the polygon's box
    uint16_t bottom[kRoom];  ///< x at the band's bottom
    int16_t sign[kRoom];     ///< +1 left boundary of a span, -1 right, 0 neither
};

/// What one vector row adds to sixteen bands: in each lane one boundary, or nothing (sign 0).
struct BoundaryRow {
    uint16_t top[kBlockBands];
    uint16_t bottom[kBlockBands];
    int16_t sign[kBlockBands];  ///< while rows are sorted: the winding direction, 0 for no edge
};

}  // namespace vg::raster
