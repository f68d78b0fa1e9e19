#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "vg/engine_fixture.h"
#include "vg/image/image_samples.h"

namespace vg {
namespace {

constexpr int kSide = 24;

struct DrawImage : EngineFixture {
    DrawImage() : EngineFixture(kSide, kSide, {.alphaMask = true, .premultiplied = true}) {
        vgSeti(VG_IMAGE_QUALITY, VG_IMAGE_QUALITY_NONANTIALIASED);
    }
    ~DrawImage() override { EXPECT_EQ(vgGetError(), VG_NO_ERROR); }

    static void place(const VGfloat (&rows)[3][3]) {
        loadMatrix(VG_MATRIX_IMAGE_USER_TO_SURFACE, rows);
    }
    static void placeAt(VGfloat x, VGfloat y) { place({{1, 0, x}, {0, 1, y}, {0, 0, 1}}); }

    bool isEmpty() const {
        return std::all_of(surface->pixels.begin(), surface->pixels.end(),
                           [](uint32_t pixel) { return pixel == 0; });
    }
    void empty() { std::fill(surface->pixels.begin(), surface->pixels.end(), 0U); }
    std::vector<uint32_t> pixels() const {
        return {surface->pixels.begin(), surface->pixels.end()};
    }
    void expectChannels(int x, int y, const double (&argb)[4]) const {
        for (int i = 0; i < 4; ++i) {
            EXPECT_NEAR(pixelAt(x, y) >> (24 - 8 * i) & 0xFF, 255.0 * argb[i], 2.0)
                << "channel " << i << " at " << x << ", " << y;
        }
    }
};

struct PlacementCase {
    const char* name;
    VGfloat matrix[3][3];
    /// From the centre of a surface pixel to texels, by hand: texel = (a x + b y + c, ...).
    double back[2][3];
};

const PlacementCase kPlacements[] = {
    {"as it is", {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{1, 0, 0}, {0, 1, 0}}},
    {"moved", {{1, 0, 5}, {0, 1, 2}, {0, 0, 1}}, {{1, 0, -5}, {0, 1, -2}}},
    {"over the border", {{1, 0, -2}, {0, 1, 22}, {0, 0, 1}}, {{1, 0, 2}, {0, 1, -22}}},
    {"twice the size", {{2, 0, 4}, {0, 2, 6}, {0, 0, 1}}, {{0.5, 0, -2}, {0, 0.5, -3}}},
    {"turned by 90 degrees", {{0, -1, 9}, {1, 0, 3}, {0, 0, 1}}, {{0, 1, -3}, {-1, 0, 9}}},
    {"upside down", {{1, 0, 1}, {0, -1, 10}, {0, 0, 1}}, {{1, 0, -1}, {0, -1, 10}}},
    {"narrowed threefold", {{1.0F / 3, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{3, 0, 0}, {0, 1, 0}}},
};

TEST_F(DrawImage, PutsTexelsWhereTheMatrixSays) {
    constexpr int kWidth = 6, kHeight = 4;
    const auto colors = opaqueColors(kWidth * kHeight, 51);
    const VGImage image = imageOf(colors, kWidth, kHeight);
    for (const PlacementCase& c : kPlacements) {
        for (const VGint quality : {VG_RENDERING_QUALITY_NONANTIALIASED,
                                    VG_RENDERING_QUALITY_FASTER, VG_RENDERING_QUALITY_BETTER}) {
            SCOPED_TRACE(testing::Message() << c.name << ", quality " << std::hex << quality);
            vgSeti(VG_RENDERING_QUALITY, quality);
            empty();
            place(c.matrix);
            vgDrawImage(image);
            for (int y = 0; y < kSide; ++y) {
                for (int x = 0; x < kSide; ++x) {
                    const auto texel = [&](int i) {
                        return static_cast<int>(std::floor(
                            c.back[i][0] * (x + 0.5) + c.back[i][1] * (y + 0.5) + c.back[i][2]));
                    };
                    const int u = texel(0), v = texel(1);
                    const bool isInside = u >= 0 && u < kWidth && v >= 0 && v < kHeight;
                    ASSERT_EQ(pixelAt(x, y),
                              isInside ? colors[static_cast<size_t>(v * kWidth + u)] : 0U)
                        << x << ", " << y;
                }
            }
        }
    }
}

TEST_F(DrawImage, CoversItsOutlineWithAntialiasing) {
    const VGImage image = imageOf(std::vector<uint32_t>(16, 0xFFFFFFFF), 4, 4);
    placeAt(2.5F, 3.25F);
    vgDrawImage(image);
    expectChannels(2, 3, {0.375, 0.375, 0.375, 0.375});  // half of the columns, 3/4 of the rows
    expectChannels(3, 3, {0.75, 0.75, 0.75, 0.75});
    EXPECT_EQ(pixelAt(4, 5), 0xFFFFFFFF);
    expectChannels(6, 7, {0.125, 0.125, 0.125, 0.125});
}

/// The texel that a surface place shows under a projective matrix, by Cramer's rule on
/// (row 0 - X row 2) (u, v, 1) = 0 and (row 1 - Y row 2) (u, v, 1) = 0.
void texelUnder(const VGfloat (&m)[3][3], double x, double y, double (&texel)[2]) {
    double rows[2][3];
    for (int i = 0; i < 3; ++i) {
        rows[0][i] = m[0][i] - x * m[2][i];
        rows[1][i] = m[1][i] - y * m[2][i];
    }
    const double determinant = rows[0][0] * rows[1][1] - rows[0][1] * rows[1][0];
    texel[0] = (rows[0][1] * rows[1][2] - rows[0][2] * rows[1][1]) / determinant;
    texel[1] = (rows[0][2] * rows[1][0] - rows[0][0] * rows[1][2]) / determinant;
}

TEST_F(DrawImage, InPerspective) {
    constexpr int kTexels = 8;
    const auto colors = opaqueColors(kTexels * kTexels, 52);
    const VGImage image = imageOf(colors, kTexels, kTexels);
    const VGfloat views[][3][3] = {{{2, 0.3F, 1}, {0.1F, 2, 1}, {0.02F, 0.05F, 1}},
                                   {{3, 1, 2}, {0, 4, 3}, {0, 0.1F, 0.9F}},
                                   {{2, 0, 4}, {0, 2, 6}, {0, 0, 2}}};  // affine but for a factor
    vgSeti(VG_RENDERING_QUALITY, VG_RENDERING_QUALITY_NONANTIALIASED);
    vgSeti(VG_IMAGE_MODE, VG_DRAW_IMAGE_STENCIL);  // which does not go with a perspective
    for (const auto& view : views) {
        empty();
        place(view);
        vgDrawImage(image);
        int inside = 0;
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x) {
                double texel[2];
                texelUnder(view, x + 0.5, y + 0.5, texel);
                const auto isNearBorder = [](double t) {
                    return std::fabs(t - std::round(t)) < 0.05;
                };
                if (isNearBorder(texel[0]) || isNearBorder(texel[1])) continue;
                const bool isInside =
                    texel[0] > 0 && texel[0] < kTexels && texel[1] > 0 && texel[1] < kTexels;
                const auto index =
                    static_cast<size_t>(static_cast<int>(texel[1]) * kTexels + texel[0]);
                ASSERT_EQ(pixelAt(x, y), isInside ? colors[index] : 0U) << x << ", " << y;
                inside += isInside;
            }
        }
        EXPECT_GT(inside, 20);
    }
}

TEST_F(DrawImage, DrawsNothingThatCannotBeSeen) {
    const VGImage image = imageOf(opaqueColors(16, 53), 4, 4);
    constexpr float kMost = std::numeric_limits<float>::max();
    constexpr float kLeast = std::numeric_limits<float>::denorm_min();
    const VGfloat hidden[][3][3] = {
        {{0, 0, 0}, {0, 0, 0}, {0, 0, 1}},
        {{1, 2, 3}, {2, 4, 6}, {0, 0, 1}},      // a line
        {{1, 0, 3}, {0, 1, 3}, {-0.3F, 0, 1}},  // two corners behind the viewer
        {{1, 0, 3}, {0, 1, 3}, {0, 0, 0}},      // all at infinity
        {{1, 0, 3}, {0, 1, 3}, {0, 0, -1}},     // all behind
        {{1, 0, 100}, {0, 1, 100}, {0, 0, 1}},  // beside the surface
        {{1, 0, kMost}, {0, 1, -kMost}, {0, 0, 1}},
        {{kMost, kMost, 1}, {kMost, kMost, 1}, {kMost, kMost, 1}},
    };
    for (const auto& matrix : hidden) {
        place(matrix);
        vgDrawImage(image);
        EXPECT_TRUE(isEmpty()) << matrix[0][0] << " " << matrix[0][2];
    }
    const VGfloat extreme[][3][3] = {{{kMost, 0, -kMost}, {0, kMost, -kMost}, {0, 0, 1}},
                                     {{kMost, 0, 0}, {0, kMost, 0}, {kMost, kLeast, kLeast}},
                                     {{kLeast, 0, 0}, {0, kMost, 0}, {0, 0, kLeast}},
                                     {{NAN, INFINITY, 1}, {-INFINITY, NAN, 1}, {NAN, 1, 1}}};
    for (const auto& matrix : extreme) {  // whatever is drawn, it ends
        place(matrix);
        vgDrawImage(image);
    }
}

TEST_F(DrawImage, BlendsEachPixelOnceWithinTheScissor) {
    const VGImage image = imageOf(std::vector<uint32_t>(100, 0x80FFFFFF), 10, 10);
    const VGint rects[] = {0, 0, 6, 6, 3, 3, 6, 6, 20, 20, 4, 4, 4, 0, 1, 30};
    vgSetiv(VG_SCISSOR_RECTS, 16, rects);
    vgSeti(VG_SCISSORING, VG_TRUE);
    placeAt(1, 1);
    vgDrawImage(image);
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const bool isAllowed = (x < 6 && y < 6) || (x >= 3 && x < 9 && y >= 3 && y < 9) ||
                                   (x >= 20 && y >= 20) || x == 4;
            const bool isImage = x >= 1 && x < 11 && y >= 1 && y < 11;
            ASSERT_EQ(pixelAt(x, y), isAllowed && isImage ? 0x807F7F7FU : 0U) << x << ", " << y;
        }
    }
    empty();
    vgSetiv(VG_SCISSOR_RECTS, 0, nullptr);
    vgDrawImage(image);
    EXPECT_TRUE(isEmpty());
}

