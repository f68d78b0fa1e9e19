#pragma once

#include "vg/raster/geometry/fixed.h"
#include "vg/raster/geometry/polygon.h"

namespace vg::raster {

/// True when the polygon is one rectangle along pixel borders; `rect` is then its pixels. Such a
/// rectangle covers each pixel wholly or not at all under every fill rule and quality.
bool isAlignedRectangle(const FixedPolygon& polygon, PixelRect& rect) noexcept;

}  // namespace vg::raster
