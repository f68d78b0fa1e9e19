#pragma once

#include "base/array.h"
#include "vg/geometry/vector2.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/stroke/round_fan.h"
#include "vg/vg.h"

namespace vg {

/// Appends what a VGCapStyle puts between center + from and center - from, both left out: nothing,
/// half of a disc or half of a square, clockwise. For the end of a run `from` points to its left,
/// for the start to its right.
void addCap(VGint style, Vector2 center, Vector2 from, RoundFan& fan,
            base::Array<raster::Point>& points) noexcept;

}  // namespace vg
