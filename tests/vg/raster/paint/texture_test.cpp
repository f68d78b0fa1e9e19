#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "vg/raster/paint/texture_state.h"
#include "vg/raster/raster_fixture.h"

namespace vg::raster {
namespace {

constexpr uint32_t kFormat = 0x42;  // VG_sARGB_8888_PRE, of images and surfaces alike

/// An opaque image of any size with random colours.
struct RandomImage {
    RandomImage(int imageWidth, int imageHeight, uint32_t seed)
        : width(imageWidth), height(imageHeight) {
        std::mt19937 random(seed);
        for (int i = 0; i < width * height; ++i) {
            texels.push_back(0xFF000000 | (static_cast<uint32_t>(random()) & 0xFFFFFF));
        }
    }
    TextureParams texture(TextureQuality quality, TilingMode tiling) const {
        TextureParams params;
        params.image.pixels = reinterpret_cast<const uint8_t*>(texels.data());
        params.image.stride = width * 4;
        params.image.width = width;
        params.image.height = height;
        params.image.format = kFormat;
        params.image.widthLog2 = sideLog2(width);
        params.image.heightLog2 = sideLog2(height);
        params.quality = quality;
        params.tiling = tiling;
        return params;
    }
    uint32_t at(int x, int y) const { return texels[static_cast<size_t>(y * width + x)]; }

