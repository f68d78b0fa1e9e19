#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "vg/draw/paint_params.h"
#include "vg/engine_fixture.h"
#include "vg/image/image.h"
#include "vg/image/image_samples.h"
#include "vg/paint/paint.h"

namespace vg {
namespace {

constexpr int kWidth = 4;
constexpr int kHeight = 2;
constexpr uint32_t kFillColor = 0xFF336699;

struct PatternPaint : EngineFixture {
    PatternPaint() : EngineFixture(20, 20), colors(opaqueColors(kWidth * kHeight, 61)) {
        image = imageOf(colors, kWidth, kHeight);
        paint = vgCreatePaint();
        vgPaintPattern(paint, image);
        vgSetParameteri(paint, VG_PAINT_TYPE, VG_PAINT_TYPE_PATTERN);
        vgSetPaint(paint, VG_FILL_PATH);
        vgSeti(VG_IMAGE_QUALITY, VG_IMAGE_QUALITY_NONANTIALIASED);
        const VGfloat fill[] = {0x33 / 255.0F, 0x66 / 255.0F, 0x99 / 255.0F, 1.0F};
        vgSetfv(VG_TILE_FILL_COLOR, 4, fill);
    }
    ~PatternPaint() override { EXPECT_EQ(vgGetError(), VG_NO_ERROR); }

    static void drawAll() {
        vgSeti(VG_MATRIX_MODE, VG_MATRIX_PATH_USER_TO_SURFACE);
        vgDrawPath(rectanglePath(-50, -50, 200, 200), VG_FILL_PATH);
    }

    /// Every pixel shows what colorAt(x, y) of its texel is, where the texel is given by the map.
    template <class ColorAt>
    void expectTexels(const double (&back)[2][3], const ColorAt& colorAt) const {
        for (int y = 0; y < 20; ++y) {
            for (int x = 0; x < 20; ++x) {
                const auto texel = [&](int i) {
                    return static_cast<int>(
                        std::floor(back[i][0] * (x + 0.5) + back[i][1] * (y + 0.5) + back[i][2]));
                };
                ASSERT_EQ(pixelAt(x, y), colorAt(texel(0), texel(1))) << x << ", " << y;
            }
        }
    }
    uint32_t texel(int x, int y) const { return colors[static_cast<size_t>(y * kWidth + x)]; }

    raster::PaintParams setup() const {
        raster::PaintParams params;
        EXPECT_EQ(setupPaintParams(*context, *surface, VG_FILL_PATH, params), PaintSetup::kReady);
        return params;
    }

