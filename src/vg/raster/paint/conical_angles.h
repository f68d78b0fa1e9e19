#pragma once

#include <cstdint>

namespace vg::raster {

/// Rows and columns of the table of angles, which spans directions from -1 to 1 both ways.
inline constexpr int32_t kAngleSteps = 64;
inline constexpr float kAngleScale = 31.5F;  ///< (kAngleSteps - 1) / 2

/// Row by row, the angle of the direction (column / 31.5 - 1, row / 31.5 - 1): 0 along +x, rising
/// towards +y, below a full turn of 2^18. Computed at the first call.
const int32_t* conicalAngles() noexcept;

}  // namespace vg::raster
