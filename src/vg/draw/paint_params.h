#pragma once

#include "vg/raster/fill_params.h"
#include "vg/vg.h"

namespace vg {

struct Context;
struct Image;
struct Surface;

enum class PaintSetup {
    kReady,
    kDrawsNothing,  ///< a gradient or a pattern under a matrix that has no inverse
    kOutOfMemory,
};

/// What a paint is asked for.
struct PaintUse {
    VGPaintMode mode = VG_FILL_PATH;  ///< which of the context's two paints
    VGMatrixMode userMatrix = VG_MATRIX_PATH_USER_TO_SURFACE;  ///< what paint-to-user goes into
    bool transformsColors = true;  ///< whether the colour transform applies to the paint's colours
    raster::ImageMode imageMode = raster::ImageMode::kNone;  ///< of the image it goes with

    PaintUse(VGPaintMode paintMode) noexcept : mode(paintMode) {}  // the use for a path
};

/// Fills what the rasterizer needs of the context's paint for filling or stroking. The params may
/// point into the paint and are valid until the next call or a change of the paint.
PaintSetup setupPaintParams(Context& context, const Surface& surface, const PaintUse& use,
                            raster::PaintParams& params) noexcept;

/// Fills the image, the quality and the colour transform of a texture; the params point into the
/// image.
void setupTexture(const Context& context, const Image& image, bool transformsColors,
                  raster::TextureParams& texture) noexcept;

}  // namespace vg
