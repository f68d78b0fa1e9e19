#include "vg/draw/scissored_fill.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "vg/engine_fixture.h"

namespace vg {
namespace {

constexpr int kSide = 40;

struct ScissoredFill : EngineFixture {
    ScissoredFill() : EngineFixture(kSide, kSide) {
        std::vector<VGint> rects;  // a board of tiles, and the middle once more
        for (int i = 0; i < 16; ++i) {
            for (const VGint value : {i % 4 * 10, i / 4 * 10, 9, 9}) rects.push_back(value);
        }
        for (const VGint value : {15, 15, 10, 10}) rects.push_back(value);
        vgSetiv(VG_SCISSOR_RECTS, static_cast<VGint>(rects.size()), rects.data());
        vgSeti(VG_SCISSORING, VG_TRUE);
    }

    std::vector<uint32_t> takePixels() {
        const std::vector<uint32_t> pixels(surface->pixels.begin(), surface->pixels.end());
        resizeSurface(surface, kSide, kSide);
        return pixels;
    }
};

TEST_F(ScissoredFill, LeavesOutNoRectangleThatThePolygonTouches) {
    std::mt19937 random(81);
    const auto unit = [&] { return static_cast<float>(random() & 0xFFFF) / 65536.0F; };
    for (int i = 0; i < 300; ++i) {
        // From small triangles to those whose corners lie far beyond what a float resolves.
        const float size = std::ldexp(1.0F, i % 40);
        raster::Point points[3];
        for (raster::Point& point : points) {
            point = {20.0F + (unit() - 0.5F) * size, 20.0F + (unit() - 0.5F) * size};
        }
        if (i % 50 == 49) points[1].x = NAN;
        const int32_t count = 3;
        raster::FillParams params;
        params.polygon = {points, 3, &count, 1};
        params.userToSurface = {1, unit() * 4, (unit() - 0.5F) * 30, 0, 1, (unit() - 0.5F) * 30};
        params.surface = surface->view();
        params.paint.color[3] = 0.5F;
        ASSERT_TRUE(fillScissored(*context, *surface, params));
        const auto pixels = takePixels();
        params.surface = surface->view();
        for (const auto& rect : *context->scissorFor(kSide, kSide)) {
            params.clip = rect.pixels();
            ASSERT_TRUE(context->rasterizer.fill(params));
        }
        ASSERT_EQ(pixels, takePixels()) << "triangle " << i;
    }
}

TEST_F(ScissoredFill, FillsTheWholeSurfaceWithoutScissoring) {
    const raster::Point points[] = {{-9, -9}, {99, -9}, {99, 99}, {-9, 99}};
    const int32_t count = 4;
    raster::FillParams params;
    params.polygon = {points, 4, &count, 1};
    params.surface = surface->view();
    vgSeti(VG_SCISSORING, VG_FALSE);
    ASSERT_TRUE(fillScissored(*context, *surface, params));
    EXPECT_EQ(takePixels(), std::vector<uint32_t>(kSide * kSide, 0xFF000000));
    vgSeti(VG_SCISSORING, VG_TRUE);
    vgSetiv(VG_SCISSOR_RECTS, 0, nullptr);
    params.surface = surface->view();
    ASSERT_TRUE(fillScissored(*context, *surface, params));
    EXPECT_EQ(takePixels(), std::vector<uint32_t>(kSide * kSide, 0));
}

}  // namespace
}  // namespace vg
