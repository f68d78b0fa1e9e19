#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <vector>

#include "vg/engine_fixture.h"
#include "vg/image/image_samples.h"

namespace vg {
namespace {

constexpr int kWidth = 12;
constexpr int kHeight = 9;

struct Masks : EngineFixture {
    Masks() : EngineFixture(kWidth, kHeight, {.alphaMask = true, .premultiplied = true}) {}

    uint8_t maskAt(int32_t x, int32_t y) const { return surface->maskArea().row(y)[x]; }

    /// Values from the lower left, row by row, as seen by vgCopyMask through a mask layer.
    std::vector<uint8_t> values() const {
        std::vector<uint8_t> all;
        for (int y = 0; y < kHeight; ++y) {
            for (int x = 0; x < kWidth; ++x) all.push_back(maskAt(x, y));
        }
        return all;
    }

    void expectNone() const { EXPECT_EQ(vgGetError(), VG_NO_ERROR); }
};

/// An image of random alpha.
VGImage alphaImage(VGint width, VGint height, uint32_t seed) {
    auto colors = opaqueColors(width * height, seed);
    for (uint32_t& color : colors) color = color << 24 | 0x123456;
    colors[0] = 0;
    colors[1] |= 0xFF000000;
    return imageOf(colors, width, height, VG_A_8);
}

/// The operations as formulas in 0..1.
double combined(VGint operation, double before, double value) {
    switch (operation) {
        case VG_CLEAR_MASK:
            return 0.0;
        case VG_FILL_MASK:
            return 1.0;
        case VG_SET_MASK:
            return value;
        case VG_UNION_MASK:
            return 1.0 - (1.0 - before) * (1.0 - value);
        case VG_INTERSECT_MASK:
            return before * value;
        default:
            return before * (1.0 - value);
    }
}

TEST_F(Masks, StartFullAndAreFullAfterAResize) {
    EXPECT_EQ(values(), std::vector<uint8_t>(kWidth * kHeight, 255));
    vgMask(VG_INVALID_HANDLE, VG_CLEAR_MASK, 0, 0, kWidth, kHeight);
    EXPECT_EQ(values(), std::vector<uint8_t>(kWidth * kHeight, 0));
    ASSERT_TRUE(resizeSurface(surface, 30, 20));
    EXPECT_EQ(surface->mask.count(), 30 * 20);
    EXPECT_TRUE(std::all_of(surface->mask.begin(), surface->mask.end(),
                            [](uint8_t value) { return value == 255; }));
    EXPECT_EQ(activeMask(*context, *surface), nullptr);
    vgSeti(VG_MASKING, VG_TRUE);
    EXPECT_EQ(activeMask(*context, *surface), surface->mask.data());
    expectNone();
}

struct MaskRect {
    const char* name;
    VGint x, y, width, height;
};
const MaskRect kRects[] = {{"inside", 2, 3, 4, 4},
                           {"over the lower left", -2, -1, 6, 7},
                           {"over the upper right", 9, 5, 100, 100},
                           {"wider than the values", 1, 1, INT_MAX, INT_MAX},
                           {"beside", kWidth, 0, 5, 5},
                           {"far away", INT_MIN, INT_MAX, INT_MAX, INT_MAX}};

TEST_F(Masks, OperationsAreThoseOfTheFormulas) {
    constexpr int kSide = 8;
    const VGImage image = alphaImage(kSide, kSide, 41);
    const VGImage start = alphaImage(kWidth, kHeight, 42);
    const auto added = contentsOf(image);
    for (VGint operation = VG_CLEAR_MASK; operation <= VG_SUBTRACT_MASK; ++operation) {
        for (const MaskRect& r : kRects) {
            SCOPED_TRACE(testing::Message() << r.name << ", operation " << operation);
            vgMask(start, VG_SET_MASK, 0, 0, kWidth, kHeight);
            const auto before = values();
            vgMask(image, operation, r.x, r.y, r.width, r.height);
            const bool isLimited = operation > VG_FILL_MASK;
            for (int64_t y = 0; y < kHeight; ++y) {
                for (int64_t x = 0; x < kWidth; ++x) {
                    const int64_t fromX = x - r.x, fromY = y - r.y;
                    const bool isInside = fromX >= 0 && fromX < r.width && fromY >= 0 &&
                                          fromY < r.height &&
                                          (!isLimited || (fromX < kSide && fromY < kSide));
                    const uint8_t old = before[static_cast<size_t>(y * kWidth + x)];
                    uint8_t expected = old;
                    if (isInside) {
                        const auto index = static_cast<size_t>(fromY * kSide + fromX);
                        const uint32_t value = isLimited ? added[index] >> 24 : 0;
                        expected = static_cast<uint8_t>(
                            std::lround(255.0 * combined(operation, old / 255.0, value / 255.0)));
                    }
                    const auto at = [](int64_t i) { return static_cast<int32_t>(i); };
                    ASSERT_EQ(maskAt(at(x), at(y)), expected) << x << ", " << y;
                }
            }
        }
    }
    expectNone();
}

TEST_F(Masks, TakeAlphaOrElseRedFromEveryFormat) {
    const uint32_t colors[] = {0x00000000, 0xFFFFFFFF, 0x40FF8020, 0xC020FF80};
    for (VGint format = 0; format < 0x100; ++format) {
        const auto* descriptor = raster::findPixelFormat(static_cast<uint32_t>(format));
        if (descriptor == nullptr || format == VG_sABGR_1555) continue;  // whose fields overlap
        SCOPED_TRACE(testing::Message() << std::hex << format);
        const VGImage image = imageOf({colors, colors + 4}, 4, 1, format);
        vgMask(image, VG_SET_MASK, 0, 0, 4, 1);
        // Read back without a change of colour space or premultiplication.
        const bool isLinear = (descriptor->flags & raster::kLinear) != 0;
        const bool isPremultiplied = (descriptor->flags & raster::kPremultiplied) != 0;
        const VGint plain = isLinear ? VG_lARGB_8888 : VG_sARGB_8888;
        uint32_t words[4];
        vgGetImageSubData(image, words, 16, isPremultiplied ? plain + 1 : plain, 0, 0, 4, 1);
        const int shift = (descriptor->flags & raster::kHasAlpha) != 0 ? 24 : 16;
        for (int x = 0; x < 4; ++x) EXPECT_EQ(maskAt(x, 0), words[x] >> shift & 0xFF) << x;
        EXPECT_EQ(maskAt(1, 0), 255);
        vgDestroyImage(image);
    }
    expectNone();
}

TEST_F(Masks, LayersHoldWhatIsFilledOrCopied) {
    const VGMaskLayer layer = vgCreateMaskLayer(kWidth, kHeight);
    vgMask(layer, VG_INTERSECT_MASK, 0, 0, kWidth, kHeight);
    EXPECT_EQ(values(), std::vector<uint8_t>(kWidth * kHeight, 255)) << "full at first";
    vgFillMaskLayer(layer, 1, 2, 3, 4, 0.5F);
    vgMask(layer, VG_SET_MASK, 0, 0, kWidth, kHeight);
    EXPECT_EQ(std::count(surface->mask.begin(), surface->mask.end(), 128), 12);
    EXPECT_EQ(maskAt(1, 2), 128);
    EXPECT_EQ(maskAt(3, 5), 128);
    EXPECT_EQ(maskAt(4, 5), 255);

    // Away to a layer, shifted, and back again.
    const VGImage image = alphaImage(kWidth, kHeight, 43);
    vgMask(image, VG_SET_MASK, 0, 0, kWidth, kHeight);
    const auto before = values();
    vgCopyMask(layer, 2, -1, 0, 0, kWidth, kHeight);
    vgMask(VG_INVALID_HANDLE, VG_CLEAR_MASK, 0, 0, kWidth, kHeight);
    vgMask(layer, VG_SET_MASK, -2, 1, kWidth, kHeight);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const bool isBack = x < kWidth - 2 && y >= 1;
            const auto i = static_cast<size_t>(y * kWidth + x);
            ASSERT_EQ(maskAt(x, y), isBack ? before[i] : 0) << x << ", " << y;
        }
    }
    vgDestroyMaskLayer(layer);
    expectNone();
}

