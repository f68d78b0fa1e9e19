// Paths are made in the memory of destroyed ones; nobody may see that.

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "vg/engine_fixture.h"
#include "vg/path/path.h"

namespace vg {
namespace {

constexpr int kSide = 48;

struct PathPool : EngineFixture {
    PathPool() : EngineFixture(kSide, kSide) {}

    vg::PathPool& pool() const { return context->shared->sparePaths; }

    /// A path of random curves, drawn now and then, at one place or at several.
    void drawOne(std::mt19937& random) const {
        const auto within = [&](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        const bool isShort = within(0, 1) == 0;
        const VGPath path = vgCreatePath(VG_PATH_FORMAT_STANDARD,
                                         isShort ? VG_PATH_DATATYPE_S_16 : VG_PATH_DATATYPE_F,
                                         isShort ? 0.5F : 1.0F, 0, 0, 0, VG_PATH_CAPABILITY_ALL);
        std::vector<VGubyte> segments = {VG_MOVE_TO};
        for (int left = within(1, 12); left > 0; --left) segments.push_back(VG_CUBIC_TO);
        std::vector<VGshort> shorts;
        std::vector<VGfloat> floats;
        for (size_t i = 0; i < 6 * segments.size() - 4; ++i) {
            shorts.push_back(static_cast<VGshort>(within(-10, 2 * kSide)));
            floats.push_back(static_cast<VGfloat>(shorts.back()) * 0.5F);
        }
        vgAppendPathData(path, static_cast<VGint>(segments.size()), segments.data(),
                         isShort ? static_cast<void*>(shorts.data()) : floats.data());
        vgSetf(VG_STROKE_LINE_WIDTH, static_cast<VGfloat>(within(1, 5)));
        for (int left = within(0, 4); left > 0; --left) {
            const VGfloat matrix[9] = {1, 0, 0, 0, 1, 0, static_cast<VGfloat>(within(0, 2)), 0, 1};
            vgLoadMatrix(matrix);
            vgDrawPath(path, static_cast<VGbitfield>(within(1, 3)));
        }
        vgDestroyPath(path);
    }

    std::vector<uint32_t> drawScene(unsigned seed, bool usesPool) const {
        std::mt19937 random(seed);
        vgClear(0, 0, kSide, kSide);
        for (int i = 0; i < 20; ++i) {
            if (!usesPool) pool().release();
            drawOne(random);
        }
        EXPECT_EQ(vgGetError(), VG_NO_ERROR);
        return {surface->pixels.begin(), surface->pixels.end()};
    }
};

TEST_F(PathPool, ChangesNoPixelOfAnyScene) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        const std::vector<uint32_t> expected = drawScene(seed, false);
        ASSERT_EQ(drawScene(seed, true), expected) << "scene " << seed;
    }
}

TEST_F(PathPool, GivesPathsThatAreAsNew) {
    const VGPath first = vgCreatePath(VG_PATH_FORMAT_STANDARD, VG_PATH_DATATYPE_S_8, 2, 3, 0, 0,
                                      VG_PATH_CAPABILITY_APPEND_TO);
    const VGubyte segments[] = {VG_MOVE_TO, VG_HLINE_TO};
    const VGbyte data[] = {1, 2, 3};
    vgAppendPathData(first, 2, segments, data);
    const Path* const memory = context->findPath(first);
    vgDestroyPath(first);
    EXPECT_EQ(context->findPath(first), nullptr);
    const VGPath next = vgCreatePath(VG_PATH_FORMAT_STANDARD, VG_PATH_DATATYPE_F, 1, 0, 0, 0,
                                     VG_PATH_CAPABILITY_PATH_BOUNDS);
    EXPECT_EQ(context->findPath(next), memory);
    EXPECT_EQ(vgGetParameteri(next, VG_PATH_NUM_SEGMENTS), 0);
    EXPECT_EQ(vgGetParameteri(next, VG_PATH_NUM_COORDS), 0);
    EXPECT_EQ(vgGetParameteri(next, VG_PATH_DATATYPE), VG_PATH_DATATYPE_F);
    EXPECT_EQ(vgGetParameterf(next, VG_PATH_SCALE), 1.0F);
    EXPECT_EQ(vgGetParameterf(next, VG_PATH_BIAS), 0.0F);
    EXPECT_EQ(vgGetPathCapabilities(next), VGbitfield{VG_PATH_CAPABILITY_PATH_BOUNDS});
}

TEST_F(PathPool, KeepsToItsLimits) {
    std::vector<VGPath> paths;
    const auto createMany = [&](size_t segmentsEach) {
        const std::vector<VGubyte> segments(segmentsEach, VG_CLOSE_PATH);
        const VGfloat none = 0;
        for (int i = 0; i < 2 * vg::PathPool::kMaxPaths; ++i) {
            paths.push_back(createPath());
            vgAppendPathData(paths.back(), static_cast<VGint>(segmentsEach), segments.data(),
                             &none);
        }
    };
    const auto keptBytes = [&](int& count) {
        for (const VGPath path : paths) vgDestroyPath(path);
        paths.clear();
        size_t bytes = 0;
        for (count = 0; Path* path = pool().take(); ++count) {
            bytes += path->byteCount();
            release(path);
        }
        return bytes;
    };
    int count = 0;
    createMany(1);
    EXPECT_LE(keptBytes(count), vg::PathPool::kMaxBytes);
    EXPECT_EQ(count, vg::PathPool::kMaxPaths);
    createMany(10'000);
    EXPECT_LE(keptBytes(count), vg::PathPool::kMaxBytes);
    EXPECT_GT(count, 0);
}

}  // namespace
}  // namespace vg
