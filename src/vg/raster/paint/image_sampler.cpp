// Point and bilinear sampling, instantiated for each storage of texels.

#include "vg/raster/paint/image_sampler.h"

#include <algorithm>
#include <bit>
#include <cassert>

#include "vg/raster/pixels/pixel_io.h"
#include "vg/raster/pixels/pixel_lanes.h"

namespace vg::raster {
namespace {

// How the nine storages turn a packed texel into a colour.

struct Uncolored {
    static uint32_t unpack(uint32_t packed, const PixelFormatDescriptor& format) noexcept {
        return unpackUncolored(packed, format);
    }
};

struct Storage1 : Uncolored {
    static constexpr int kBits = 1;
};
struct Storage4 : Uncolored {
    static constexpr int kBits = 4;
};
struct Storage8 : Uncolored {
    static constexpr int kBits = 8;
};

struct Storage16AlphaLast {  // alpha may be missing
    static constexpr int kBits = 16;
    static uint32_t unpack(uint32_t packed, const PixelFormatDescriptor& format) noexcept {
        return unpackColored(packed, format);
    }
};
struct Storage16AlphaFirst : Storage16AlphaLast {};

template <int32_t kOrder>
struct Storage32 {
    static constexpr int kBits = 32;
    static uint32_t unpack(uint32_t packed, const PixelFormatDescriptor& format) noexcept {
        return unpack32(packed, kOrder) | opaqueBits(format);
    }
};

/// The repetition of the image that a texel coordinate lies in, and where in it.
struct TilePlace {
    bool isOdd;
    int32_t offset;
};

TilePlace tilePlace(int32_t c, int32_t size, int32_t log2) noexcept {
    if (log2 != SampledImage::kNoPowerOfTwo) {
        const int32_t tile = c >= 0 ? c >> log2 : (~c >> log2) + 1;
        return {(tile & 1) != 0, c & (size - 1)};
    }
    const int32_t tile = c >= 0 ? c / size : -((size - 1 - c) / size);
    return {(tile & 1) != 0, c - tile * size};
}

int32_t tileCoordinate(int32_t c, int32_t size, int32_t log2, TilingMode tiling) noexcept {
    if (tiling == TilingMode::kPad) return std::clamp(c, 0, size - 1);
    const TilePlace place = tilePlace(c, size, log2);
    const bool isMirrored = tiling == TilingMode::kReflect && place.isOdd;
    return isMirrored ? size - 1 - place.offset : place.offset;
}

/// Precondition: size >= 1.
constexpr bool isInside(int32_t c, int32_t size) noexcept {
    return static_cast<uint32_t>(c) < static_cast<uint32_t>(size);
}

bool isInside(const SampledImage& image, int32_t x, int32_t y) noexcept {
    return isInside(x, image.width) && isInside(y, image.height);
}

/// The colour of texel (x, y), which may lie anywhere.
template <class Storage>
uint32_t fetch(const SampleRequest& request, const PixelFormatDescriptor& format, int32_t x,
               int32_t y) noexcept {
    const SampledImage& image = *request.image;
    if (!isInside(image, x, y)) {
        if (request.tiling == TilingMode::kFill) return Storage::unpack(request.tileFill, format);
        x = tileCoordinate(x, image.width, image.widthLog2, request.tiling);
        y = tileCoordinate(y, image.height, image.heightLog2, request.tiling);
    }
    const uint8_t* row = image.pixels + int64_t{y} * image.stride;
    return Storage::unpack(loadPixel<Storage::kBits>(row, image.firstX + x), format);
}

/// The mean of the texels around (x, y) to (x + 1, y + 1), weights in 1/256 of the second.
template <class Storage>
uint32_t fetchBilinear(const SampleRequest& request, const PixelFormatDescriptor& format, int32_t x,
                       int32_t y, uint32_t weightX, uint32_t weightY) noexcept {
    const auto row = [&](int32_t rowY) {
        return mix(fetch<Storage>(request, format, x, rowY),
                   fetch<Storage>(request, format, x + 1, rowY), weightX);
    };
    return mix(row(y), row(y + 1), weightY);
}

template <class Storage>
uint32_t sample(const SampleRequest& request) noexcept {
    const PixelFormatDescriptor& source = pixelFormatAt(request.sourceIndex);
    const PixelFormatDescriptor& working = pixelFormatAt(request.workingIndex);
    // Texel centres lie at one half. 64 bits: the smallest coordinate has no half below it.
    const int64_t fixedX = int64_t{request.x} - 0x8000;
    const int64_t fixedY = int64_t{request.y} - 0x8000;
    const auto x = static_cast<int32_t>(fixedX >> 16);
    const auto y = static_cast<int32_t>(fixedY >> 16);
    const bool isFill = request.tiling == TilingMode::kFill && !isInside(*request.image, x, y);
    const uint32_t color =
        request.isBilinear && !isFill
            ? fetchBilinear<Storage>(request, source, x, y, fixedX >> 8 & 0xFF, fixedY >> 8 & 0xFF)
            : fetch<Storage>(request, source, x, y);
    return packColor(convertColor(color, source.flags, working.flags), working);
}

}  // namespace

int32_t sideLog2(int32_t side) noexcept {
    assert(side >= 1);
    const auto bits = static_cast<uint32_t>(side);
    return std::has_single_bit(bits) ? std::countr_zero(bits) : SampledImage::kNoPowerOfTwo;
}

uint32_t sampleImage1(const SampleRequest& request) noexcept { return sample<Storage1>(request); }

uint32_t sampleImage4(const SampleRequest& request) noexcept { return sample<Storage4>(request); }

uint32_t sampleImage8(const SampleRequest& request) noexcept { return sample<Storage8>(request); }

uint32_t sampleImage16AlphaLast(const SampleRequest& request) noexcept {
    return sample<Storage16AlphaLast>(request);
}

uint32_t sampleImage16AlphaFirst(const SampleRequest& request) noexcept {
    return sample<Storage16AlphaFirst>(request);
}

uint32_t sampleImage32RGBA(const SampleRequest& request) noexcept {
    return sample<Storage32<kOrderRgba>>(request);
}

uint32_t sampleImage32ABGR(const SampleRequest& request) noexcept {
    return sample<Storage32<kOrderAbgr>>(request);
}

uint32_t sampleImage32ARGB(const SampleRequest& request) noexcept {
    return sample<Storage32<kOrderArgb>>(request);
}

uint32_t sampleImage32BGRA(const SampleRequest& request) noexcept {
    return sample<Storage32<kOrderBgra>>(request);
}

ImageSampler selectImageSampler(uint32_t format) noexcept {
    const PixelFormatDescriptor* descriptor = findPixelFormat(format);
    if (descriptor == nullptr) return nullptr;
    const uint32_t group = format >> 6;  // bit 0: alpha first, bit 1: blue first
    switch (descriptor->bitsPerPixel) {
        case 1:
            return sampleImage1;
        case 4:
            return sampleImage4;
        case 8:
            return sampleImage8;
        case 16:
            return (group & 1) != 0 ? sampleImage16AlphaFirst : sampleImage16AlphaLast;
        default: {
            constexpr ImageSampler kByGroup[] = {sampleImage32RGBA, sampleImage32ARGB,
                                                 sampleImage32BGRA, sampleImage32ABGR};
            return kByGroup[group];
        }
    }
}

}  // namespace vg::raster