TEST_F(DrawImage, BlendsAsFillsDo) {
    const VGImage image = imageOf(std::vector<uint32_t>(4, 0x80FF0000), 2, 2);
    const VGfloat blue[] = {0, 0, 1, 1};
    vgSetfv(VG_CLEAR_COLOR, 4, blue);
    vgSeti(VG_STROKE_BLEND_MODE_KRN, VG_BLEND_SRC);
    vgClear(0, 0, kSide, kSide);
    vgDrawImage(image);
    expectChannels(1, 1, {1.0, 0.5, 0.0, 0.5});
    vgSeti(VG_FILL_BLEND_MODE_KRN, VG_BLEND_SRC);
    vgDrawImage(image);
    expectChannels(1, 1, {0.5, 0.5, 0.0, 0.0});
    EXPECT_EQ(pixelAt(2, 1), 0xFF0000FF);
}

TEST_F(DrawImage, GoesWithThePaintByTheMode) {
    const VGImage image = imageOf({0x80FF8000}, 1, 1);  // orange, half there
    const VGPaint paint = vgCreatePaint();
    vgSetColor(paint, 0x4080FF80);  // 0.25, 0.5, 1; half there
    vgSetPaint(paint, VG_FILL_PATH);
    vgSeti(VG_BLEND_MODE, VG_BLEND_SRC);
    vgSeti(VG_IMAGE_MODE, VG_DRAW_IMAGE_NORMAL);
    vgDrawImage(image);
    expectChannels(0, 0, {0.5, 0.5, 0.25, 0.0});
    vgSeti(VG_IMAGE_MODE, VG_DRAW_IMAGE_MULTIPLY);
    vgDrawImage(image);
    expectChannels(0, 0, {0.25, 0.25 * 0.25, 0.25 * 0.25, 0.0});

    // A stencil's channels are opacities of the paint's, one by one.
    const VGfloat blue[] = {0, 0, 1, 1};
    vgSetfv(VG_CLEAR_COLOR, 4, blue);
    vgClear(0, 0, kSide, kSide);
    vgSeti(VG_BLEND_MODE, VG_BLEND_SRC_OVER);
    vgSeti(VG_IMAGE_MODE, VG_DRAW_IMAGE_STENCIL);
    vgDrawImage(image);
    const double red = 0.5 * 0.5, green = 0.5 * 0.25, blueOpacity = 0.0;  // paint's times image's
    expectChannels(0, 0, {1.0, 0.25 * red, 0.5 * green, 1.0 - blueOpacity});
}

