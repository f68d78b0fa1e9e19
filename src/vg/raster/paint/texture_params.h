#pragma once

#include <cstdint>

#include "vg/raster/paint/image_sampler.h"

namespace vg::raster {

/// The projective map from surface pixels, y upwards, to the texels of an image: (x, y, 1) goes to
/// m (x, y, 1) = (u, v, w), and the texel lies at (u / w, v / w). Affine when the last row is
/// (0, 0, 1). Entries are finite and within SurfaceToPaint::kLargestEntry.
struct SurfaceToTexture {
    double m[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
};

/// How an image is resampled; the values of VGImageQuality.
enum class TextureQuality : int32_t {
    kNearest = 1,   ///< the texel that the pixel's centre lies in
    kBilinear = 2,  ///< the four texels around it
    kBetter = 4,    ///< as many bilinear samples as the image is reduced by
};

/// An image as a source of pixels.
struct TextureParams {
    SampledImage image;
    SurfaceToTexture surfaceToTexture;
    TextureQuality quality = TextureQuality::kBilinear;
    TilingMode tiling = TilingMode::kPad;
    float tileFill[4] = {0, 0, 0, 0};  ///< red, green, blue, alpha; not premultiplied; for kFill
    bool colorTransformEnabled = false;
    float colorTransform[8] = {1, 1, 1, 1, 0, 0, 0, 0};  ///< four scales, then four biases
};

/// How an image goes with the paint; the values of VGImageMode.
enum class ImageMode : int32_t {
    kNone = 0,           ///< there is no image
    kNormal = 0x1F00,    ///< the image instead of the paint
    kMultiply = 0x1F01,  ///< the image times the paint, channel by channel
    kStencil = 0x1F02,   ///< the paint, through the image as an opacity of each channel
};

}  // namespace vg::raster
