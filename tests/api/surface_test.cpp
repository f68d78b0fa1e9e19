#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "api/surface_copy.h"
#include "library_fixture.h"

namespace {

using Surfaces = LibraryFixture;

TEST_F(Surfaces, AreCreatedWithinTheLargestSide) {
    const struct {
        uint32_t width, height, actualWidth, actualHeight;
    } cases[] = {
        {1, 1, 1, 1},  {2048, 1, 2048, 1},       {4000, 100, 2048, 100}, {0, 10, 0, 0},
        {10, 0, 0, 0}, {3000, 2049, 2048, 2048}, {0x80000000, 1, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.width << " x " << c.height);
        const uint32_t surface = quorSurfaceCreate(c.width, c.height);
        EXPECT_EQ(c.actualWidth != 0, surface != QUOR_INVALID_HANDLE);
        EXPECT_EQ(c.actualWidth, quorSurfaceWidth(surface));
        EXPECT_EQ(c.actualHeight, quorSurfaceHeight(surface));
    }
}

TEST_F(Surfaces, BeginTransparentAndAfterAResizeToo) {
    const uint32_t surface = quorSurfaceCreate(3, 2);
    quorClearColor(1, 0, 0, 0.5F);
    ASSERT_EQ(QUOR_NO_ERROR, quorDocDraw(0, surface, 0));
    EXPECT_EQ(0x80800000U, quorSurfacePixels(surface)[5]) << "premultiplied, half rounded up";

    const float viewport[4] = {1, 1, 1, 1};
    const float transform[5] = {1, 2, 3, 4, 5};
    ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceViewportSet(surface, viewport));
    ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceViewportTransformSet(surface, transform));
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorSurfaceResize(surface, 0, 4));
    EXPECT_EQ(QUOR_OUT_OF_MEMORY_ERROR, quorSurfaceResize(surface, 0x80000000, 1));
    float values[5];
    EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceViewportTransformGet(surface, values));
    EXPECT_EQ(0, std::memcmp(values, transform, sizeof values))
        << "a failed resize changes nothing";

    ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceResize(surface, 4, 5000));
    EXPECT_EQ(2048U, quorSurfaceHeight(surface));
    for (int i = 0; i < 4 * 2048; ++i) ASSERT_EQ(0U, quorSurfacePixels(surface)[i]);
    ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceViewportGet(surface, values));
    EXPECT_EQ(0.0F, values[0]);
    EXPECT_EQ(2048.0F, values[3]);
    ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceViewportTransformGet(surface, values));
    for (const float value : values) EXPECT_EQ(0.0F, value);
}

TEST_F(Surfaces, ViewportsMustHaveArea) {
    constexpr float kMax = std::numeric_limits<float>::max();
    const uint32_t surface = quorSurfaceCreate(8, 8);
    const struct {
        const char* name;
        float set[4];
        uint32_t code;
        float expected[4];
    } cases[] = {
        {"no width", {0, 0, 0, 4}, 3, {0, 0, 8, 8}},
        {"negative height", {0, 0, 4, -4}, 3, {0, 0, 8, 8}},
        {"too small", {0, 0, 1e-8F, 4}, 3, {0, 0, 8, 8}},
        {"the largest size without area", {0, 0, 1.1920929e-7F, 4}, 3, {0, 0, 8, 8}},
        {"NaN size", {0, 0, 4, NAN}, 3, {0, 0, 8, 8}},
        {"NaN position", {NAN, -1, 4, 2}, 0, {0, -1, 4, 2}},
        {"infinite", {-INFINITY, 0, INFINITY, 2}, 0, {-kMax, 0, kMax, 2}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.code, quorSurfaceViewportSet(surface, c.set));
        float values[4];
        EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceViewportGet(surface, values));
        for (int i = 0; i < 4; ++i) EXPECT_EQ(c.expected[i], values[i]);
    }
}

TEST_F(Surfaces, TransformsTakeAnyFiniteValues) {
    const uint32_t surface = quorSurfaceCreate(8, 8);
    const float set[5] = {NAN, 1, 1e30F, INFINITY, -2};
    const float expected[5] = {0, 1, 1e30F, std::numeric_limits<float>::max(), -2};
    float values[5];
    EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceViewportTransformSet(surface, set));
    EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceViewportTransformGet(surface, values));
    for (int i = 0; i < 5; ++i) EXPECT_EQ(expected[i], values[i]);
}

TEST_F(Surfaces, ArraysAreCheckedBeforeHandlesInGettersAndSetters) {
    alignas(4) unsigned char bytes[32] = {};
    auto* odd = reinterpret_cast<float*>(bytes + 1);
    for (float* array : {static_cast<float*>(nullptr), odd}) {
        EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorSurfaceViewportGet(0, array));
        EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorSurfaceViewportSet(0, array));
        EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorSurfaceViewportTransformGet(0, array));
        EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorSurfaceViewportTransformSet(0, array));
    }
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorSurfaceCopy(0, nullptr, 0)) << "but not in the copy";
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorSurfaceCopy(quorSurfaceCreate(1, 1), nullptr, 0));
}

