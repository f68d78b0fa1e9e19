#include "vg/raster/paint/image_sampler.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "vg/raster/color_oracle.h"
#include "vg/raster/pixels/pixel_io.h"

namespace vg::raster {
namespace {

constexpr TilingMode kTilings[] = {TilingMode::kFill, TilingMode::kPad, TilingMode::kRepeat,
                                   TilingMode::kReflect};

/// An image of random bits.
struct RandomImage {
    RandomImage(uint32_t format, int32_t width, int32_t height, std::mt19937& random) {
        const int32_t bits = findPixelFormat(format)->bitsPerPixel;
        const int32_t stride = (width * bits + 7) / 8 + 3;  // rows start anywhere
        bytes.resize(static_cast<size_t>(stride) * static_cast<size_t>(height));
        for (uint8_t& byte : bytes) byte = static_cast<uint8_t>(random());
        view = {bytes.data(), stride, width, height, format, sideLog2(width), sideLog2(height)};
    }

    uint32_t packedAt(int32_t x, int32_t y) const {
        const int32_t bits = findPixelFormat(view.format)->bitsPerPixel;
        uint32_t packed = 0;
        for (int32_t i = bits - 1; i >= 0; --i) {
            const auto bit = static_cast<size_t>(y * view.stride * 8 + x * bits + i);
            packed = packed << 1 | (bytes[bit / 8] >> bit % 8 & 1);
        }
        return packed;
    }

    std::vector<uint8_t> bytes;
    SampledImage view;
};

/// Walks back into the image, a tile at a time.
int32_t walkInside(int32_t c, int32_t size, TilingMode tiling) {
    if (tiling == TilingMode::kPad) return c < 0 ? 0 : c >= size ? size - 1 : c;
    bool isMirrored = false;
    for (; c < 0; c += size) isMirrored = !isMirrored;
    for (; c >= size; c -= size) isMirrored = !isMirrored;
    return tiling == TilingMode::kReflect && isMirrored ? size - 1 - c : c;
}

struct NaiveSampler {
    const RandomImage& image;
    SampleRequest request;
    const PixelFormatDescriptor& source = pixelFormatAt(request.sourceIndex);
    const PixelFormatDescriptor& working = pixelFormatAt(request.workingIndex);

    bool isOutside(int32_t x, int32_t y) const {
        return x < 0 || x >= image.view.width || y < 0 || y >= image.view.height;
    }

    oracle::Color texel(int32_t x, int32_t y) const {
        if (isOutside(x, y) && request.tiling == TilingMode::kFill) {
            return oracle::unpack(request.tileFill, source);
        }
        return oracle::unpack(image.packedAt(walkInside(x, image.view.width, request.tiling),
                                             walkInside(y, image.view.height, request.tiling)),
                              source);
    }

    static oracle::Color between(const oracle::Color& a, const oracle::Color& b, int weight) {
        oracle::Color color = a;
        for (int i = 0; i < 4; ++i) {
            const int step = (b.channel[i] - a.channel[i]) * weight;
            color.channel[i] += static_cast<int>(std::floor(step / 256.0));
        }
        return color;
    }

