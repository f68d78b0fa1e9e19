#pragma once

#include <cstdint>

#include "vg/path/path.h"

// Coordinates of a path between its storage and user space: a stored value v, be it a position, a
// difference, a radius or an angle, stands for v * scale + bias.
namespace vg {

inline constexpr int32_t kMaxSegmentCoordinates = 6;

/// Reads `count` user coordinates from coordinate `first` on.
void loadCoordinates(const Path& path, int32_t first, int32_t count, double* values) noexcept;

/// Stores `count` user coordinates from coordinate `first` on. Whole-number datatypes round to
/// nearest and saturate. Precondition: the path's data holds that many.
void storeCoordinates(Path& path, int32_t first, int32_t count, const double* values) noexcept;

}  // namespace vg
