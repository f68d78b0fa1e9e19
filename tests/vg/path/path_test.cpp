#include "vg/path/path.h"

#include <cmath>
#include <limits>
#include <vector>

#include "vg/engine_fixture.h"
#include "vg/path/path_samples.h"
#include "vg/path/segment_reader.h"

namespace vg::test {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

struct PathTest : EngineFixture {
    VGPath create(VGint datatype = VG_PATH_DATATYPE_F, float scale = 1.0F, float bias = 0.0F,
                  VGbitfield capabilities = VG_PATH_CAPABILITY_ALL) {
        return vgCreatePath(VG_PATH_FORMAT_STANDARD, datatype, scale, bias, 0, 0, capabilities);
    }
    VGPath create(const Commands& commands) {
        const VGPath path = create();
        appendAll(*context->findPath(path), commands);
        return path;
    }
    /// The path as absolute commands with shorthands resolved.
    Commands read(VGPath handle) {
        Commands commands;
        for (SegmentReader reader(*context->findPath(handle)); reader.next();) {
            const Segment& s = reader.segment();
            Command command{s.code, {}};
            switch (s.kind) {
                case Segment::Kind::kClose:
                    break;
                case Segment::Kind::kQuadratic:
                    command = {VG_QUAD_TO, {s.control1.x, s.control1.y}};
                    break;
                case Segment::Kind::kCubic:
                    command = {VG_CUBIC_TO,
                               {s.control1.x, s.control1.y, s.control2.x, s.control2.y}};
                    break;
                case Segment::Kind::kArc:
                    command.values = {s.ellipse.radiusX, s.ellipse.radiusY, s.ellipse.rotation};
                    break;
                default:
                    break;
            }
            if (s.kind != Segment::Kind::kClose) {
                command.values.insert(command.values.end(), {s.to.x, s.to.y});
            }
            if (s.kind == Segment::Kind::kLine) command.code = VG_LINE_TO;
            commands.push_back(command);
        }
        return commands;
    }
    int segmentCount(VGPath path) { return context->findPath(path)->segments.count(); }
    void load(const AffineMap& map) {
        const auto f = [](double value) { return static_cast<float>(value); };
        const VGfloat m[9] = {f(map.m00), f(map.m10), 0,          f(map.m01), f(map.m11),
                              0,          f(map.m02), f(map.m12), 1};
        vgLoadMatrix(m);
    }
};

void expectEqual(const Commands& actual, const Commands& expected, double tolerance = 0.0) {
    ASSERT_EQ(actual.size(), expected.size());
    for (size_t i = 0; i < expected.size(); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(actual[i].code, expected[i].code);
        ASSERT_EQ(actual[i].values.size(), expected[i].values.size());
        for (size_t k = 0; k < expected[i].values.size(); ++k) {
            EXPECT_NEAR(actual[i].values[k], expected[i].values[k], tolerance);
        }
    }
}

TEST_F(PathTest, CreationChecksFormatThenDatatypeAndScale) {
    const struct {
        VGint format, datatype;
        VGfloat scale;
        VGErrorCode error;
    } cases[] = {
        {1, 9, 0.0F, VG_UNSUPPORTED_PATH_FORMAT_ERROR}, {0, 4, 1.0F, VG_ILLEGAL_ARGUMENT_ERROR},
        {0, -1, 1.0F, VG_ILLEGAL_ARGUMENT_ERROR},       {0, 3, 0.0F, VG_ILLEGAL_ARGUMENT_ERROR},
        {0, 3, kNaN, VG_ILLEGAL_ARGUMENT_ERROR},        {0, 0, -1e30F, VG_NO_ERROR},
    };
    for (const auto& c : cases) {
        const VGPath path = vgCreatePath(c.format, c.datatype, c.scale, 0, -5, 0x7FFFFFFF, ~0U);
        EXPECT_EQ(path != VG_INVALID_HANDLE, c.error == VG_NO_ERROR);
        EXPECT_EQ(vgGetError(), c.error);
    }
}

TEST_F(PathTest, CapabilitiesGuardEveryUse) {
    const VGPath all = create({{VG_MOVE_TO, {1, 2}}, {VG_LINE_TO, {3, 4}}});
    const VGPath none = create(VG_PATH_DATATYPE_F, 1, 0, 0);
    const VGubyte segment = VG_HLINE_TO;
    VGfloat v[4] = {};
    expectEach(
        VG_PATH_CAPABILITY_ERROR, [&] { vgAppendPathData(none, 1, &segment, v); },
        [&] { vgAppendPath(all, none); }, [&] { vgModifyPathCoords(none, 0, 1, v); },
        [&] { vgTransformPath(none, all); },
        [&] { EXPECT_EQ(vgInterpolatePath(all, all, none, 0.5F), VG_FALSE); },
        [&] { EXPECT_EQ(vgPathLength(none, 0, 1), -1.0F); },
        [&] { vgPathBounds(none, v, v + 1, v + 2, v + 3); });

    EXPECT_EQ(vgGetPathCapabilities(all), VG_PATH_CAPABILITY_ALL);
    vgRemovePathCapabilities(all, VG_PATH_CAPABILITY_MODIFY);
    EXPECT_EQ(vgGetPathCapabilities(all), VG_PATH_CAPABILITY_ALL & ~VG_PATH_CAPABILITY_MODIFY);
    vgClearPath(all, VG_PATH_CAPABILITY_MODIFY);
    EXPECT_EQ(vgGetPathCapabilities(all), VG_PATH_CAPABILITY_MODIFY);
    EXPECT_EQ(segmentCount(all), 0);
}

TEST_F(PathTest, HandlesEndWithThePath) {
    const VGPath path = create();
    vgDestroyPath(path);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
    expectEach(
        VG_BAD_HANDLE_ERROR, [&] { vgDestroyPath(path); }, [&] { vgAppendPath(path, path); },
        [&] { EXPECT_EQ(vgGetPathCapabilities(0), 0U); });
}

TEST_F(PathTest, RefusedDataAppendsNothing) {
    alignas(8) const uint8_t bytes[64] = {};
    const VGubyte line = VG_LINE_TO;
    const VGubyte unknown[] = {VG_LINE_TO, 26};
    const struct {
        const char* name;
        VGint datatype, count;
        const VGubyte* segments;
        const void* data;
        bool isAccepted;
    } cases[] = {
        {"no segments", VG_PATH_DATATYPE_F, 1, nullptr, bytes, false},
        {"no data", VG_PATH_DATATYPE_F, 1, &line, nullptr, false},
        {"count 0", VG_PATH_DATATYPE_F, 0, &line, bytes, false},
        {"count below 0", VG_PATH_DATATYPE_F, -1, &line, bytes, false},
        {"unknown segment at the end", VG_PATH_DATATYPE_F, 2, unknown, bytes, false},
        {"floats at 2", VG_PATH_DATATYPE_F, 1, &line, bytes + 2, false},
        {"words at 2", VG_PATH_DATATYPE_S_32, 1, &line, bytes + 2, false},
        {"half words at 1", VG_PATH_DATATYPE_S_16, 1, &line, bytes + 1, false},
        {"half words at 2", VG_PATH_DATATYPE_S_16, 1, &line, bytes + 2, true},
        {"bytes anywhere", VG_PATH_DATATYPE_S_8, 1, &line, bytes + 3, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const VGPath path = create(c.datatype);
        vgAppendPathData(path, c.count, c.segments, c.data);
        EXPECT_EQ(vgGetError(), c.isAccepted ? VG_NO_ERROR : VG_ILLEGAL_ARGUMENT_ERROR);
        EXPECT_EQ(segmentCount(path), c.isAccepted ? 1 : 0);
    }
}

TEST_F(PathTest, DatatypesScaleAndBiasMakeTheSameGeometry) {
    const VGubyte segments[] = {VG_MOVE_TO, VG_LINE_TO | kRelative, VG_HLINE_TO};
    const int8_t bytes[] = {10, -20, 4, 5, -128};
    const int16_t halves[] = {10, -20, 4, 5, -128};
    const int32_t words[] = {10, -20, 4, 5, -128};
    const float floats[] = {10, -20, 4, 5, -128};
    const void* data[] = {bytes, halves, words, floats};
    // value * 0.5 + 3, differences included
    const Commands expected = {
        {VG_MOVE_TO, {8, -7}}, {VG_LINE_TO, {13, -1.5}}, {VG_LINE_TO, {-61, -1.5}}};
    for (VGint datatype = VG_PATH_DATATYPE_S_8; datatype <= VG_PATH_DATATYPE_F; ++datatype) {
        const VGPath path = create(datatype, 0.5F, 3.0F);
        vgAppendPathData(path, 3, segments, data[datatype]);
        expectEqual(read(path), expected);
        const VGPath copy = create();
        vgAppendPath(copy, path);
        expectEqual(read(copy), expected);
        const VGPath back = create(datatype, 0.5F, 3.0F);
        vgAppendPath(back, copy);
        expectEqual(read(back), expected);
    }
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(PathTest, WholeNumbersRoundAndSaturate) {
    const VGPath source = create({{VG_MOVE_TO, {1.5, -1.5}},
                                  {VG_LINE_TO, {1e30, -1e30}},
                                  {VG_LINE_TO, {static_cast<double>(kNaN), 126.7}}});
    const VGPath bytes = create(VG_PATH_DATATYPE_S_8);
    vgAppendPath(bytes, source);
    expectEqual(read(bytes),
                {{VG_MOVE_TO, {2, -1}}, {VG_LINE_TO, {127, -128}}, {VG_LINE_TO, {0, 127}}});
}

TEST_F(PathTest, AppendsItselfToItself) {
    Random random(5);
    const Commands commands = random.subpath(100, 200);
    const VGPath path = create(commands);
    vgAppendPath(path, path);
    vgTransformPath(path, path);  // the matrix is the identity
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
    const Commands all = read(path);
    const auto size = static_cast<std::ptrdiff_t>(commands.size());
    ASSERT_EQ(all.size(), commands.size() * 4);
    expectEqual({all.begin(), all.begin() + size}, commands);
    expectEqual({all.begin() + size, all.begin() + 2 * size}, commands);
    EXPECT_EQ(all.back().values.back(), commands.back().values.back());
}

TEST_F(PathTest, ModifiesCoordinatesInPlace) {
    const VGPath path = create(
        {{VG_MOVE_TO, {1, 2}}, {VG_HLINE_TO, {3}}, {VG_CLOSE_PATH, {}}, {VG_LINE_TO, {4, 5}}});
    const VGfloat values[] = {7, 8, 9};
    vgModifyPathCoords(path, 1, 3, values);
    expectEqual(
        read(path),
        {{VG_MOVE_TO, {1, 2}}, {VG_LINE_TO, {7, 2}}, {VG_CLOSE_PATH, {}}, {VG_LINE_TO, {8, 9}}});
    for (const auto& [start, count] : {std::pair{0, 0}, {-1, 1}, {4, 1}, {2, 3}, {1, 0x7FFFFFFF}}) {
        vgModifyPathCoords(path, start, count, values);
        EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR) << start << ", " << count;
    }
}

TEST_F(PathTest, TransformMovesEveryPoint) {
    Random random(6);
    for (int i = 0; i < 240; ++i) {
        SCOPED_TRACE(i);
        const Commands commands = random.subpath(100, 4);
        AffineMap map = random.affine();
        if (i % 4 == 0) {  // nearly or quite singular
            const double thinness = i % 8 == 0 ? 0.0 : 1e-6;
            map.m10 = 2 * map.m00 * (1 + thinness);
            map.m11 = 2 * map.m01;
        }
        load(map);
        const VGPath result = create();
        vgTransformPath(result, create(commands));
        std::vector<Vector2> expected = sampleAll(commands, 300);
        for (Vector2& p : expected) p = map.point(p);
        const std::vector<Vector2> actual = sampleAll(read(result), 300);
        // Endpoint arcs near a half turn react to rounding by its square root.
        constexpr double kLimit = 0.03;
        for (size_t k = 0; k < expected.size(); k += 13) {
            ASSERT_LT(distanceToPolyline(expected[k], actual), kLimit);
        }
        for (size_t k = 0; k < actual.size(); k += 13) {
            ASSERT_LT(distanceToPolyline(actual[k], expected), kLimit);
        }
    }
}

TEST_F(PathTest, TransformKeepsKindsAndFlipsMirroredArcs) {
    load({});
    const VGfloat mirror[9] = {2, 0, 0, 0, -2, 0, 5, 7, 1};
    vgLoadMatrix(mirror);
    const VGPath source = create({{VG_MOVE_TO | kRelative, {1, 2}},
                                  {VG_HLINE_TO, {3}},
                                  {VG_VLINE_TO | kRelative, {4}},
                                  {VG_SQUAD_TO, {5, 5}},
                                  {VG_SCUBIC_TO | kRelative, {1, 1, 2, 2}},
                                  {VG_LCCWARC_TO, {4, 3, 0, 10, 7}},
                                  {VG_SCWARC_TO | kRelative, {2, 3, 0, 1, 0}},
                                  {VG_CLOSE_PATH, {}}});
    const VGPath result = create();
    vgTransformPath(result, source);
    const base::Array<uint8_t>& codes = context->findPath(result)->segments;
    EXPECT_EQ(std::vector<int>(codes.begin(), codes.end()),
              (std::vector<int>{VG_MOVE_TO, VG_LINE_TO, VG_LINE_TO, VG_SQUAD_TO, VG_SCUBIC_TO,
                                VG_LCWARC_TO, VG_SCCWARC_TO, VG_CLOSE_PATH}));
    const Commands commands = read(result);
    EXPECT_EQ(commands[2].values, (std::vector<double>{11, -5}));
    EXPECT_NEAR(commands[5].values[0], 8.0, 1e-5);
    EXPECT_NEAR(commands[5].values[1], 6.0, 1e-5);
}

TEST_F(PathTest, TransformMovesAnImpliedStart) {
    load({});
    const VGfloat shift[9] = {1, 0, 0, 0, 1, 0, 5, 7, 1};
    vgLoadMatrix(shift);
    const VGPath result = create({{VG_LINE_TO, {90, 90}}});
    vgTransformPath(result, create({{VG_LINE_TO | kRelative, {1, 1}}}));
    expectEqual(read(result), {{VG_LINE_TO, {90, 90}}, {VG_MOVE_TO, {5, 7}}, {VG_LINE_TO, {6, 8}}});
}

TEST_F(PathTest, InterpolatesPathsOfOneShape) {
    const VGPath start = create({{VG_MOVE_TO, {0, 0}},
                                 {VG_HLINE_TO, {10}},
                                 {VG_SQUAD_TO, {20, 0}},
                                 {VG_SCWARC_TO, {2, 2, 0, 20, 4}},
                                 {VG_CLOSE_PATH, {}}});
    const VGPath end = create({{VG_MOVE_TO | kRelative, {10, 10}},
                               {VG_LINE_TO | kRelative, {0, 10}},
                               {VG_QUAD_TO, {30, 0, 40, 0}},
                               {VG_LCCWARC_TO, {4, 6, 90, 40, 8}},
                               {VG_CLOSE_PATH, {}}});
    const VGPath result = create();
    EXPECT_EQ(vgInterpolatePath(result, start, end, 0.25F), VG_TRUE);
    expectEqual(read(result), {{VG_MOVE_TO, {2.5, 2.5}},
                               {VG_LINE_TO, {10, 5}},
                               {VG_QUAD_TO, {15, 0, 25, 0}},
                               {VG_SCWARC_TO, {2.5, 3, 22.5, 25, 5}},
                               {VG_CLOSE_PATH, {}}});
    EXPECT_EQ(vgInterpolatePath(start, start, start, 2.0F), VG_TRUE) << "onto itself";
    EXPECT_EQ(segmentCount(start), 10);

    const Commands before = read(result);
    EXPECT_EQ(vgInterpolatePath(result, start, end, 0.5F), VG_FALSE) << "different lengths";
    const VGPath other = create({{VG_MOVE_TO, {0, 0}}, {VG_QUAD_TO, {1, 1, 2, 2}}});
    EXPECT_EQ(vgInterpolatePath(result, other, end, 0.5F), VG_FALSE);
    expectEqual(read(result), before);
    vgInterpolatePath(result, result, result, 0.0F);  // shows what may have been left behind
    Commands twice = read(result);
    twice.erase(twice.begin(), twice.begin() + static_cast<std::ptrdiff_t>(before.size()));
    expectEqual(twice, before);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

}  // namespace
}  // namespace vg::test
