#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "vg/engine_fixture.h"
#include "vg/path/path.h"
#include "vg/path/path_coordinates.h"
#include "vg/vgu.h"

namespace vg::test {
namespace {

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

struct UtilityShapes : EngineFixture {
    UtilityShapes() { path = create(VG_PATH_CAPABILITY_ALL); }
    static VGPath create(VGbitfield capabilities) {
        return vgCreatePath(0, VG_PATH_DATATYPE_F, 1, 0, 0, 0, capabilities);
    }
    /// What the path holds now; empties it.
    void expectPath(const std::vector<uint8_t>& codes, const std::vector<float>& values) {
        const Path& p = *context->findPath(path);
        EXPECT_EQ(std::vector<uint8_t>(p.segments.begin(), p.segments.end()), codes);
        ASSERT_EQ(static_cast<size_t>(p.coordinateCount), values.size());
        for (size_t i = 0; i < values.size(); ++i) {
            double stored = 0.0;
            loadCoordinates(p, static_cast<int32_t>(i), 1, &stored);
            EXPECT_NEAR(stored, static_cast<double>(values[i]), 1e-5) << i;
        }
        vgClearPath(path, VG_PATH_CAPABILITY_ALL);
    }
    VGPath path;
};

TEST_F(UtilityShapes, HaveTheirSegmentsInOrder) {
    constexpr uint8_t kArc = VG_SCCWARC_TO;
    EXPECT_EQ(vguLine(path, 1, 2, 3, 4), VGU_NO_ERROR);
    expectPath({VG_MOVE_TO, VG_LINE_TO}, {1, 2, 3, 4});

    const VGfloat points[] = {1, 2, 3, 4, 5, 6};
    EXPECT_EQ(vguPolygon(path, points, 3, VG_TRUE), VGU_NO_ERROR);
    expectPath({VG_MOVE_TO, VG_LINE_TO, VG_LINE_TO, VG_CLOSE_PATH}, {1, 2, 3, 4, 5, 6});
    EXPECT_EQ(vguPolygon(path, points, 1, VG_FALSE), VGU_NO_ERROR);
    expectPath({VG_MOVE_TO}, {1, 2});

    EXPECT_EQ(vguRect(path, 1, 2, 10, 20), VGU_NO_ERROR);
    expectPath({VG_MOVE_TO, VG_HLINE_TO, VG_VLINE_TO, VG_HLINE_TO, VG_CLOSE_PATH},
               {1, 2, 11, 22, 1});

    const std::vector<uint8_t> round = {VG_MOVE_TO, VG_HLINE_TO,  kArc, VG_VLINE_TO,
                                        kArc,       VG_HLINE_TO,  kArc, VG_VLINE_TO,
                                        kArc,       VG_CLOSE_PATH};
    EXPECT_EQ(vguRoundRect(path, 0, 0, 100, 50, 20, 10), VGU_NO_ERROR);
    expectPath(round, {10, 0,  90, 10, 5, 0, 100, 5, 45, 10, 5, 0,  90,
                       50, 10, 10, 5,  0, 0, 45,  5, 10, 5,  0, 10, 0});
    EXPECT_EQ(vguRoundRect(path, 0, 0, 100, 50, 1000, -10), VGU_NO_ERROR);
    expectPath(round, {50, 0,  50, 50, 0, 0, 100, 0, 50, 50, 0, 0,  50,
                       50, 50, 50, 0,  0, 0, 50,  0, 50, 0,  0, 50, 0});

    EXPECT_EQ(vguEllipse(path, 5, 6, 4, 2), VGU_NO_ERROR);
    expectPath({VG_MOVE_TO, kArc, kArc, VG_CLOSE_PATH}, {7, 6, 2, 1, 0, 3, 6, 2, 1, 0, 7, 6});
}

TEST_F(UtilityShapes, ArcsAreCutIntoHalfTurns) {
    const float diagonal = std::sqrt(0.5F);
    EXPECT_EQ(vguArc(path, 1, 1, 2, 4, 0, 90, VGU_ARC_OPEN), VGU_NO_ERROR);
    expectPath({VG_MOVE_TO, VG_SCCWARC_TO}, {2, 1, 1, 2, 0, 1, 3});
    EXPECT_EQ(vguArc(path, 0, 0, 2, 2, 45, -270, VGU_ARC_CHORD), VGU_NO_ERROR);
    expectPath({VG_MOVE_TO, VG_SCWARC_TO, VG_SCWARC_TO, VG_CLOSE_PATH},
               {diagonal, diagonal, 1, 1, 0, -diagonal, -diagonal, 1, 1, 0, -diagonal, diagonal});
    EXPECT_EQ(vguArc(path, 3, 0, 2, 2, 90, 360, VGU_ARC_PIE), VGU_NO_ERROR);
    expectPath({VG_MOVE_TO, VG_SCCWARC_TO, VG_SCCWARC_TO, VG_LINE_TO, VG_CLOSE_PATH},
               {3, 1, 1, 1, 0, 3, -1, 1, 1, 0, 3, 1, 3, 0});
}

TEST_F(UtilityShapes, ArcsOfAnyExtentAreBounded) {
    for (const VGfloat extent : {1e30F, -1e30F, 1e38F, std::numeric_limits<float>::infinity()}) {
        EXPECT_EQ(vguArc(path, 0, 0, 2, 2, 1e30F, extent, VGU_ARC_OPEN), VGU_NO_ERROR);
        EXPECT_LT(context->findPath(path)->segments.count(), 200);
        vgClearPath(path, VG_PATH_CAPABILITY_ALL);
    }
    // Five turns and a quarter leave an odd number of turns.
    EXPECT_EQ(vguArc(path, 0, 0, 2, 2, 0, 5 * 360 + 90, VGU_ARC_OPEN), VGU_NO_ERROR);
    EXPECT_EQ(context->findPath(path)->segments.count(), 1 + 10 + 1);
}

TEST_F(UtilityShapes, ReturnTheirErrorsAndLeaveTheContextAlone) {
    const VGfloat points[] = {0, 0, 1, 1};
    const VGPath sealed = create(0);
    const auto* unaligned =
        reinterpret_cast<const VGfloat*>(reinterpret_cast<uintptr_t>(points) + 1);
    vgSeti(VG_MATRIX_MODE, -1);  // an error that is pending
    EXPECT_EQ(vguLine(12345, 0, 0, 1, 1), VGU_BAD_HANDLE_ERROR);
    EXPECT_EQ(vguRect(sealed, 0, 0, 1, 1), VGU_PATH_CAPABILITY_ERROR);
    for (const VGErrorCode pending : {VG_ILLEGAL_ARGUMENT_ERROR, VG_NO_ERROR}) {
        EXPECT_EQ(vguPolygon(path, points, 0, VG_TRUE), VGU_ILLEGAL_ARGUMENT_ERROR);
        EXPECT_EQ(vguPolygon(path, points, -1, VG_TRUE), VGU_ILLEGAL_ARGUMENT_ERROR);
        EXPECT_EQ(vguPolygon(path, nullptr, 2, VG_TRUE), VGU_ILLEGAL_ARGUMENT_ERROR);
        EXPECT_EQ(vguPolygon(path, unaligned, 1, VG_TRUE), VGU_ILLEGAL_ARGUMENT_ERROR);
        for (const VGfloat size : {0.0F, -1.0F, kNaN}) {
            EXPECT_EQ(vguRect(path, 0, 0, size, 1), VGU_ILLEGAL_ARGUMENT_ERROR);
            EXPECT_EQ(vguRect(path, 0, 0, 1, size), VGU_ILLEGAL_ARGUMENT_ERROR);
            EXPECT_EQ(vguRoundRect(path, 0, 0, size, 1, 1, 1), VGU_ILLEGAL_ARGUMENT_ERROR);
            EXPECT_EQ(vguEllipse(path, 0, 0, 1, size), VGU_ILLEGAL_ARGUMENT_ERROR);
            EXPECT_EQ(vguArc(path, 0, 0, size, 1, 0, 9, VGU_ARC_PIE), VGU_ILLEGAL_ARGUMENT_ERROR);
        }
        EXPECT_EQ(vguArc(path, 0, 0, 1, 1, 0, 9, 0xF103), VGU_ILLEGAL_ARGUMENT_ERROR);
        EXPECT_EQ(vgGetError(), pending);
    }
    expectPath({}, {});
    makeCurrent(nullptr, nullptr);
    EXPECT_EQ(vguLine(path, 0, 0, 1, 1), VGU_NO_CONTEXT_ERROR);
}

}  // namespace
}  // namespace vg::test