    uint32_t sample() const {
        const double fixedX = request.x - 32768.0, fixedY = request.y - 32768.0;
        const auto x = static_cast<int32_t>(std::floor(fixedX / 65536));
        const auto y = static_cast<int32_t>(std::floor(fixedY / 65536));
        oracle::Color color = texel(x, y);
        if (request.isBilinear && !(isOutside(x, y) && request.tiling == TilingMode::kFill)) {
            const auto weight = [](double fixed) {
                return static_cast<int>(std::floor(fixed / 256) - 256 * std::floor(fixed / 65536));
            };
            color = between(between(color, texel(x + 1, y), weight(fixedX)),
                            between(texel(x, y + 1), texel(x + 1, y + 1), weight(fixedX)),
                            weight(fixedY));
        }
        return oracle::pack(oracle::convert(color, source.flags, working.flags), working);
    }
};

SampleRequest requestFor(const RandomImage& image, uint32_t working) {
    SampleRequest request;
    request.image = &image.view;
    request.sourceIndex = pixelFormatIndex(image.view.format);
    request.workingIndex = pixelFormatIndex(working);
    return request;
}

TEST(ImageSampler, AgreesWithTheNaiveOneForEveryFormat) {
    std::mt19937 random(8);
    const struct { int32_t width, height; } sizes[] = {{1, 1}, {4, 8}, {5, 3}};
    for (const uint32_t format : oracle::allFormats()) {
        const ImageSampler sampler = selectImageSampler(format);
        ASSERT_NE(sampler, nullptr);
        for (const auto& size : sizes) {
            const RandomImage image(format, size.width, size.height, random);
            for (const uint32_t working : {0x41U, 0x42U, 0x49U, 0x81U}) {
                for (int i = 0; i < 200; ++i) {
                    SampleRequest request = requestFor(image, working);
                    request.tiling = kTilings[random() % 4];
                    request.isBilinear = random() % 2 == 0;
                    request.tileFill = image.packedAt(0, 0);
                    request.x = static_cast<int32_t>(random() % (20 << 16)) - (8 << 16);
                    request.y = static_cast<int32_t>(random() % (20 << 16)) - (8 << 16);
                    if (i % 8 == 0) request.x &= ~0x7FFF;  // centres and borders of texels
                    ASSERT_EQ(sampler(request), (NaiveSampler{image, request}.sample()))
                        << std::hex << format << " -> " << working << ", tiling "
                        << static_cast<int>(request.tiling) << " at " << request.x << ", "
                        << request.y << (request.isBilinear ? " bilinear" : "");
                }
            }
        }
    }
}

TEST(ImageSampler, IsChosenByStorage) {
    const struct {
        uint32_t format;
        ImageSampler sampler;
    } cases[] = {{0x0C, sampleImage1},
                 {0x0D, sampleImage1},
                 {0x0E, sampleImage4},
                 {0x06, sampleImage8},
                 {0x0A, sampleImage8},
                 {0x0B, sampleImage8},
                 {0x03, sampleImage16AlphaLast},
                 {0x84, sampleImage16AlphaLast},
                 {0x44, sampleImage16AlphaFirst},
                 {0xC5, sampleImage16AlphaFirst},
                 {0x09, sampleImage32RGBA},
                 {0xC0, sampleImage32ABGR},
                 {0x42, sampleImage32ARGB},
                 {0x88, sampleImage32BGRA},
                 {0x43, nullptr},
                 {0x0F, nullptr},
                 {0x142, nullptr}};
    for (const auto& c : cases) {
        EXPECT_EQ(selectImageSampler(c.format), c.sampler) << std::hex << c.format;
    }
}

TEST(ImageSampler, PlacesAtTheBorders) {
    std::vector<uint8_t> texels = {10, 20, 30, 40};
    SampledImage image = {texels.data(), 4, 4, 1, 0x06, 2, 0};
    constexpr uint32_t kFill = 99;
    const struct {
        const char* name;
        TilingMode tiling;
        bool isBilinear;
        int32_t x;
        uint32_t grey;
    } cases[] = {
        {"the first centre is texel 0 alone", TilingMode::kFill, true, 0x8000, 10},
        {"just before it is texel -1", TilingMode::kFill, false, 0x7FFF, kFill},
        {"and not filtered with texel 0", TilingMode::kFill, true, 0x7FFF, kFill},
        {"the last texel is filtered with the fill", TilingMode::kFill, true, 4 << 16, 69},
        {"padding on the left", TilingMode::kPad, false, -(5 << 16), 10},
        {"padding on the right", TilingMode::kPad, true, 9 << 16, 40},
        {"reflecting -1 gives 0", TilingMode::kReflect, false, -0x8000, 10},
        {"reflecting 4 gives 3", TilingMode::kReflect, false, 0x48000, 40},
        {"repeating 4 gives 0", TilingMode::kRepeat, false, 0x48000, 10},
        {"repeating -1 gives 3", TilingMode::kRepeat, false, -0x8000, 40},
        {"half way", TilingMode::kPad, true, 0x10000, 15},
        {"the smallest coordinate", TilingMode::kPad, true, std::numeric_limits<int32_t>::min(),
         10},
        {"the largest", TilingMode::kPad, true, std::numeric_limits<int32_t>::max(), 40},
    };
    for (const auto& c : cases) {
        SampleRequest request;
        request.image = &image;
        request.sourceIndex = pixelFormatIndex(0x06);
        request.workingIndex = pixelFormatIndex(0x42);
        request.x = c.x;
        request.y = 0x8000;
        request.tiling = c.tiling;
        request.tileFill = kFill;
        request.isBilinear = c.isBilinear;
        EXPECT_EQ(sampleImage8(request), 0xFF000000 | c.grey * 0x010101) << c.name;
    }
}

}  // namespace
}  // namespace vg::raster