TEST_F(Surfaces, ClearColoursAreClamped) {
    const struct {
        const char* name;
        float color[4];
        uint32_t pixel;
    } cases[] = {
        {"above and below", {2, -1, NAN, 1}, 0xFFFF0000},
        {"infinite", {INFINITY, -INFINITY, 1, INFINITY}, 0xFFFF00FF},
        {"transparent", {1, 1, 1, 0}, 0x00000000},
        {"half of one half", {0.5F, 0, 1, 0.5F}, 0x80400080},
    };
    const uint32_t surface = quorSurfaceCreate(2, 2);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        quorClearColor(c.color[0], c.color[1], c.color[2], c.color[3]);
        ASSERT_EQ(QUOR_NO_ERROR, quorDocDraw(0, surface, 2));
        for (int i = 0; i < 4; ++i) EXPECT_EQ(c.pixel, quorSurfacePixels(surface)[i]);
    }
}

TEST_F(Surfaces, ClearSettingsOutliveDoneButNotInit) {
    quorClearColor(1, 0, 0, 1);
    quorClearPerform(7);
    quorDone();
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorInit(0, 0, 0));
    EXPECT_EQ(QUOR_NO_ERROR, quorInit(640, 480, 96));
    const uint32_t surface = quorSurfaceCreate(1, 1);
    EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(0, surface, 2));
    EXPECT_EQ(0U, *quorSurfacePixels(surface));
}

/// A block of 3 x 3 pixels, transparent but for the given ones.
struct Block {
    uint32_t pixels[9];
};

TEST(SurfaceCopy, GivesTransparentPixelsTheMeanOfTheirVisibleNeighbours) {
    const struct {
        const char* name;
        Block block;
        uint32_t center;
    } cases[] = {
        {"none visible", {{0, 0, 0, 0, 0x00123456, 0, 0, 0, 0}}, 0x00123456},
        {"one, taken exactly", {{0, 0, 0, 0, 0, 0, 0, 0, 0x01FEDCBA}}, 0x00FEDCBA},
        {"rounded down", {{0xFF000001, 0, 0, 0, 0, 0, 0xFF000002, 0, 0}}, 0x00000001},
        {"invisible neighbours do not count",
         {{0x00FFFFFF, 0, 0, 0xFF202020, 0, 0, 0, 0, 0}},
         0x00202020},
        {"visible itself", {{0xFFFFFFFF, 0, 0, 0, 0x01000000, 0, 0, 0, 0}}, 0x01000000},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Block copy;
        quor::copyPixelsDilated({c.block.pixels, 3, 3, 0x42}, copy.pixels);
        EXPECT_EQ(c.center, copy.pixels[4]);
        for (const int i : {0, 1, 2, 3, 5, 6, 7, 8}) EXPECT_EQ(c.block.pixels[i], copy.pixels[i]);
    }
}

TEST(SurfaceCopy, FollowsTheChannelOrderOfTheFormat) {
    const struct {
        uint32_t format, neighbour, center;
    } cases[] = {
        {0x41, 0x80112233, 0x00112233},
        {0x01, 0x11223380, 0x11223300},
        {0x89, 0x33221180, 0x33221100},
        {0xC2, 0x80332211, 0x00332211},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.format);
        const Block block = {{0, c.neighbour, 0, 0, 0, 0, 0, c.neighbour, 0}};
        Block copy;
        quor::copyPixelsDilated({block.pixels, 3, 3, c.format}, copy.pixels);
        EXPECT_EQ(c.center, copy.pixels[4]);
    }
}

TEST_F(Surfaces, CopiesKeepTheBorderAndReadOnlyTheSource) {
    const Picture picture(6, 3, "<rect x='2' width='1' height='3' fill='red'/>");
    ASSERT_EQ(QUOR_NO_ERROR, picture.draw());
    uint32_t plain[18];
    uint32_t dilated[18];
    ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceCopy(picture.surface(), plain, 0));
    ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceCopy(picture.surface(), dilated, 1));
    EXPECT_EQ(0, std::memcmp(plain, quorSurfacePixels(picture.surface()), sizeof plain));
    const uint32_t red = 0xFFFF0000;
    const uint32_t fringe = 0x00FF0000;
    const uint32_t expected[18] = {0,      0, red, 0, 0, 0,   0, fringe, red,
                                   fringe, 0, 0,   0, 0, red, 0, 0,      0};
    for (int i = 0; i < 18; ++i) EXPECT_EQ(expected[i], dilated[i]) << "pixel " << i;

    const Picture narrow(2, 5, "<rect width='1' height='5'/>");
    ASSERT_EQ(QUOR_NO_ERROR, narrow.draw());
    ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceCopy(narrow.surface(), dilated, 1));
    EXPECT_EQ(0, std::memcmp(dilated, quorSurfacePixels(narrow.surface()), 10 * sizeof(uint32_t)));
}

}  // namespace
