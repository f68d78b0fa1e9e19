#pragma once

#include <cstdint>

namespace vg::raster {

/// Bands that are worked on at once, one to a vector lane.
inline constexpr int32_t kBlockBands = 16;

/// Lanes past the block that vectors may reach.
inline constexpr int32_t kLaneSlack = 8;

/// Sixteen consecutive bands of the exact sweep, from the top down: band l lies between y[l] and
/// y[l + 1]. Past the last band of the polygon heights repeat, so that the lanes there are empty.
struct BandBlock {
    int32_t firstBand;  ///< index of lane 0's band in the polygon
    int32_t y[kBlockBands + 1 + kLaneSlack];
    int16_t height[kBlockBands + kLaneSlack];    ///< 0..32, in 1/32 pixel; 0 past the block
    int32_t rowStart[kBlockBands + kLaneSlack];  ///< the first cell of the band's pixel row
};

}  // namespace vg::raster