TEST_F(Masks, CallsRefuseWhatCannotBe) {
    const VGMaskLayer layer = vgCreateMaskLayer(4, 4);
    const VGImage image = imageOf(opaqueColors(4, 44), 2, 2);
    const VGPath path = rectanglePath(1, 1, 2, 2);
    const float nan = std::numeric_limits<float>::quiet_NaN();

    for (const VGHandle bad : {VG_INVALID_HANDLE, path, layer + 100}) {
        expectEach(
            VG_BAD_HANDLE_ERROR, [&] { vgMask(bad, VG_SET_MASK, 0, 0, 1, 1); },
            [&] { vgFillMaskLayer(bad, 0, 0, 1, 1, 0.0F); },
            [&] { vgCopyMask(bad, 0, 0, 0, 0, 1, 1); }, [&] { vgDestroyMaskLayer(bad); });
    }
    expectEach(
        VG_BAD_HANDLE_ERROR, [&] { vgRenderToMask(image, VG_FILL_PATH, VG_SET_MASK); },
        [&] { vgDestroyMaskLayer(image); }, [&] { vgDestroyImage(layer); });
    vgGetParameteri(layer, VG_IMAGE_WIDTH);
    EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR);

    for (const VGint bad : {VG_CLEAR_MASK - 1, VG_SUBTRACT_MASK + 1}) {
        expectEach(
            VG_ILLEGAL_ARGUMENT_ERROR, [&] { vgMask(image, bad, 0, 0, 1, 1); },
            [&] { vgRenderToMask(path, VG_FILL_PATH, bad); });
    }
    expectEach(
        VG_ILLEGAL_ARGUMENT_ERROR, [&] { vgMask(image, VG_SET_MASK, 0, 0, 0, 1); },
        [&] { vgMask(VG_INVALID_HANDLE, VG_FILL_MASK, 0, 0, 1, -1); },
        [&] { vgRenderToMask(path, 4, VG_SET_MASK); },
        [&] { vgRenderToMask(path, 0, VG_SET_MASK); });
    for (const float bad : {-0.1F, 1.1F, INFINITY}) {
        vgFillMaskLayer(layer, 0, 0, 1, 1, bad);
        EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR);
    }
    vgFillMaskLayer(layer, 0, 0, 1, 1, nan);  // which is 0
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
    expectEach(
        VG_ILLEGAL_ARGUMENT_ERROR, [&] { vgFillMaskLayer(layer, -1, 0, 1, 1, 0.0F); },
        [&] { vgFillMaskLayer(layer, 0, 1, 1, 4, 0.0F); },
        [&] { vgCopyMask(layer, 0, 0, 0, 0, INT_MIN, 1); });
    for (const VGint bad : {0, -1, 23171, INT_MAX}) {
        EXPECT_EQ(vgCreateMaskLayer(bad, 1), VG_INVALID_HANDLE);
        EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR);
    }
    EXPECT_EQ(values(), std::vector<uint8_t>(kWidth * kHeight, 255));
}

