#pragma once

// What one fill hands to the rasterizer: plain structures, never the engine's context.

#include <cstdint>

#include "vg/raster/geometry/polygon.h"
#include "vg/raster/paint/gradient_params.h"
#include "vg/raster/paint/texture_params.h"
#include "vg/raster/pixels/pixel_surface.h"

namespace vg::raster {

/// The paint of one draw.
struct PaintParams {
    PaintKind kind = PaintKind::kColor;
    GradientParams gradient;                    ///< of a gradient
    TextureParams pattern;                      ///< of a pattern; a colour has the three below
    float color[4] = {0.0F, 0.0F, 0.0F, 1.0F};  ///< red, green, blue, alpha; not premultiplied
    bool colorTransformEnabled = false;
    float colorTransform[8] = {1, 1, 1, 1, 0, 0, 0, 0};  ///< four scales, then four biases
};

/// Everything that one fill needs.
struct FillParams {
    Polygon polygon;
    Affine userToSurface;
    FillRule fillRule = FillRule::kEvenOdd;
    Quality quality = Quality::kBetter;
    int32_t blendMode = 0x2001;  ///< a VGBlendMode
    PixelSurface surface;
    PixelRect clip;  ///< inside the surface
    PaintParams paint;
    /// One byte a pixel, in the surface's row order; scales coverage. Null: no masking.
    const uint8_t* mask = nullptr;
    ImageMode imageMode = ImageMode::kNone;  ///< how `image` goes with the paint
    /// Of an image draw. Its colour transform applies to the colours drawn: under kMultiply to the
    /// product, with none on the paint; a stencil has none, and the paint's counts.
    TextureParams image;
};

}  // namespace vg::raster
