#pragma once

#include <cstdint>

#include "vg/raster/geometry/polygon.h"
#include "vg/raster/pixels/pixel_surface.h"

namespace vg::raster {

/// Stores `pixel` in every pixel of the rectangle that lies on the surface.
void clearRect(const PixelSurface& surface, const PixelRect& rect, uint32_t pixel) noexcept;

}  // namespace vg::raster
