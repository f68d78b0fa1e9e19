#include <cmath>
#include <limits>
#include <vector>

#include "vg/engine_fixture.h"
#include "vg/path/path.h"
#include "vg/path/path_bounds.h"
#include "vg/path/path_samples.h"

namespace vg::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

struct PathQueryTest : EngineFixture {
    VGPath create(const Commands& commands) {
        const VGPath path = createPath();
        appendAll(*context->findPath(path), commands);
        return path;
    }
    std::vector<float> bounds(const Commands& commands) {
        std::vector<float> box(4, -99.0F);
        vgPathBounds(create(commands), &box[0], &box[1], &box[2], &box[3]);
        return box;
    }
};

TEST(PathBounds, AreTightUnderAnyMap) {
    Random random(7);
    for (int i = 0; i < 500; ++i) {
        SCOPED_TRACE(i);
        const Commands commands = random.subpath(100, 1 + random.below(3));
        const AffineMap map = i % 3 == 0 ? AffineMap() : random.affine();
        Path path;
        appendAll(path, commands);
        const Bounds box = boundsOf(path, map);
        Bounds samples;
        for (const Vector2 p : sampleAll(commands, 4000)) samples.include(map.point(p));
        EXPECT_NEAR(box.low.x, samples.low.x, 2e-2);
        EXPECT_NEAR(box.low.y, samples.low.y, 2e-2);
        EXPECT_NEAR(box.high.x, samples.high.x, 2e-2);
        EXPECT_NEAR(box.high.y, samples.high.y, 2e-2);
        EXPECT_LE(box.low.x, samples.low.x + 1e-4);
        EXPECT_GE(box.high.y, samples.high.y - 1e-4);
    }
}

TEST_F(PathQueryTest, BoundsOfSpecialPaths) {
    const struct {
        const char* name;
        Commands commands;
        std::vector<float> box;
    } cases[] = {
        {"nothing", {}, {0, 0, -1, -1}},
        {"nothing but NaN", {{VG_LINE_TO, {kNaN, 1}}}, {0, 0, -1, -1}},
        {"a point", {{VG_MOVE_TO, {3, 4}}}, {3, 4, 0, 0}},
        {"lone moves do not count",
         {{VG_MOVE_TO, {90, 90}},
          {VG_MOVE_TO, {1, 1}},
          {VG_LINE_TO, {2, 5}},
          {VG_MOVE_TO, {-9, 0}}},
         {1, 1, 1, 4}},
        {"an implied start", {{VG_LINE_TO, {-2, 5}}}, {-2, 0, 2, 5}},
        {"controls do not count", {{VG_CUBIC_TO, {0, 40, 30, 40, 30, 0}}}, {0, 0, 30, 30}},
        {"half circle",
         {{VG_MOVE_TO, {10, 0}}, {VG_SCCWARC_TO, {10, 10, 0, -10, 0}}},
         {-10, 0, 20, 10}},
        {"nearly all of a circle",
         {{VG_MOVE_TO, {10, 0}}, {VG_LCWARC_TO, {10, 10, 0, 0, 10}}},
         {-10, -10, 20, 20}},
        {"the largest floats",
         {{VG_MOVE_TO, {-3e38, 0}}, {VG_LINE_TO, {3e38, 1}}},
         {-3e38F, 0, std::numeric_limits<float>::max(), 1}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::vector<float> box = bounds(c.commands);
        for (size_t k = 0; k < 4; ++k) EXPECT_NEAR(box[k], c.box[k], 2e-5F * std::fabs(c.box[k]));
        EXPECT_EQ(vgGetError(), VG_NO_ERROR);
    }
    float box[5];
    vgPathBounds(create({}), box, box + 1, nullptr, box + 3);
    EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR);
    auto* unaligned = reinterpret_cast<VGfloat*>(reinterpret_cast<uintptr_t>(box) + 2);
    vgPathBounds(create({}), box, box + 1, unaligned, box + 3);
    EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR);
}

TEST_F(PathQueryTest, TransformedBoundsFollowThePathMatrix) {
    const VGPath path = create({{VG_LINE_TO, {10, 0}}, {VG_LINE_TO, {10, 10}}});
    const VGfloat quarterTurn[9] = {0, 2, 0, -2, 0, 0, 100, 0, 1};
    vgLoadMatrix(quarterTurn);
    vgSeti(VG_MATRIX_MODE, VG_MATRIX_FILL_PAINT_TO_USER);
    VGfloat box[4];
    vgPathTransformedBounds(path, box, box + 1, box + 2, box + 3);
    EXPECT_EQ(std::vector<float>(box, box + 4), (std::vector<float>{80, 0, 20, 20}));
}

TEST_F(PathQueryTest, LengthIsThatOfDenseSamples) {
    Random random(8);
    for (int i = 0; i < 200; ++i) {
        SCOPED_TRACE(i);
        const Commands commands = random.subpath(100, 3);
        double length = 0.0;
        const std::vector<Vector2> samples = sampleAll(commands, 3000);
        for (size_t k = 1; k < samples.size(); ++k) length += distance(samples[k - 1], samples[k]);
        EXPECT_NEAR(static_cast<double>(vgPathLength(create(commands), 0, 4)), length,
                    length * 2e-5 + 5e-2);
    }
}

