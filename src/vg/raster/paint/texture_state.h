#pragma once

#include <cstdint>

#include "vg/raster/paint/texture_params.h"

namespace vg::raster {

/// What a texture gives: pixels of the surface's colour space in one of these forms.
enum class TextureForm : uint8_t { kPremultiplied, kPlain };

/// A texture ready to be sampled on a surface, computed once per draw.
struct TextureState {
    static constexpr int32_t kMaxSamplesPerSide = 8;

    SampledImage image;
    ImageSampler sampler = nullptr;
    SampleRequest request;  ///< all but the image and the place
    SurfaceToTexture map;   ///< of pixel centres
    bool isAffine = true;
    int32_t samplesPerSide = 1;  ///< of the square of samples whose mean is a pixel
    TextureForm sampledForm = TextureForm::kPremultiplied;  ///< what the sampler returns
    TextureForm form = TextureForm::kPremultiplied;         ///< what the texture gives
    bool isTransformed = false;
    uint8_t transform[4][256] = {};  ///< the colour transform: blue, green, red, alpha, by byte
};

/// Fills the state for surfaces of the format.
void setupTexture(const TextureParams& params, uint32_t surfaceFormat, TextureForm form,
                  TextureState& state) noexcept;

/// The texture at the centres of `count` pixels of row y from column x. A pixel depends on its
/// place alone.
void sampleTexture(const TextureState& state, int32_t x, int32_t y, int32_t count,
                   uint32_t* pixels) noexcept;

/// Applies the colour transform of the state to plain pixels.
void transformColors(const TextureState& state, uint32_t* pixels, int32_t count) noexcept;

/// The texel of pixel (0, 0), inside the image, where pixels are copies of texels: pixel (x, y) is
/// texel (x + texelX, y + texelY), wrapped around.
struct DirectTexel {
    int32_t texelX = 0, texelY = 0;
};

/// True when the texture repeats an image of exactly the surface's format pixel by pixel, so that
/// its texels can be copied.
bool isDirectCopy(const TextureParams& params, uint32_t surfaceFormat) noexcept;

/// Precondition: isDirectCopy().
DirectTexel directTexelOf(const TextureParams& params) noexcept;

}  // namespace vg::raster
