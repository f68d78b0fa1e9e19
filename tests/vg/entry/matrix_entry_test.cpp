#include <gtest/gtest.h>

#include <array>
#include <cfloat>
#include <cmath>
#include <limits>

#include "vg/engine_fixture.h"
#include "vg/geometry/matrix.h"

namespace vg {
namespace {

using Floats = std::array<VGfloat, 9>;

constexpr Floats kIdentity = {1, 0, 0, 0, 1, 0, 0, 0, 1};
constexpr Floats kProjective = {2, 3, 4, 5, 6, 7, 8, 9, 10};  // column by column
constexpr Floats kAffinePart = {2, 3, 0, 5, 6, 0, 8, 9, 1};

using MatrixEntry = EngineFixture;

Floats currentFloats() {
    Floats read;
    vgGetMatrix(read.data());
    return read;
}

TEST_F(MatrixEntry, EachModeHasAMatrixOfItsOwn) {
    for (VGint mode = VG_MATRIX_PATH_USER_TO_SURFACE; mode <= VG_MATRIX_GLYPH_USER_TO_SURFACE;
         ++mode) {
        vgSeti(VG_MATRIX_MODE, mode);
        EXPECT_EQ(currentFloats(), kIdentity);
        Floats scaled = kIdentity;
        scaled[0] = static_cast<VGfloat>(mode);
        vgLoadMatrix(scaled.data());
    }
    for (VGint mode = VG_MATRIX_PATH_USER_TO_SURFACE; mode <= VG_MATRIX_GLYPH_USER_TO_SURFACE;
         ++mode) {
        vgSeti(VG_MATRIX_MODE, mode);
        EXPECT_EQ(currentFloats()[0], static_cast<VGfloat>(mode));
    }
    vgLoadIdentity();
    EXPECT_EQ(currentFloats(), kIdentity);
}

TEST_F(MatrixEntry, OnlyTheImageMatrixIsProjective) {
    vgLoadMatrix(kProjective.data());
    EXPECT_EQ(currentFloats(), kAffinePart);
    EXPECT_EQ(context->currentMatrix().m[0][2], 8.0F);  // tx
    EXPECT_EQ(context->currentMatrix().m[1][0], 3.0F);  // shy
    vgMultMatrix(kProjective.data());
    EXPECT_EQ(currentFloats()[2], 0.0F);
    EXPECT_EQ(currentFloats()[8], 1.0F);
    vgSeti(VG_MATRIX_MODE, VG_MATRIX_IMAGE_USER_TO_SURFACE);
    vgLoadMatrix(kProjective.data());
    EXPECT_EQ(currentFloats(), kProjective);
    vgMultMatrix(kProjective.data());
    EXPECT_EQ(currentFloats()[8], 4.0F * 8 + 7.0F * 9 + 10.0F * 10);
}

TEST_F(MatrixEntry, MultiplicationAppliesTheNewMatrixFirst) {
    const Floats translate = {1, 0, 0, 0, 1, 0, 10, 20, 1};
    const Floats scale = {2, 0, 0, 0, 4, 0, 0, 0, 1};
    vgLoadMatrix(translate.data());
    vgMultMatrix(scale.data());
    EXPECT_EQ(currentFloats(), (Floats{2, 0, 0, 0, 4, 0, 10, 20, 1}));
    vgLoadMatrix(scale.data());
    vgMultMatrix(translate.data());
    EXPECT_EQ(currentFloats(), (Floats{2, 0, 0, 0, 4, 0, 20, 80, 1}));
}

TEST_F(MatrixEntry, ValuesStayFinite) {
    Floats wild = kIdentity;
    wild[0] = std::numeric_limits<float>::infinity();
    wild[3] = std::numeric_limits<float>::quiet_NaN();
    wild[4] = -3e38F;
    vgLoadMatrix(wild.data());
    EXPECT_EQ(currentFloats(), (Floats{FLT_MAX, 0, 0, 0, -3e38F, 0, 0, 0, 1}));
    vgMultMatrix(wild.data());
    EXPECT_EQ(currentFloats(), (Floats{FLT_MAX, 0, 0, 0, FLT_MAX, 0, 0, 0, 1}));
    EXPECT_EQ(largestScale(context->currentMatrix()), FLT_MAX);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(MatrixEntry, BadArraysChangeNothing) {
    alignas(4) char bytes[64] = {};
    auto* const unaligned = reinterpret_cast<VGfloat*>(bytes + 1);
    for (VGfloat* bad : {static_cast<VGfloat*>(nullptr), unaligned}) {
        expectEach(
            VG_ILLEGAL_ARGUMENT_ERROR, [&] { vgLoadMatrix(bad); }, [&] { vgMultMatrix(bad); },
            [&] { vgGetMatrix(bad); });
    }
    EXPECT_EQ(currentFloats(), kIdentity);
}

TEST(MatrixScale, IsTheLargerSingularValueOfTheLinearPart) {
    constexpr float kHalfRoot = 0.70710678F;
    const struct {
        const char* name;
        Matrix3 value;
        float scale;
    } cases[] = {
        {"identity", {}, 1},
        {"mirrored scale", {{{-3, 0, 5}, {0, 2, 7}, {0, 0, 1}}}, 3},
        {"rotation", {{{kHalfRoot, -kHalfRoot, 1}, {kHalfRoot, kHalfRoot, 2}, {0, 0, 1}}}, 1},
        {"shear", {{{1, 1, 0}, {0, 1, 0}, {0, 0, 1}}}, 1.618034F},
        {"swapped axes", {{{0, 5, 0}, {4, 0, 0}, {0, 0, 1}}}, 5},
        {"projective", {{{2, 0, 1}, {0, 4, 1}, {0.5F, 0.25F, 1}}}, 4},
        {"singular", {{{1, 2, 0}, {2, 4, 0}, {0, 0, 1}}}, 5},
    };
    for (const auto& c : cases) EXPECT_FLOAT_EQ(largestScale(c.value), c.scale) << c.name;
}

}  // namespace
}  // namespace vg
