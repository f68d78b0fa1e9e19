#pragma once

#include "vg/raster/draw_params.h"
#include "vg/vg.h"

namespace vg {

struct Context;
struct Surface;

enum class PaintSetup {
    kReady,
    kDrawsNothing,  ///< a gradient under a matrix that has no inverse
    kOutOfMemory,
};

/// Fills what the rasterizer needs of the context's paint for filling or stroking. The params may
/// point into the paint and are valid until the next call or a change of the paint.
PaintSetup setupPaintParams(Context& context, const Surface& surface, VGPaintMode mode,
                            raster::PaintParams& params) noexcept;

}  // namespace vg