TEST_F(DrawImage, MapsThePaintThroughTheImageMatrix) {
    const VGImage white = imageOf(std::vector<uint32_t>(64, 0xFFFFFFFF), 8, 8);
    const auto colors = opaqueColors(2, 54);
    const VGImage pattern = imageOf(colors, 2, 1);
    const VGPaint paint = vgCreatePaint();
    vgPaintPattern(paint, pattern);
    vgSetParameteri(paint, VG_PAINT_TYPE, VG_PAINT_TYPE_PATTERN);
    vgSetParameteri(paint, VG_PAINT_PATTERN_TILING_MODE, VG_TILE_PAD);
    vgSetPaint(paint, VG_FILL_PATH);
    vgSeti(VG_IMAGE_MODE, VG_DRAW_IMAGE_MULTIPLY);
    loadMatrix(VG_MATRIX_PATH_USER_TO_SURFACE, {{9, 0, 7}, {0, 9, 7}, {0, 0, 1}});  // of no matter
    loadMatrix(VG_MATRIX_FILL_PAINT_TO_USER, {{1, 0, 2}, {0, 1, 0}, {0, 0, 1}});
    place({{2, 0, 4}, {0, 1, 0}, {0, 0, 1}});
    vgDrawImage(white);
    for (int x = 0; x < kSide; ++x) {
        // The pattern's second texel begins at 3 units of the image.
        const uint32_t expected = x < 4 || x >= 20 ? 0U : colors[x >= 4 + 3 * 2];
        ASSERT_EQ(pixelAt(x, 5), expected) << x;
    }
}

