#pragma once

#include "vg/raster/geometry/polygon.h"

namespace vg {

struct Context;
struct Surface;

/// Stores the clear colour in the part of the rectangle that lies in the scissor. False when memory
/// runs out.
[[nodiscard]] bool clear(Context& context, Surface& surface,
                         const raster::PixelRect& rect) noexcept;

}  // namespace vg