TEST_F(Masks, AreNotThereOnOtherSurfaces) {
    const VGMaskLayer layer = vgCreateMaskLayer(4, 4);
    Surface* plain = createSurface(kWidth, kHeight, {.premultiplied = true});
    ASSERT_TRUE(makeCurrent(context, plain));
    vgSeti(VG_MASKING, VG_TRUE);
    EXPECT_EQ(activeMask(*context, *plain), nullptr);
    EXPECT_EQ(vgCreateMaskLayer(4, 4), VG_INVALID_HANDLE);
    vgMask(layer, VG_SET_MASK, 0, 0, 4, 4);
    vgMask(layer, VG_CLEAR_MASK, 0, 0, 4, 4);
    vgRenderToMask(rectanglePath(0, 0, 3, 3), VG_FILL_PATH, VG_SET_MASK);
    vgCopyMask(layer, 0, 0, 0, 0, 4, 4);
    vgFillMaskLayer(layer, 0, 0, 4, 4, 0.0F);
    vgDestroyMaskLayer(layer);
    expectNone();
    ASSERT_TRUE(makeCurrent(context, surface));
    EXPECT_EQ(values(), std::vector<uint8_t>(kWidth * kHeight, 255));
    destroySurface(plain);
}

TEST_F(Masks, OfAnotherSubKindAreNoLayers) {
    const VGMaskLayer layer = vgCreateMaskLayer(4, 4);
    Object* object =
        context->shared->objects.find(layer, context->contextId, ObjectKind::kMaskLayer);
    ASSERT_NE(object, nullptr);
    object->subKind = VG_A_4;
    vgFillMaskLayer(layer, 0, 0, 4, 4, 0.0F);
    EXPECT_EQ(vgGetError(), VG_BAD_HANDLE_ERROR);
    object->subKind = VG_A_8;
}

