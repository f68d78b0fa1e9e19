// Clears of large surfaces are put off row by row; nobody may see that.

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "vg/engine_fixture.h"
#include "vg/vgu.h"

namespace vg {
namespace {

constexpr VGint kWidth = 700, kHeight = 400;

struct PendingClear : EngineFixture {
    PendingClear() : EngineFixture(kWidth, kHeight) {
        const VGfloat color[] = {0.25F, 0.5F, 0.75F, 0.5F};
        vgSetfv(VG_CLEAR_COLOR, 4, color);
        vgSetPaint(paint, VG_FILL_PATH);
    }

    /// Clears the surface in one go, or in halves, which is never put off.
    static void clear(bool asWhole) {
        vgClear(0, 0, kWidth, asWhole ? kHeight : kHeight / 2);
        if (!asWhole) vgClear(0, kHeight / 2, kWidth, kHeight);
    }

    void setColor(float alpha) const {
        const VGfloat color[] = {0.9F, 0.1F, 0.2F, alpha};
        vgSetParameterfv(paint, VG_PAINT_COLOR, 4, color);
    }

    /// One of the things that meet a surface that is partly cleared.
    void step(std::mt19937& random) {
        const auto within = [&](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        const int x = within(-50, kWidth), y = within(-50, kHeight), size = within(1, 90);
        switch (within(0, 7)) {
            case 0:
                return vgClear(x, y, size, size);
            case 1:
                return vgCopyPixels(x, y, within(0, kWidth), within(0, kHeight), size, size);
            case 2: {
                std::vector<uint32_t> pixels(90 * 90, 0x80402010);
                return vgWritePixels(pixels.data(), 90 * 4, VG_sARGB_8888_PRE, x, y, size, size);
            }
            default:
                break;
        }
        setColor(within(0, 1) == 0 ? 1.0F : 0.4F);
        const VGPath path = createPath();
        const auto bottom = static_cast<float>(y), left = static_cast<float>(x);
        if (within(0, 2) == 0) {  // whole rows, which opaque colours overwrite
            vguRect(path, -1, bottom, kWidth + 2, static_cast<float>(size));
        } else {
            vguEllipse(path, left, bottom, static_cast<float>(size) * 3, static_cast<float>(size));
        }
        vgDrawPath(path, VG_FILL_PATH);
        vgDestroyPath(path);
    }

    std::vector<uint32_t> drawScene(unsigned seed, int steps, bool asWhole) {
        std::mt19937 random(seed);
        clear(asWhole);
        for (int i = 0; i < steps; ++i) step(random);
        finishSurface(surface);
        return {surface->pixels.begin(), surface->pixels.end()};
    }

    VGPaint paint = vgCreatePaint();
};

TEST_F(PendingClear, ChangesNoPixelOfAnyScene) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        const int steps = static_cast<int>(seed % 7);
        const auto expected = drawScene(seed, steps, false);
        ASSERT_EQ(drawScene(seed, steps, true), expected) << "scene " << seed;
    }
}

TEST_F(PendingClear, IsDoneBeforePixelsAreRead) {
    clear(true);
    ASSERT_FALSE(surface->pendingClear.isEmpty());
    uint32_t pixel = 0;
    vgReadPixels(&pixel, 4, VG_sARGB_8888_PRE, 3, 3, 1, 1);
    EXPECT_EQ(pixel, 0x80204060U);
    clear(true);
    EXPECT_EQ(surfacePixels(surface)[kWidth * kHeight - 1], 0x80204060U);
    EXPECT_TRUE(surface->pendingClear.isEmpty());
}

TEST_F(PendingClear, IsForgottenWithTheSurfaceItWasFor) {
    clear(true);
    ASSERT_TRUE(resizeSurface(surface, 20, 20));
    EXPECT_EQ(surfacePixels(surface)[0], 0U);
}

}  // namespace
}  // namespace vg