    int width, height;
    std::vector<uint32_t> texels;
};

uint32_t pixelOf(const TextureParams& params, int x, int y) {
    TextureState state;
    setupTexture(params, kFormat, TextureForm::kPremultiplied, state);
    uint32_t pixel = 0;
    sampleTexture(state, x, y, 1, &pixel);
    return pixel;
}

int wrapped(int c, int size) { return ((c % size) + size) % size; }

TEST(Texture, NearestTakesTheTexelUnderThePixelsCentre) {
    const RandomImage image(5, 3, 1);
    TextureParams params = image.texture(TextureQuality::kNearest, TilingMode::kRepeat);
    struct Case {
        double scale, offset;
    };
    for (const Case& c : {Case{1, 0}, Case{1, -7}, Case{0.25, 0.1}, Case{2.5, -3.3}}) {
        for (int axis = 0; axis < 2; ++axis) {
            params.surfaceToTexture.m[axis][axis] = c.scale;
            params.surfaceToTexture.m[axis][2] = c.offset;
        }
        for (int x = 0; x < 20; ++x) {
            const auto texel = [&](int p, int size) {
                return wrapped(static_cast<int>(std::floor((p + 0.5) * c.scale + c.offset)), size);
            };
            EXPECT_EQ(pixelOf(params, x, x / 2), image.at(texel(x, 5), texel(x / 2, 3)))
                << c.scale << ' ' << c.offset << " pixel " << x;
        }
    }
}

TEST(Texture, EveryQualityKeepsPixelsThatLieOnTexels) {
    const RandomImage image(4, 4, 2);
    for (const TextureQuality quality :
         {TextureQuality::kNearest, TextureQuality::kBilinear, TextureQuality::kBetter}) {
        TextureParams params = image.texture(quality, TilingMode::kPad);
        params.surfaceToTexture.m[0][2] = -2;
        EXPECT_EQ(pixelOf(params, 3, 2), image.at(1, 2));
        EXPECT_EQ(pixelOf(params, 0, 9), image.at(0, 3)) << "padded";
    }
}

TEST(Texture, BetterQualityAveragesWhatIsReduced) {
    const RandomImage image(16, 16, 3);
    TextureParams params = image.texture(TextureQuality::kBetter, TilingMode::kPad);
    params.surfaceToTexture.m[0][0] = params.surfaceToTexture.m[1][1] = 4;
    const uint32_t pixel = pixelOf(params, 1, 2);
    for (const int shift : {0, 8, 16}) {
        double sum = 0;
        for (int y = 8; y < 12; ++y) {
            for (int x = 4; x < 8; ++x) sum += image.at(x, y) >> shift & 0xFF;
        }
        EXPECT_NEAR(static_cast<double>(pixel >> shift & 0xFF), sum / 16, 1.0);
    }
}

TEST(Texture, ProjectionDividesByItsLastRow) {
    const RandomImage image(64, 64, 4);
    TextureParams params = image.texture(TextureQuality::kNearest, TilingMode::kPad);
    auto& m = params.surfaceToTexture.m;
    m[0][1] = 0.3;
    m[2][0] = 0.02;
    m[2][1] = -0.004;
    for (int i = 0; i < 40; ++i) {
        const int x = (i * 17) % 50, y = (i * 29) % 60;
        const double w = 0.02 * (x + 0.5) - 0.004 * (y + 0.5) + 1;
        const double u = (x + 0.5 + 0.3 * (y + 0.5)) / w, v = (y + 0.5) / w;
        const auto texel = [](double c) { return std::min(63, static_cast<int>(std::floor(c))); };
        EXPECT_EQ(pixelOf(params, x, y), image.at(texel(u), texel(v))) << x << ' ' << y;
    }
}

TEST(Texture, PlacesBeyondAllNumbersAreInsideTheTiling) {
    const RandomImage image(7, 5, 5);
    const double values[] = {0.0, 1e100, -1e100, 3e9, std::numeric_limits<double>::min()};
    for (const TilingMode tiling :
         {TilingMode::kFill, TilingMode::kPad, TilingMode::kRepeat, TilingMode::kReflect}) {
        for (const double scale : values) {
            for (const double last : values) {
                for (const TextureQuality quality :
                     {TextureQuality::kNearest, TextureQuality::kBetter}) {
                    TextureParams params = image.texture(quality, tiling);
                    params.surfaceToTexture.m[0][0] = scale;
                    params.surfaceToTexture.m[1][0] = -scale;
                    params.surfaceToTexture.m[2][0] = last;
                    params.surfaceToTexture.m[2][2] = last;
                    pixelOf(params, 2000, 2000);  // the sanitizers watch
                }
            }
        }
    }
    TextureParams fill = image.texture(TextureQuality::kBilinear, TilingMode::kFill);
    fill.tileFill[1] = fill.tileFill[3] = 1.0F;
    fill.surfaceToTexture.m[0][2] = 1e50;
    EXPECT_EQ(pixelOf(fill, 0, 0), 0xFF00FF00);
}

TEST(Texture, ColourTransformsWorkOnPlainColours) {
    const RandomImage image(1, 1, 6);
    for (const TextureQuality quality : {TextureQuality::kNearest, TextureQuality::kBetter}) {
        TextureParams params = image.texture(quality, TilingMode::kPad);
        params.surfaceToTexture.m[0][0] = quality == TextureQuality::kBetter ? 3 : 1;
        params.colorTransformEnabled = true;
        const float transform[8] = {0, 0.5F, 0, 0.5F, 1, 0, 0.25F, 0};
        std::copy_n(transform, 8, params.colorTransform);
        const double green = (image.texels[0] >> 8 & 0xFF) * 0.5;
        const uint32_t pixel = pixelOf(params, 0, 0);
        EXPECT_EQ(pixel >> 24, 128U);
        EXPECT_NEAR(pixel >> 16 & 0xFF, 128, 1);
        EXPECT_NEAR(pixel >> 8 & 0xFF, green / 2, 1);
        EXPECT_NEAR(pixel & 0xFF, 32, 1);
    }
}

/// Copies give what sampling gives.
TEST(Texture, DirectCopiesAreTheNearestTexels) {
    const RandomImage image(6, 4, 7);
    for (const int32_t mode : {0x2000, 0x2001}) {
        for (const double offset : {0.0, -3.0, 1e6 + 1, -0.4}) {
            Picture copied(40, 30, 0xFF808080), sampled(40, 30, 0xFF808080);
            const Shape shape = rectangle(1, 2, 39, 28.5F);
            for (Picture* picture : {&copied, &sampled}) {
                FillParams params = paramsFor(shape, *picture);
                params.blendMode = mode;
                params.paint.kind = PaintKind::kPattern;
                params.paint.pattern = image.texture(TextureQuality::kNearest, TilingMode::kRepeat);
                params.paint.pattern.surfaceToTexture.m[0][2] = offset;
                params.paint.pattern.surfaceToTexture.m[1][2] = 2 - offset;
                EXPECT_TRUE(isDirectCopy(params.paint.pattern, kFormat));
                // A transform that changes nothing is sampled all the same.
                params.paint.pattern.colorTransformEnabled = picture == &sampled;
                Rasterizer rasterizer;
                ASSERT_TRUE(rasterizer.fill(params));
            }
            EXPECT_EQ(copied.pixels, sampled.pixels) << std::hex << mode << ' ' << offset;
        }
    }
}

TEST(Texture, OnlyExactRepeatsAreCopied) {
    const RandomImage image(4, 4, 8);
    const TextureParams exact = image.texture(TextureQuality::kNearest, TilingMode::kRepeat);
    EXPECT_TRUE(isDirectCopy(exact, kFormat));
    EXPECT_FALSE(isDirectCopy(exact, 0x49)) << "another format";
    TextureParams other = exact;
    other.tiling = TilingMode::kReflect;
    EXPECT_FALSE(isDirectCopy(other, kFormat));
    other = exact;
    other.surfaceToTexture.m[0][1] = 1.3e-7;
    EXPECT_FALSE(isDirectCopy(other, kFormat));
    other.surfaceToTexture.m[0][1] = 1.1e-7;
    EXPECT_TRUE(isDirectCopy(other, kFormat));
}

}  // namespace
}  // namespace vg::raster