TEST_F(Masks, RenderedAreTheCoverageOfADraw) {
    const VGPath path = rectanglePath(2.3F, 1.6F, 6.5F, 5.2F);
    const VGPaint paint = vgCreatePaint();
    vgSetColor(paint, 0xFF000080);
    vgSetf(VG_STROKE_LINE_WIDTH, 1.5F);
    for (const VGint quality : {VG_RENDERING_QUALITY_NONANTIALIASED, VG_RENDERING_QUALITY_FASTER,
                                VG_RENDERING_QUALITY_BETTER}) {
        vgSeti(VG_RENDERING_QUALITY, quality);
        vgSeti(VG_MASKING, VG_FALSE);
        std::vector<uint8_t> coverage[2];
        for (const VGbitfield mode : {VG_FILL_PATH, VG_STROKE_PATH}) {
            ASSERT_TRUE(resizeSurface(surface, kWidth, kHeight));
            vgDrawPath(path, mode);
            for (int i = 0; i < kWidth * kHeight; ++i) {
                const uint32_t pixel = surface->view().row(i / kWidth)[i % kWidth];
                coverage[mode == VG_STROKE_PATH].push_back(static_cast<uint8_t>(pixel >> 24));
            }
        }
        // Neither paints, blend modes nor the mask itself matter.
        vgSetPaint(paint, VG_FILL_PATH | VG_STROKE_PATH);
        vgSeti(VG_BLEND_MODE, VG_BLEND_SRC);
        vgSeti(VG_MASKING, VG_TRUE);
        ASSERT_TRUE(resizeSurface(surface, kWidth, kHeight));
        vgMask(VG_INVALID_HANDLE, VG_CLEAR_MASK, 0, 0, 5, kHeight);
        vgRenderToMask(path, VG_FILL_PATH, VG_SET_MASK);
        EXPECT_EQ(values(), coverage[0]);
        vgRenderToMask(path, VG_FILL_PATH | VG_STROKE_PATH, VG_SET_MASK);
        EXPECT_EQ(values(), coverage[1]) << "the fill first";
        vgRenderToMask(path, VG_FILL_PATH, VG_SUBTRACT_MASK);
        for (size_t i = 0; i < coverage[0].size(); ++i) {
            const double expected =
                combined(VG_SUBTRACT_MASK, coverage[1][i] / 255.0, coverage[0][i] / 255.0);
            ASSERT_EQ(values()[i], std::lround(expected * 255.0)) << i;
        }
        vgRenderToMask(path, VG_STROKE_PATH, VG_FILL_MASK);
        EXPECT_EQ(values(), std::vector<uint8_t>(kWidth * kHeight, 255));
        EXPECT_EQ(vgGetPaint(VG_FILL_PATH), paint);
        EXPECT_EQ(vgGeti(VG_BLEND_MODE), VG_BLEND_SRC);
        EXPECT_EQ(vgGeti(VG_MASKING), VG_TRUE);
        EXPECT_EQ(pixelAt(5, 4), 0U) << "nothing is drawn";
        vgSetPaint(VG_INVALID_HANDLE, VG_FILL_PATH | VG_STROKE_PATH);
        vgSeti(VG_BLEND_MODE, VG_BLEND_SRC_OVER);
    }
    expectNone();
}

TEST_F(Masks, ScaleTheCoverageOfDraws) {
    const VGImage image = alphaImage(kWidth, kHeight, 45);
    vgMask(image, VG_SET_MASK, 0, 0, kWidth, kHeight);
    const VGImage white =
        imageOf(std::vector<uint32_t>(kWidth * kHeight, 0xFFFFFFFF), kWidth, kHeight);
    vgDrawImage(white);
    EXPECT_EQ(pixelAt(0, 0), 0xFFFFFFFF) << "masking is off";
    vgClear(0, 0, kWidth, kHeight);
    vgSeti(VG_MASKING, VG_TRUE);
    vgDrawImage(white);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            EXPECT_NEAR(pixelAt(x, y) >> 24, maskAt(x, y), 2) << x << ", " << y;
        }
    }
    vgClear(0, 0, kWidth, kHeight);
    EXPECT_EQ(pixelAt(1, 0), 0U) << "clears are not masked";
    expectNone();
}

}  // namespace
}  // namespace vg