TEST_F(PathQueryTest, LengthOfRanges) {
    const VGPath path = create({{VG_MOVE_TO, {0, 0}},
                                {VG_LINE_TO, {3, 4}},
                                {VG_MOVE_TO, {9, 9}},
                                {VG_HLINE_TO, {19}},
                                {VG_VLINE_TO, {10}},
                                {VG_CLOSE_PATH, {}}});
    EXPECT_FLOAT_EQ(vgPathLength(path, 0, 6), 5 + 10 + 1 + std::hypot(10.0F, 1.0F));
    EXPECT_FLOAT_EQ(vgPathLength(path, 3, 2), 11);
    EXPECT_FLOAT_EQ(vgPathLength(path, 2, 1), 0);
    const VGPath cusp = create({{VG_CUBIC_TO, {100, 0, -50, 0, 50, 0}}});
    EXPECT_NEAR(vgPathLength(cusp, 0, 1), 94.72136F, 1e-3F) << "there and back, twice";
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
    for (const auto& [start, count] : {std::pair{0, 0}, {-1, 1}, {6, 1}, {5, 2}, {1, 0x7FFFFFFF}}) {
        EXPECT_EQ(vgPathLength(path, start, count), -1.0F);
        EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR) << start << ", " << count;
    }
}

TEST_F(PathQueryTest, PointsAlongThePathSplitItsLength) {
    Random random(9);
    for (int i = 0; i < 60; ++i) {
        SCOPED_TRACE(i);
        const Commands commands = random.subpath(100, 3);
        const VGPath path = create(commands);
        const std::vector<Vector2> samples = sampleAll(commands, 2000);
        const VGfloat whole = vgPathLength(path, 0, 4);
        const VGfloat wanted = whole * static_cast<float>(random.between(0, 1));
        VGfloat x = 0;
        VGfloat y = 0;
        VGfloat tangentX = 0;
        VGfloat tangentY = 0;
        vgPointAlongPath(path, 0, 4, wanted, &x, &y, &tangentX, &tangentY);
        double length = 0.0;
        size_t k = 1;
        for (; k + 1 < samples.size(); ++k) {
            const double step = distance(samples[k - 1], samples[k]);
            if (length + step >= static_cast<double>(wanted)) break;
            length += step;
        }
        EXPECT_LT(distance(samples[k], {static_cast<double>(x), static_cast<double>(y)}), 0.5);
        EXPECT_NEAR(std::hypot(tangentX, tangentY), 1.0F, 1e-5F);
        const Vector2 step = samples[k] - samples[k - 1];
        const double along =
            step.x * static_cast<double>(tangentX) + step.y * static_cast<double>(tangentY);
        EXPECT_GT(along, 0.9 * lengthOf(step));
    }
}

TEST_F(PathQueryTest, PointsAlongSpecialPaths) {
    const VGPath path = create({{VG_MOVE_TO, {5, 5}},
                                {VG_LINE_TO, {5, 5}},
                                {VG_LINE_TO, {5, 9}},
                                {VG_MOVE_TO, {7, 7}},
                                {VG_LINE_TO, {17, 7}}});
    const struct {
        VGint start, count;
        VGfloat distance;
        std::vector<VGfloat> expected;  // x, y, tangent
    } cases[] = {
        {0, 5, -3, {5, 5, 0, 1}}, {0, 5, 0, {5, 5, 0, 1}},
        {0, 5, 2, {5, 7, 0, 1}},  {0, 5, 4, {5, 9, 0, 1}},
        {0, 5, 5, {8, 7, 1, 0}},  {0, 5, 1e30F, {17, 7, 1, 0}},
        {0, 1, 2, {5, 5, 1, 0}},  {4, 1, 2, {9, 7, 1, 0}},
        {0, 2, 2, {5, 5, 1, 0}},  {0, 5, std::numeric_limits<float>::quiet_NaN(), {5, 5, 0, 1}},
    };
    for (const auto& c : cases) {
        VGfloat v[4] = {};
        vgPointAlongPath(path, c.start, c.count, c.distance, v, v + 1, v + 2, v + 3);
        EXPECT_EQ(std::vector<VGfloat>(v, v + 4), c.expected) << c.start << ", " << c.distance;
    }
    VGfloat only = -9;
    vgPointAlongPath(path, 0, 5, 1, &only, nullptr, nullptr, nullptr);
    EXPECT_EQ(only, -9) << "a point is written whole or not at all";
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
    vgRemovePathCapabilities(path, VG_PATH_CAPABILITY_TANGENT_ALONG_PATH);
    VGfloat v[4] = {};
    vgPointAlongPath(path, 0, 5, 2, v, v + 1, v + 2, v + 3);
    EXPECT_EQ(vgGetError(), VG_PATH_CAPABILITY_ERROR) << "each of the two must be allowed";
    vgPointAlongPath(path, 0, 5, 2, v, v + 1, nullptr, nullptr);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

}  // namespace
}  // namespace vg::test
