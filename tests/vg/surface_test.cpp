#include "vg/surface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "vg/engine_fixture.h"

namespace vg {
namespace {

bool isAllZero(const Surface& surface) {
    return std::all_of(surface.pixels.begin(), surface.pixels.end(),
                       [](uint32_t pixel) { return pixel == 0; });
}

TEST(Surfaces, SidesAreClampedAndMustBePositive) {
    const struct {
        int32_t width, height, clampedWidth, clampedHeight;
    } cases[] = {{1, 1, 1, 1}, {4000, 100, 2048, 100}, {INT_MAX, INT_MAX, 2048, 2048}};
    for (const auto& c : cases) {
        Surface* surface = createSurface(c.width, c.height, {.premultiplied = true});
        ASSERT_NE(surface, nullptr);
        EXPECT_EQ(surfaceWidth(surface), c.clampedWidth);
        EXPECT_EQ(surfaceHeight(surface), c.clampedHeight);
        EXPECT_EQ(surface->pixels.count(), c.clampedWidth * c.clampedHeight);
        EXPECT_TRUE(isAllZero(*surface));
        destroySurface(surface);
    }
    for (const int32_t bad : {0, -1, INT_MIN}) {
        EXPECT_EQ(createSurface(bad, 5, {}), nullptr);
        EXPECT_EQ(createSurface(5, bad, {}), nullptr);
    }
    destroySurface(nullptr);
}

TEST(Surfaces, FlagsChooseTheFormat) {
    const struct {
        SurfaceFlags flags;
        uint32_t format;
    } cases[] = {{{}, 0x41},
                 {{.premultiplied = true}, 0x42},
                 {{.linear = true}, 0x48},
                 {{.linear = true, .premultiplied = true}, 0x49}};
    for (const auto& c : cases) {
        Surface* surface = createSurface(1, 1, c.flags);
        EXPECT_EQ(surfaceFormat(surface), c.format);
        destroySurface(surface);
    }
}

using CurrentSurface = EngineFixture;

TEST_F(CurrentSurface, ResizesInPlaceToZeroPixelsOrNotAtAll) {
    std::fill(surface->pixels.begin(), surface->pixels.end(), 0xFFFFFFFFU);
    EXPECT_FALSE(resizeSurface(surface, 8, 0));
    EXPECT_FALSE(resizeSurface(surface, INT_MIN, 1));
    EXPECT_EQ(surfaceWidth(surface), 16);
    EXPECT_EQ(pixelAt(15, 15), 0xFFFFFFFFU);

    EXPECT_TRUE(resizeSurface(surface, 3, 5));
    EXPECT_EQ(surface->pixels.count(), 15);
    EXPECT_TRUE(isAllZero(*surface));
    EXPECT_EQ(currentSurface(), surface);
    vgClear(0, 0, 16, 16);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

struct ClearCase {
    const char* name;
    VGint x, y, width, height;
    int left, bottom, right, top;  // of the cleared pixels, right and top exclusive
};

const ClearCase kClearCases[] = {
    {"one pixel in the bottom left corner", 0, 0, 1, 1, 0, 0, 1, 1},
    {"inside", 2, 3, 4, 5, 2, 3, 6, 8},
    {"over every side", -5, -5, 100, 100, 0, 0, 16, 16},
    {"sums beyond an integer", 12, 14, INT_MAX, INT_MAX, 12, 14, 16, 16},
    {"far away", INT_MIN, INT_MIN, INT_MAX, INT_MAX, 0, 0, 0, 0},
    {"beside the surface", 16, 0, 5, 5, 0, 0, 0, 0},
};

TEST_F(CurrentSurface, ClearFillsTheRectangleFromTheBottomUp) {
    const VGfloat halfRed[] = {1, 0, 0, 0.5F};
    vgSetfv(VG_CLEAR_COLOR, 4, halfRed);
    for (const ClearCase& c : kClearCases) {
        SCOPED_TRACE(c.name);
        resizeSurface(surface, 16, 16);
        vgClear(c.x, c.y, c.width, c.height);
        for (int y = 0; y < 16; ++y) {
            for (int x = 0; x < 16; ++x) {
                const bool isInside = c.left <= x && x < c.right && c.bottom <= y && y < c.top;
                ASSERT_EQ(pixelAt(x, y), isInside ? 0x80800000U : 0U) << x << ", " << y;
            }
        }
    }
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
    for (const VGint bad : {0, -1, INT_MIN}) {
        resizeSurface(surface, 16, 16);
        expectEach(
            VG_ILLEGAL_ARGUMENT_ERROR, [&] { vgClear(0, 0, bad, 10); },
            [&] { vgClear(0, 0, 10, bad); });
        EXPECT_TRUE(isAllZero(*surface));
    }
}

}  // namespace
}  // namespace vg