    std::vector<uint32_t> colors;
    VGImage image;
    VGPaint paint;
};

int wrapped(int i, int size) { return (i % size + size) % size; }

int reflected(int i, int size) {
    const int place = wrapped(i, 2 * size);
    return place < size ? place : 2 * size - 1 - place;
}

TEST_F(PatternPaint, FillsWithTilesOfEachMode) {
    loadMatrix(VG_MATRIX_FILL_PAINT_TO_USER, {{1, 0, 7}, {0, 1, 9}, {0, 0, 1}});
    const double back[2][3] = {{1, 0, -7}, {0, 1, -9}};
    const auto isInside = [](int x, int y) {
        return x >= 0 && x < kWidth && y >= 0 && y < kHeight;
    };
    drawAll();  // the tiling mode is VG_TILE_FILL at first
    expectTexels(back, [&](int x, int y) { return isInside(x, y) ? texel(x, y) : kFillColor; });
    vgSetParameteri(paint, VG_PAINT_PATTERN_TILING_MODE, VG_TILE_PAD);
    drawAll();
    expectTexels(back, [&](int x, int y) {
        return texel(std::clamp(x, 0, kWidth - 1), std::clamp(y, 0, kHeight - 1));
    });
    vgSetParameteri(paint, VG_PAINT_PATTERN_TILING_MODE, VG_TILE_REPEAT);
    drawAll();
    expectTexels(back,
                 [&](int x, int y) { return texel(wrapped(x, kWidth), wrapped(y, kHeight)); });
    vgSetParameteri(paint, VG_PAINT_PATTERN_TILING_MODE, VG_TILE_REFLECT);
    drawAll();
    expectTexels(back,
                 [&](int x, int y) { return texel(reflected(x, kWidth), reflected(y, kHeight)); });
}

TEST_F(PatternPaint, LiesUnderBothMatrices) {
    vgSetParameteri(paint, VG_PAINT_PATTERN_TILING_MODE, VG_TILE_REPEAT);
    // Turned by 90 degrees, then twice as large and moved.
    loadMatrix(VG_MATRIX_FILL_PAINT_TO_USER, {{0, -1, 1}, {1, 0, 0}, {0, 0, 1}});
    loadMatrix(VG_MATRIX_PATH_USER_TO_SURFACE, {{2, 0, 3}, {0, 2, 5}, {0, 0, 1}});
    drawAll();
    expectTexels({{0, 0.5, -2.5}, {-0.5, 0, 2.5}},
                 [&](int x, int y) { return texel(wrapped(x, kWidth), wrapped(y, kHeight)); });
}

TEST_F(PatternPaint, HoldsItsImage) {
    vgDestroyImage(image);
    vgSetParameteri(paint, VG_PAINT_PATTERN_TILING_MODE, VG_TILE_PAD);
    drawAll();
    EXPECT_EQ(pixelAt(1, 1), texel(1, 1));
    vgPaintPattern(paint, VG_INVALID_HANDLE);
    vgSetColor(paint, 0x112233FF);
    drawAll();
    EXPECT_EQ(pixelAt(1, 1), 0xFF112233) << "without an image, the colour";
}

TEST_F(PatternPaint, RefusesOtherHandles) {
    expectEach(
        VG_BAD_HANDLE_ERROR, [&] { vgPaintPattern(image, image); },
        [&] { vgPaintPattern(VG_INVALID_HANDLE, image); }, [&] { vgPaintPattern(paint, paint); },
        [&] { vgPaintPattern(paint, image + 100); });
    EXPECT_EQ(context->findPaint(paint)->pattern, context->findImage(image));
}

TEST_F(PatternPaint, HandsTheRasterizerItsState) {
    const VGfloat transform[] = {0.5F, 1, 1, 1, 0, 0, 0.25F, 0};
    vgSetfv(VG_COLOR_TRANSFORM_VALUES, 8, transform);
    vgSeti(VG_COLOR_TRANSFORM, VG_TRUE);
    vgSeti(VG_IMAGE_QUALITY, VG_IMAGE_QUALITY_BETTER);
    vgSetParameteri(paint, VG_PAINT_PATTERN_TILING_MODE, VG_TILE_REFLECT);
    loadMatrix(VG_MATRIX_FILL_PAINT_TO_USER, {{2, 0, 6}, {0, 4, 4}, {0, 0, 1}});
    const raster::PaintParams params = setup();
    EXPECT_EQ(params.kind, raster::PaintKind::kPattern);
    EXPECT_EQ(params.pattern.image.pixels, context->findImage(image)->pixels);
    EXPECT_EQ(params.pattern.quality, raster::TextureQuality::kBetter);
    EXPECT_EQ(params.pattern.tiling, raster::TilingMode::kReflect);
    EXPECT_EQ(params.pattern.tileFill[1], 0x66 / 255.0F);
    EXPECT_TRUE(params.pattern.colorTransformEnabled);
    EXPECT_EQ(params.pattern.colorTransform[6], 0.25F);
    const auto& m = params.pattern.surfaceToTexture.m;
    EXPECT_EQ(m[0][0], 0.5);
    EXPECT_EQ(m[0][2], -3.0);
    EXPECT_EQ(m[1][2], -1.0);
    EXPECT_EQ(m[2][2], 1.0);

    vgPaintPattern(paint, VG_INVALID_HANDLE);
    EXPECT_EQ(setup().kind, raster::PaintKind::kColor);
    vgPaintPattern(paint, image);
    loadMatrix(VG_MATRIX_FILL_PAINT_TO_USER, {{1, 2, 0}, {2, 4, 0}, {0, 0, 1}});
    raster::PaintParams none;
    EXPECT_EQ(setupPaintParams(*context, *surface, VG_FILL_PATH, none), PaintSetup::kDrawsNothing);
}

TEST_F(PatternPaint, RampsAndPatternsSurviveRecovery) {
    vgSetParameteri(paint, VG_PAINT_TYPE, VG_PAINT_TYPE_LINEAR_GRADIENT);
    drawAll();
    const uint32_t before = pixelAt(0, 0);
    Paint* held = context->findPaint(paint);
    EXPECT_EQ(held->ramps.buildCount(), 1U);
    context->recoverMemory();
    drawAll();
    EXPECT_EQ(held->ramps.buildCount(), 2U);
    EXPECT_EQ(pixelAt(0, 0), before);
    vgDestroyPaint(paint);  // the context still holds it
    context->recoverMemory();
    drawAll();
    EXPECT_EQ(held->ramps.buildCount(), 3U);
}

}  // namespace
}  // namespace vg