TEST_F(DrawImage, TransformsTheColorsThatImageAndPaintMake) {
    const VGImage image = imageOf({0xFF808080}, 1, 1);
    const VGPaint paint = vgCreatePaint();
    vgSetColor(paint, 0x80FF80FF);
    vgSetPaint(paint, VG_FILL_PATH);
    const VGfloat halfRed[] = {0.5F, 1, 1, 1, 0, 0, 0, 0};
    vgSetfv(VG_COLOR_TRANSFORM_VALUES, 8, halfRed);
    vgSeti(VG_COLOR_TRANSFORM, VG_TRUE);
    vgDrawImage(image);
    expectChannels(0, 0, {1.0, 0.25, 0.5, 0.5});
    vgSeti(VG_IMAGE_MODE, VG_DRAW_IMAGE_MULTIPLY);
    vgDrawImage(image);
    expectChannels(0, 0, {1.0, 0.125, 0.5, 0.25});
    empty();
    vgSeti(VG_IMAGE_MODE, VG_DRAW_IMAGE_STENCIL);
    vgDrawImage(image);
    EXPECT_NEAR(pixelAt(0, 0) >> 16 & 0xFF, 0.5 * 0.5 * 0.5 * 255, 2.0);
    EXPECT_NEAR(pixelAt(0, 0) >> 8 & 0xFF, 0.5 * 255, 2.0);
}

TEST_F(DrawImage, UsesTheBestQualityThatBothAllow) {
    const auto colors = opaqueColors(4, 55);
    place({{4, 0, 0}, {0, 4, 0}, {0, 0, 1}});
    const struct {
        VGbitfield allowed;
        VGint asked;
        bool isFiltered;
    } cases[] = {{kAllQualities, VG_IMAGE_QUALITY_NONANTIALIASED, false},
                 {kAllQualities, VG_IMAGE_QUALITY_FASTER, true},
                 {kAllQualities, VG_IMAGE_QUALITY_BETTER, true},
                 {VG_IMAGE_QUALITY_NONANTIALIASED, VG_IMAGE_QUALITY_BETTER, false},
                 {VG_IMAGE_QUALITY_FASTER, VG_IMAGE_QUALITY_BETTER, true},
                 {VG_IMAGE_QUALITY_BETTER, VG_IMAGE_QUALITY_FASTER, false}};
    for (const auto& c : cases) {
        const VGImage image = vgCreateImage(VG_sARGB_8888, 2, 2, c.allowed);
        vgImageSubData(image, colors.data(), 8, VG_sARGB_8888, 0, 0, 2, 2);
        vgSeti(VG_IMAGE_QUALITY, c.asked);
        vgDrawImage(image);
        EXPECT_EQ(pixelAt(3, 0) != colors[0], c.isFiltered) << c.allowed << ", " << c.asked;
        EXPECT_EQ(pixelAt(0, 0), colors[0]) << "the border is not mixed with what is beyond";
    }
}

TEST_F(DrawImage, ShowsChildrenAtAnyPlaceOfTheirParent) {
    for (const VGint format : {VG_sARGB_8888, VG_sRGB_565, VG_sL_8, VG_A_4, VG_BW_1}) {
        const VGImage parent = imageOf(opaqueColors(13 * 3, 56), 13, 3, format);
        for (const int x : {0, 1, 3, 4}) {
            empty();
            const VGImage child = vgChildImage(parent, x, 1, 9, 2);
            const auto colors = contentsOf(child);
            vgDrawImage(child);
            for (size_t i = 0; i < colors.size(); ++i) {
                const auto column = static_cast<int>(i % 9);
                ASSERT_EQ(pixelAt(column, static_cast<int>(i / 9)), colors[i])
                    << std::hex << format << ": " << i;
            }
        }
    }
}

TEST_F(DrawImage, RefusesOtherHandles) {
    for (const VGHandle bad : {VG_INVALID_HANDLE, vgCreatePaint(), vgCreateMaskLayer(2, 2)}) {
        vgDrawImage(bad);
        EXPECT_EQ(vgGetError(), VG_BAD_HANDLE_ERROR);
    }
}

}  // namespace
}  // namespace vg
