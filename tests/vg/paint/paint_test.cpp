#include "vg/paint/paint.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <limits>

#include "vg/engine_fixture.h"

namespace vg {
namespace {

using PaintObjects = EngineFixture;

TEST_F(PaintObjects, StartAsOpaqueBlackAndKeepComponentsAsSet) {
    const VGPaint paint = vgCreatePaint();
    EXPECT_EQ(vgGetColor(paint), 0x000000FFU);
    EXPECT_EQ(vgGetParameteri(paint, VG_PAINT_TYPE), VG_PAINT_TYPE_COLOR);
    EXPECT_EQ(vgGetParameterVectorSize(paint, VG_PAINT_COLOR), 4);
    const VGfloat color[] = {2.0F, -1.0F, std::numeric_limits<float>::infinity(), 0.5F};
    vgSetParameterfv(paint, VG_PAINT_COLOR, 4, color);
    VGfloat read[4] = {};
    vgGetParameterfv(paint, VG_PAINT_COLOR, 4, read);
    EXPECT_EQ(read[0], 2.0F);
    EXPECT_EQ(read[1], -1.0F);
    EXPECT_EQ(read[2], FLT_MAX);
    EXPECT_EQ(vgGetColor(paint), 0xFF00FF80U);  // clamped only on the way out
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(PaintObjects, EveryByteOfAColorSurvives) {
    const VGPaint paint = vgCreatePaint();
    for (VGuint byte = 0; byte < 256; ++byte) {
        const VGuint rgba = byte << 24 | (255 - byte) << 16 | (byte ^ 0x55) << 8 | byte;
        vgSetColor(paint, rgba);
        ASSERT_EQ(vgGetColor(paint), rgba);
    }
}

TEST_F(PaintObjects, ASetPaintOutlivesItsHandle) {
    const VGPaint paint = vgCreatePaint();
    vgSetColor(paint, 0x11223344);
    vgSetPaint(paint, VG_FILL_PATH | VG_STROKE_PATH);
    EXPECT_EQ(vgGetPaint(VG_FILL_PATH), paint);
    vgDestroyPaint(paint);
    ASSERT_NE(context->fillPaint, nullptr);
    EXPECT_EQ(context->fillPaint->color[3], 0x44 / 255.0F);
    EXPECT_EQ(vgGetPaint(VG_STROKE_PATH), VG_INVALID_HANDLE);

    const VGPaint next = vgCreatePaint();
    EXPECT_EQ(next, paint);  // the entry is reused, the paint is another
    EXPECT_NE(context->findPaint(next), context->fillPaint);
    vgSetPaint(VG_INVALID_HANDLE, VG_FILL_PATH);
    EXPECT_EQ(context->fillPaint, nullptr);
    EXPECT_NE(context->strokePaint, nullptr);
    vgSetPaint(next, VG_STROKE_PATH);
    EXPECT_EQ(vgGetPaint(VG_FILL_PATH), VG_INVALID_HANDLE);
    EXPECT_EQ(vgGetPaint(VG_STROKE_PATH), next);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(PaintObjects, BadHandlesModesAndParametersAreRefused) {
    const VGPaint paint = vgCreatePaint();
    const VGPath path = createPath();
    for (const VGHandle bad : {path, paint + 2, 0xFFFFFFFFU}) {
        expectEach(
            VG_BAD_HANDLE_ERROR, [&] { vgSetPaint(bad, VG_FILL_PATH); },
            [&] { vgSetColor(bad, 0); }, [&] { EXPECT_EQ(vgGetColor(bad), 0U); },
            [&] { vgDestroyPaint(bad); });
    }
    for (const VGbitfield modes : {0U, 4U, 7U, 0x80000001U}) {
        vgSetPaint(paint, modes);
        EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR);
    }
    for (const VGint mode : {0, 3, -1}) {
        EXPECT_EQ(vgGetPaint(mode), VG_INVALID_HANDLE);
        EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR);
    }
    EXPECT_EQ(context->fillPaint, nullptr);

    const VGfloat color[4] = {};
    expectEach(
        VG_ILLEGAL_ARGUMENT_ERROR, [&] { vgSetParameterfv(paint, VG_PAINT_COLOR, 3, color); },
        [&] { vgSetParameterf(paint, VG_PAINT_COLOR, 1); },
        [&] { vgSetParameteri(paint, VG_PAINT_TYPE, VG_PAINT_TYPE_COLOR - 1); },
        [&] { vgSetParameteri(paint, VG_PATH_SCALE, 1); },
        [&] { EXPECT_EQ(vgGetParameterVectorSize(path, VG_PAINT_COLOR), 0); });
    expectEach(
        VG_BAD_HANDLE_ERROR,
        [&] { vgSetParameteri(paint + 2, VG_PAINT_TYPE, VG_PAINT_TYPE_COLOR); },
        [&] { EXPECT_EQ(vgGetParameterf(VG_INVALID_HANDLE, VG_PAINT_TYPE), 0.0F); });
    vgDestroyPath(path);
}

TEST_F(PaintObjects, PathParametersAreReadOnly) {
    const VGPath path = vgCreatePath(VG_PATH_FORMAT_STANDARD, VG_PATH_DATATYPE_S_16, 0.5F, 3.0F, 0,
                                     0, VG_PATH_CAPABILITY_ALL);
    const VGubyte segments[] = {VG_MOVE_TO, VG_CUBIC_TO, VG_CLOSE_PATH};
    const VGshort data[8] = {};
    vgAppendPathData(path, 3, segments, data);
    const struct {
        VGint type;
        VGfloat value;
    } cases[] = {{VG_PATH_FORMAT, 0}, {VG_PATH_DATATYPE, 1},     {VG_PATH_SCALE, 0.5F},
                 {VG_PATH_BIAS, 3},   {VG_PATH_NUM_SEGMENTS, 3}, {VG_PATH_NUM_COORDS, 8}};
    for (const auto& c : cases) {
        vgSetParameteri(path, c.type, 9);
        EXPECT_EQ(vgGetParameterf(path, c.type), c.value) << c.type;
    }
    EXPECT_EQ(vgGetParameteri(path, VG_PATH_SCALE), 0);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

}  // namespace
}  // namespace vg
