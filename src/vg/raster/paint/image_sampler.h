#pragma once

#include <cstdint>

namespace vg::raster {

/// What lies beyond the borders of an image; the values of VGTilingMode.
enum class TilingMode : int32_t {
    kFill = 0x1D00,     ///< one colour
    kPad = 0x1D01,      ///< the nearest texel
    kRepeat = 0x1D02,   ///< the image again
    kReflect = 0x1D03,  ///< the image again, every other time mirrored
};

/// The pixels of an image as samplers see them: row 0 first, texel (x, y) in row y.
struct SampledImage {
    static constexpr int32_t kNoPowerOfTwo = -1;

    const uint8_t* pixels = nullptr;
    int32_t stride = 0;  ///< bytes from row to row
    int32_t width = 0;   ///< both sides at least 1
    int32_t height = 0;
    uint32_t format = 0;    ///< a VGImageFormat code with a descriptor
    int32_t widthLog2 = 0;  ///< or kNoPowerOfTwo
    int32_t heightLog2 = 0;
    int32_t firstX = 0;  ///< pixels of a row's first byte before texel 0; 0 from 8 bits a pixel up
};

/// log2 of a side, or SampledImage::kNoPowerOfTwo. Precondition: side >= 1.
int32_t sideLog2(int32_t side) noexcept;

/// The parameters of one sample.
struct SampleRequest {
    const SampledImage* image = nullptr;
    int32_t sourceIndex = 0;   ///< descriptor index of the image's format
    int32_t workingIndex = 0;  ///< descriptor index of the result's format
    int32_t x = 0, y = 0;      ///< 16.16; texel i reaches from i to i + 1
    TilingMode tiling = TilingMode::kPad;
    uint32_t tileFill = 0;  ///< packed in the image's format
    bool isBilinear = false;
};

/// The packed pixel of the working format at the place that the request names. Places outside the
/// image give the tile-fill colour under kFill, filtering or not.
using ImageSampler = uint32_t (*)(const SampleRequest& request) noexcept;

/// The sampler for images stored in a format; null when there is no such format.
ImageSampler selectImageSampler(uint32_t format) noexcept;

// By storage: bits a pixel, and for the wider ones the order of the channels.

uint32_t sampleImage1(const SampleRequest& request) noexcept;
uint32_t sampleImage4(const SampleRequest& request) noexcept;
uint32_t sampleImage8(const SampleRequest& request) noexcept;
uint32_t sampleImage16AlphaLast(const SampleRequest& request) noexcept;
uint32_t sampleImage16AlphaFirst(const SampleRequest& request) noexcept;
uint32_t sampleImage32RGBA(const SampleRequest& request) noexcept;
uint32_t sampleImage32ABGR(const SampleRequest& request) noexcept;
uint32_t sampleImage32ARGB(const SampleRequest& request) noexcept;
uint32_t sampleImage32BGRA(const SampleRequest& request) noexcept;

}  // namespace vg::raster
