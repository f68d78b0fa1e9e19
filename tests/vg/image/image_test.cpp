#include "vg/image/image.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <vector>

#include "vg/engine_fixture.h"
#include "vg/image/image_samples.h"

namespace vg {
namespace {

using Images = EngineFixture;
using SurfacePixels = EngineFixture;

VGImage makeImage(VGint format, VGint width, VGint height) {
    return vgCreateImage(format, width, height, VG_IMAGE_QUALITY_FASTER);
}

TEST_F(Images, StartAsZerosAndTellTheirParameters) {
    const VGImage image = makeImage(VG_sRGB_565, 7, 3);
    EXPECT_EQ(vgGetParameteri(image, VG_IMAGE_FORMAT), VG_sRGB_565);
    EXPECT_EQ(vgGetParameteri(image, VG_IMAGE_WIDTH), 7);
    EXPECT_EQ(vgGetParameterf(image, VG_IMAGE_HEIGHT), 3.0F);
    EXPECT_EQ(contentsOf(image), std::vector<uint32_t>(21, 0xFF000000));
    vgSetParameteri(image, VG_IMAGE_WIDTH, 9);  // read-only: ignored
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
    vgSetParameteri(image, VG_PAINT_TYPE, 0);
    EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_EQ(vgGetParameteri(image, VG_IMAGE_WIDTH), 7);
}

TEST_F(Images, CreationRefusesWhatCannotBe) {
    const struct {
        const char* name;
        VGint format, width, height;
        VGbitfield quality;
        VGErrorCode error;
    } cases[] = {
        {"no such format", 0x43, 1, 1, 1, VG_UNSUPPORTED_IMAGE_FORMAT_ERROR},
        {"a format beyond all", -1, 1, 1, 1, VG_UNSUPPORTED_IMAGE_FORMAT_ERROR},
        {"no width", 0x42, 0, 1, 1, VG_ILLEGAL_ARGUMENT_ERROR},
        {"negative height", 0x42, 1, -1, 1, VG_ILLEGAL_ARGUMENT_ERROR},
        {"too wide", 0x42, 23171, 1, 1, VG_ILLEGAL_ARGUMENT_ERROR},
        {"too high", 0x42, 1, INT_MAX, 1, VG_ILLEGAL_ARGUMENT_ERROR},
        {"no quality", 0x42, 1, 1, 0, VG_ILLEGAL_ARGUMENT_ERROR},
        {"unknown quality", 0x42, 1, 1, 8, VG_ILLEGAL_ARGUMENT_ERROR},
        {"wide but flat", 0x42, 23170, 1, 7, VG_NO_ERROR},
    };
    for (const auto& c : cases) {
        const VGImage image = vgCreateImage(c.format, c.width, c.height, c.quality);
        EXPECT_EQ(image != VG_INVALID_HANDLE, c.error == VG_NO_ERROR) << c.name;
        EXPECT_EQ(vgGetError(), c.error) << c.name;
    }
}

TEST_F(Images, CallsRefuseBadHandlesSizesAndMemory) {
    const VGImage image = makeImage(VG_sARGB_8888, 4, 4);
    const VGPaint paint = vgCreatePaint();
    uint32_t words[16] = {};
    auto* bytes = reinterpret_cast<uint8_t*>(words);
    for (const VGHandle bad : {VG_INVALID_HANDLE, paint, image + 2}) {
        expectEach(
            VG_BAD_HANDLE_ERROR, [&] { vgClearImage(bad, 0, 0, 1, 1); },
            [&] { vgImageSubData(bad, words, 16, VG_sARGB_8888, 0, 0, 4, 4); },
            [&] { vgCopyImage(image, 0, 0, bad, 0, 0, 1, 1, VG_FALSE); },
            [&] { vgSetPixels(0, 0, bad, 0, 0, 1, 1); }, [&] { vgDestroyImage(bad); });
    }
    vgImageSubData(image, words, 16, 0x46, 0, 0, 4, 4);
    EXPECT_EQ(vgGetError(), VG_UNSUPPORTED_IMAGE_FORMAT_ERROR);
    expectEach(
        VG_ILLEGAL_ARGUMENT_ERROR,
        [&] { vgImageSubData(image, nullptr, 16, VG_sARGB_8888, 0, 0, 4, 4); },
        [&] { vgImageSubData(image, bytes + 2, 16, VG_sARGB_8888, 0, 0, 1, 1); });
    vgImageSubData(image, bytes + 1, 16, VG_A_4, 0, 0, 1, 1);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
    expectEach(
        VG_ILLEGAL_ARGUMENT_ERROR,
        [&] { vgGetImageSubData(image, words, 16, VG_sARGB_8888, 0, 0, 0, 4); },
        [&] { vgClearImage(image, 0, 0, 4, -4); }, [&] { vgCopyPixels(0, 0, 1, 1, INT_MIN, 4); });
}

TEST_F(Images, LiveAsLongAsTheyAreHeld) {
    const VGImage handle = makeImage(VG_sARGB_8888, 2, 2);
    Image* image = context->findImage(handle);
    retain(image);  // as a paint does
    vgDestroyImage(handle);
    EXPECT_EQ(context->findImage(handle), nullptr);
    EXPECT_EQ(image->width, 2);
    image->pixels[15] = 1;
    release(image);
    EXPECT_EQ(makeImage(VG_A_1, 1, 1), handle);
}

TEST_F(Images, RectanglesAreCutAtBothSides) {
    const auto words = opaqueColors(64, 21);
    const struct {
        const char* name;
        VGint x, y, width, height;
    } cases[] = {{"inside", 1, 2, 3, 4},
                 {"over the lower left", -3, -2, 8, 8},
                 {"over the upper right", 4, 3, 8, 8},
                 {"all over", -1, -1, 8, 8},
                 {"beside", 6, 0, 8, 8},
                 {"far away", INT_MIN, INT_MAX, 8, 8}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const VGImage image = makeImage(VG_sARGB_8888, 6, 6);
        vgImageSubData(image, words.data(), 8 * 4, VG_sARGB_8888, c.x, c.y, c.width, c.height);
        std::vector<uint32_t> back(64, 7);
        vgGetImageSubData(image, back.data(), 8 * 4, VG_sARGB_8888, c.x, c.y, c.width, c.height);
        const auto all = contentsOf(image);
        for (int64_t y = 0; y < 8; ++y) {
            for (int64_t x = 0; x < 8; ++x) {
                const bool isCopied = x < c.width && y < c.height && c.x + x >= 0 && c.x + x < 6 &&
                                      c.y + y >= 0 && c.y + y < 6;
                const auto i = static_cast<size_t>(y * 8 + x);
                ASSERT_EQ(back[i], isCopied ? words[i] : 7) << x << ", " << y;
                if (!isCopied) continue;
                ASSERT_EQ(all[static_cast<size_t>((c.y + y) * 6 + c.x + x)], words[i]);
            }
        }
        vgDestroyImage(image);
    }
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(Images, EveryFormatKeepsTheColorsItCanHold) {
    // White, black and the clear colour survive in all formats that have them.
    for (VGint format = 0; format < 0x100; ++format) {
        if (raster::findPixelFormat(static_cast<uint32_t>(format)) == nullptr) continue;
        if (format == VG_sABGR_1555) continue;  // two of its fields overlap
        const VGImage image = makeImage(format, 11, 5);
        const VGfloat white[] = {1, 1, 1, 1};
        vgSetfv(VG_CLEAR_COLOR, 4, white);
        vgClearImage(image, 1, 1, 3, INT_MAX);
        const auto words = contentsOf(image);
        for (int y = 0; y < 5; ++y) {
            for (int x = 0; x < 11; ++x) {
                const uint32_t word = words[static_cast<size_t>(y * 11 + x)];
                const bool isCleared = x >= 1 && x < 4 && y >= 1;
                ASSERT_EQ(word == 0xFFFFFFFF, isCleared) << std::hex << format;
            }
        }
        vgDestroyImage(image);
    }
}

TEST_F(Images, CopiesWithinOneImageMayOverlap) {
    for (const VGint format : {VG_sARGB_8888, VG_sRGB_565, VG_A_4, VG_BW_1}) {
        const VGImage from = makeImage(format, 13, 9);
        const auto words = opaqueColors(13 * 9, 22);
        for (const int dx : {-3, 0, 2}) {
            for (const int dy : {-1, 0, 4}) {
                vgImageSubData(from, words.data(), 13 * 4, VG_sARGB_8888, 0, 0, 13, 9);
                const VGImage apart = makeImage(format, 13, 9);
                vgCopyImage(apart, 0, 0, from, 0, 0, 13, 9, VG_FALSE);
                vgCopyImage(apart, 2 + dx, 1 + dy, from, 2, 1, 9, 7, VG_TRUE);
                vgCopyImage(from, 2 + dx, 1 + dy, from, 2, 1, 9, 7, VG_FALSE);
                ASSERT_EQ(contentsOf(from), contentsOf(apart)) << dx << ", " << dy;
                vgDestroyImage(apart);
            }
        }
    }
    const VGImage image = makeImage(VG_sARGB_8888, 4, 4);
    vgCopyImage(image, INT_MIN, INT_MAX, image, INT_MAX, INT_MIN, INT_MAX, INT_MAX, VG_FALSE);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(SurfacePixels, AreCopiedBottomRowFirst) {
    const auto words = opaqueColors(12, 23);
    vgWritePixels(words.data(), 16, VG_sARGB_8888_PRE, 2, 5, 4, 3);
    EXPECT_EQ(pixelAt(2, 5), words[0]);
    EXPECT_EQ(pixelAt(5, 7), words[11]);
    EXPECT_EQ(pixelAt(6, 5), 0U);

    const VGImage image = makeImage(VG_sRGBA_8888_PRE, 4, 3);
    vgGetPixels(image, 0, 0, 2, 5, 4, 3);
    EXPECT_EQ(contentsOf(image), words);
    vgSetPixels(-1, 0, image, 0, 0, 4, 3);
    EXPECT_EQ(pixelAt(0, 0), words[1]);
    std::vector<uint32_t> back(12);
    vgReadPixels(back.data() + 8, -16, VG_sARGB_8888_PRE, 2, 5, 4, 3);  // rows downwards
    EXPECT_EQ(back[8], words[0]);
    EXPECT_EQ(back[3], words[11]);
    vgCopyPixels(3, 6, 2, 5, 4, 3);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 4; ++x) {
            EXPECT_EQ(pixelAt(3 + x, 6 + y), words[static_cast<size_t>(y * 4 + x)]);
        }
    }
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(SurfacePixels, AreWrittenAndClearedWithinTheScissor) {
    const VGint rects[] = {1, 1, 4, 4, 3, 3, 5, 2, 14, 14, 100, 100};
    vgSetiv(VG_SCISSOR_RECTS, 12, rects);
    vgSeti(VG_SCISSORING, VG_TRUE);
    const auto isInside = [&](int x, int y) {
        return (x >= 1 && x < 5 && y >= 1 && y < 5) || (x >= 3 && x < 8 && y >= 3 && y < 5) ||
               (x >= 14 && y >= 14);
    };
    const auto expectInside = [&](uint32_t pixel, const char* name) {
        for (int y = 0; y < 16; ++y) {
            for (int x = 0; x < 16; ++x) {
                ASSERT_EQ(pixelAt(x, y), isInside(x, y) ? pixel : 0U) << name << x << ", " << y;
            }
        }
    };
    const VGfloat white[] = {1, 1, 1, 1};
    vgSetfv(VG_CLEAR_COLOR, 4, white);
    vgClear(-5, -5, 100, 100);
    expectInside(0xFFFFFFFF, "cleared ");
    const std::vector<uint32_t> words(256, 0xFF112233);
    vgWritePixels(words.data(), 64, VG_sARGB_8888_PRE, 0, 0, 16, 16);
    expectInside(0xFF112233, "written ");

    resizeSurface(surface, 20, 20);  // the scissor is cut for the new size
    vgClear(0, 0, 20, 20);
    EXPECT_EQ(pixelAt(19, 19), 0xFFFFFFFF);
    EXPECT_EQ(pixelAt(0, 0), 0U);
    vgSetiv(VG_SCISSOR_RECTS, 0, nullptr);
    resizeSurface(surface, 16, 16);
    vgClear(0, 0, 16, 16);
    EXPECT_TRUE(std::all_of(surface->pixels.begin(), surface->pixels.end(),
                            [](uint32_t pixel) { return pixel == 0; }));
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

struct SurfaceFormatCase {
    SurfaceFlags flags;
    uint32_t cleared;  ///< orange at half opacity
};
const SurfaceFormatCase kSurfaceFormats[] = {
    {{}, 0x80FF8000},
    {{.premultiplied = true}, 0x80804000},
    {{.linear = true}, 0x80FF3700},
    {{.linear = true, .premultiplied = true}, 0x80801B00},
    {{.alphaMask = true}, 0x80FF8000},
    {{.linear = true, .alphaMask = true, .premultiplied = true}, 0x80801B00},
};

int largestDifference(uint32_t a, uint32_t b) {
    int largest = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const int difference =
            static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255);
        largest = std::max(largest, std::abs(difference));
    }
    return largest;
}

TEST(SurfaceFormats, KeepTheColorsOfClearsAndCopies) {
    Context* context = createContext(nullptr);
    for (const SurfaceFormatCase& c : kSurfaceFormats) {
        Surface* surface = createSurface(5, 4, c.flags);
        SCOPED_TRACE(testing::Message() << std::hex << surfaceFormat(surface));
        ASSERT_TRUE(makeCurrent(context, surface));
        const VGfloat orange[] = {1.0F, 0.5F, 0.0F, 0.5F};
        vgSetfv(VG_CLEAR_COLOR, 4, orange);
        vgClear(0, 0, 3, 3);
        EXPECT_LE(largestDifference(surface->view().row(2)[2], c.cleared), 1);
        EXPECT_EQ(surface->view().row(3)[2], 0U);
        uint32_t word = 0;
        vgReadPixels(&word, 4, VG_sRGBA_8888, 1, 1, 1, 1);
        EXPECT_LE(largestDifference(word, 0xFF800080), 1) << std::hex << word;

        // In through an image and out through another, in other formats than the surface's.
        const uint32_t colors[] = {0xFFFF8040, 0x80C0FFA0, 0x00000000};
        const VGImage from = makeImage(VG_sBGRA_8888, 3, 1);
        const VGImage to = makeImage(VG_lARGB_8888, 3, 1);
        vgImageSubData(from, colors, 12, VG_sARGB_8888, 0, 0, 3, 1);
        vgSetPixels(1, 3, from, 0, 0, 3, 1);
        vgCopyPixels(0, 0, 1, 3, 3, 1);
        vgGetPixels(to, 0, 0, 0, 0, 3, 1);
        const auto words = contentsOf(to);
        for (size_t i = 0; i < 3; ++i) {
            EXPECT_LE(largestDifference(words[i], colors[i]), 3) << std::hex << words[i];
        }
        EXPECT_EQ(surface->mask.count(), c.flags.alphaMask ? 20 : 0);
        EXPECT_EQ(vgGetError(), VG_NO_ERROR);
        destroySurface(surface);
    }
    destroyContext(context);
}

}  // namespace
}  // namespace vg
