#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>
#include <vector>

#include "vg/engine_fixture.h"

namespace vg {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

using Params = EngineFixture;

std::vector<VGfloat> readFloats(VGint type) {
    std::vector<VGfloat> values(static_cast<size_t>(vgGetVectorSize(type)));
    if (!values.empty()) vgGetfv(type, static_cast<VGint>(values.size()), values.data());
    return values;
}

struct RangeCase {
    VGint type;
    VGint initial;
    VGint least, greatest;
};

const RangeCase kRangeCases[] = {
    {VG_MATRIX_MODE, 0x1400, 0x1400, 0x1404},
    {VG_FILL_RULE, 0x1900, 0x1900, 0x1901},
    {VG_RENDERING_QUALITY, 0x1202, 0x1200, 0x1202},
    {VG_BLEND_MODE, 0x2001, 0x2000, 0x209D},
    {VG_IMAGE_MODE, 0x1F00, 0x1F00, 0x1F02},
    {VG_STROKE_CAP_STYLE, 0x1700, 0x1700, 0x1702},
    {VG_STROKE_JOIN_STYLE, 0x1800, 0x1800, 0x1802},
    {VG_PIXEL_LAYOUT, 0x1300, 0x1300, 0x1304},
    {VG_FILL_BLEND_MODE_KRN, 0x2001, 0x2000, 0x209D},
    {VG_STROKE_BLEND_MODE_KRN, 0x2001, 0x2000, 0x209D},
    {VG_STROKE_START_CAP_STYLE_KRN, 0x1700, 0x1700, 0x1702},
    {VG_STROKE_END_CAP_STYLE_KRN, 0x1700, 0x1700, 0x1702},
};

TEST_F(Params, EnumerationsKeepToTheirRangeThroughEverySetter) {
    for (const RangeCase& c : kRangeCases) EXPECT_EQ(vgGeti(c.type), c.initial) << c.type;
    for (const RangeCase& c : kRangeCases) {
        SCOPED_TRACE(c.type);
        const auto least = static_cast<VGfloat>(c.least);
        const auto greatest = static_cast<VGfloat>(c.greatest);
        EXPECT_EQ(vgGetVectorSize(c.type), 1);
        vgSeti(c.type, c.least);
        EXPECT_EQ(vgGeti(c.type), c.least);
        vgSetf(c.type, greatest + 0.5F);  // rounded down
        EXPECT_EQ(vgGetf(c.type), greatest);
        EXPECT_EQ(vgGetError(), VG_NO_ERROR);

        for (const VGint bad : {c.least - 1, c.greatest + 1, INT_MIN, INT_MAX, 0}) {
            vgSeti(c.type, bad);
            EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR) << bad;
        }
        for (const VGfloat bad : {least - 0.25F, greatest + 1, kNan, kInfinity, -kInfinity}) {
            vgSetfv(c.type, 1, &bad);
            EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR) << bad;
        }
        EXPECT_EQ(vgGeti(c.type), c.greatest);
    }
}

TEST_F(Params, BooleansTakeAnyInteger) {
    for (const VGint type :
         {VG_STROKE_DASH_PHASE_RESET, VG_MASKING, VG_SCISSORING, VG_FILTER_FORMAT_LINEAR,
          VG_FILTER_FORMAT_PREMULTIPLIED, VG_COLOR_TRANSFORM}) {
        SCOPED_TRACE(type);
        EXPECT_EQ(vgGeti(type), VG_FALSE);
        vgSeti(type, INT_MIN);
        EXPECT_EQ(vgGeti(type), VG_TRUE);
        vgSetf(type, 0.5F);  // rounded down like every other integer
        EXPECT_EQ(vgGeti(type), VG_FALSE);
        vgSetf(type, -0.5F);
        EXPECT_EQ(vgGetf(type), 1.0F);
    }
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(Params, FloatsComeOutFiniteAndAsSaturatedIntegers) {
    const struct {
        VGfloat set, kept;
        VGint floored;
    } cases[] = {
        {kNan, 0.0F, 0},
        {kInfinity, FLT_MAX, INT_MAX},
        {-kInfinity, -FLT_MAX, INT_MIN},
        {2147483648.0F, 2147483648.0F, INT_MAX},
        {-2147483648.0F, -2147483648.0F, INT_MIN},
        {-2.25F, -2.25F, -3},
        {2.75F, 2.75F, 2},
    };
    for (const VGint type : {VG_STROKE_LINE_WIDTH, VG_STROKE_DASH_PHASE}) {
        for (const auto& c : cases) {
            vgSetfv(type, 1, &c.set);
            EXPECT_EQ(vgGetf(type), c.kept);
            EXPECT_EQ(vgGeti(type), c.floored);
        }
    }
    vgSetf(VG_FILTER_CHANNEL_MASK, 3e9F);
    EXPECT_EQ(vgGeti(VG_FILTER_CHANNEL_MASK), INT_MAX);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(Params, ImageQualityKeepsTheBestOfTheMask) {
    const VGint kept[] = {0, 1, 2, 2, 4, 4, 4, 4};
    for (VGint mask = 1; mask <= 7; ++mask) {
        vgSeti(VG_IMAGE_QUALITY, mask);
        EXPECT_EQ(vgGeti(VG_IMAGE_QUALITY), kept[mask]);
    }
    for (const VGint bad : {0, 8, -1}) {
        vgSeti(VG_IMAGE_QUALITY, bad);
        EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR);
    }
}

TEST_F(Params, SeparateCapsAndBlendModesFollowTheJointOnes) {
    vgSeti(VG_STROKE_CAP_STYLE, VG_CAP_ROUND);
    vgSeti(VG_STROKE_END_CAP_STYLE_KRN, VG_CAP_SQUARE);
    EXPECT_EQ(vgGeti(VG_STROKE_START_CAP_STYLE_KRN), VG_CAP_ROUND);
    EXPECT_EQ(vgGeti(VG_STROKE_END_CAP_STYLE_KRN), VG_CAP_SQUARE);
    vgSeti(VG_BLEND_MODE, 0x209D);
    vgSeti(VG_FILL_BLEND_MODE_KRN, VG_BLEND_SRC);
    EXPECT_EQ(context->fillBlendMode, VG_BLEND_SRC);
    EXPECT_EQ(context->strokeBlendMode, 0x209D);
}

TEST_F(Params, ReadOnlyParametersIgnoreSettersAndReportTheirValues) {
    const struct {
        VGint type, value;
    } cases[] = {
        {VG_SCREEN_LAYOUT, 0x1300},
        {VG_MAX_SCISSOR_RECTS, 0x7FFFFFFF},
        {VG_MAX_DASH_COUNT, 0x7FFFFFFF},
        {VG_MAX_KERNEL_SIZE, 255},
        {VG_MAX_SEPARABLE_KERNEL_SIZE, 255},
        {VG_MAX_COLOR_RAMP_STOPS, 0x7FFFFFFF},
        {VG_MAX_IMAGE_WIDTH, 23170},
        {VG_MAX_IMAGE_HEIGHT, 23170},
        {VG_MAX_IMAGE_PIXELS, 536848900},
        {VG_MAX_IMAGE_BYTES, 2147395600},
        {VG_MAX_FLOAT, INT_MAX},
        {VG_MAX_GAUSSIAN_STD_DEVIATION, 128},
    };
    for (const auto& c : cases) {
        vgSeti(c.type, 1);
        vgSetf(c.type, kNan);
        EXPECT_EQ(vgGeti(c.type), c.value) << c.type;
    }
    EXPECT_EQ(vgGetf(VG_MAX_FLOAT), FLT_MAX);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(Params, UnknownTypesAndWrongShapesAreRefused) {
    VGfloat values[9] = {};
    VGint integers[9] = {};
    for (const VGint type : {0, -1, INT_MAX, INT_MIN, 0x10FF, 0x1107, 0x1117, 0x1172, 0x1194}) {
        SCOPED_TRACE(type);
        expectEach(
            VG_ILLEGAL_ARGUMENT_ERROR, [&] { vgSeti(type, 0); },
            [&] { EXPECT_EQ(vgGetf(type), 0.0F); }, [&] { EXPECT_EQ(vgGetVectorSize(type), 0); },
            [&] { vgSetiv(type, 1, integers); });
    }
    const struct {
        VGint type, size;
    } vectors[] = {{VG_TILE_FILL_COLOR, 4},
                   {VG_CLEAR_COLOR, 4},
                   {VG_GLYPH_ORIGIN, 2},
                   {VG_COLOR_TRANSFORM_VALUES, 8},
                   {VG_STROKE_LINE_WIDTH, 1}};
    for (const auto& c : vectors) {
        SCOPED_TRACE(c.type);
        EXPECT_EQ(vgGetVectorSize(c.type), c.size);
        for (const VGint count : {-1, 0, c.size - 1, c.size + 1, INT_MIN}) {
            if (count == c.size) continue;
            vgSetfv(c.type, count, values);
            EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR) << count;
        }
        for (const VGint count : {-1, 0, c.size + 1}) {
            vgGetiv(c.type, count, integers);
            EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR) << count;
        }
    }
    for (const VGint type : {VG_SCISSOR_RECTS, VG_STROKE_DASH_PATTERN, VG_TILE_FILL_COLOR,
                             VG_CLEAR_COLOR, VG_GLYPH_ORIGIN, VG_COLOR_TRANSFORM_VALUES}) {
        vgSetf(type, 1);
        EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR) << type;
        EXPECT_EQ(vgGeti(type), 0);
        EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR) << type;
    }
}

TEST_F(Params, ArraysMustBeAlignedAndPresent) {
    alignas(4) char bytes[40] = {};
    auto* const unaligned = reinterpret_cast<VGfloat*>(bytes + 2);
    auto* const unalignedIntegers = reinterpret_cast<VGint*>(bytes + 1);
    for (const VGint type : {VG_CLEAR_COLOR, VG_STROKE_DASH_PATTERN, VG_SCISSOR_RECTS}) {
        expectEach(
            VG_ILLEGAL_ARGUMENT_ERROR, [&] { vgSetfv(type, 4, unaligned); },
            [&] { vgSetiv(type, 4, unalignedIntegers); }, [&] { vgSetfv(type, 4, nullptr); });
    }
    expectEach(
        VG_ILLEGAL_ARGUMENT_ERROR, [&] { vgGetfv(VG_CLEAR_COLOR, 4, unaligned); },
        [&] { vgGetiv(VG_CLEAR_COLOR, 4, nullptr); });
    vgSetfv(VG_STROKE_DASH_PATTERN, 0, nullptr);
    vgSetiv(VG_SCISSOR_RECTS, 0, nullptr);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(Params, GettersMayAskForTheFirstValuesOnly) {
    const VGfloat color[] = {1.75F, -0.5F, kNan, 1e30F};
    vgSetfv(VG_CLEAR_COLOR, 4, color);
    VGint integers[4] = {9, 9, 9, 9};
    vgGetiv(VG_CLEAR_COLOR, 2, integers);
    EXPECT_EQ(integers[1], -1);
    EXPECT_EQ(integers[2], 9);
    EXPECT_EQ(readFloats(VG_CLEAR_COLOR), (std::vector<VGfloat>{1.75F, -0.5F, 0.0F, 1e30F}));
}

TEST_F(Params, ScissorRectanglesAreRoundedDownAndMarkedChanged) {
    EXPECT_TRUE(context->scissorChanged);
    context->scissorChanged = false;
    const VGfloat rects[] = {-0.5F, 1.9F, 1e30F, kNan, 1, 2, 3, 4};
    vgSetfv(VG_SCISSOR_RECTS, 8, rects);
    EXPECT_TRUE(context->scissorChanged);
    EXPECT_EQ(readFloats(VG_SCISSOR_RECTS),
              (std::vector<VGfloat>{-1, 1, static_cast<VGfloat>(INT_MAX), 0, 1, 2, 3, 4}));
    context->scissorChanged = false;
    vgSetfv(VG_SCISSOR_RECTS, 6, rects);
    EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR);
    EXPECT_FALSE(context->scissorChanged);
    vgSetfv(VG_SCISSOR_RECTS, 0, nullptr);
    EXPECT_EQ(vgGetVectorSize(VG_SCISSOR_RECTS), 0);
    EXPECT_TRUE(context->scissorChanged);
}

TEST_F(Params, ListsBeyondAllMemoryAreRefusedBeforeTheyAreRead) {
    const VGint one[] = {1, 1, 1, 1};
    constexpr VGint kTooMany = 0x7FFFFFFC;
    vgSetiv(VG_SCISSOR_RECTS, 4, one);
    vgSetiv(VG_STROKE_DASH_PATTERN, 4, one);
    expectEach(
        VG_OUT_OF_MEMORY_ERROR, [&] { vgSetiv(VG_SCISSOR_RECTS, kTooMany, one); },
        [&] { vgSetiv(VG_STROKE_DASH_PATTERN, kTooMany, one); });
    EXPECT_EQ(vgGetVectorSize(VG_SCISSOR_RECTS), 4);
    EXPECT_EQ(vgGetVectorSize(VG_STROKE_DASH_PATTERN), 4);
    EXPECT_EQ(context->stroke.dashTotal, 4.0F);
}

TEST_F(Params, DashPatternsAreKeptAsGivenBesideTheDashesInEffect) {
    const struct {
        const char* name;
        std::vector<VGfloat> pattern, effective;
        float total;
    } cases[] = {
        {"two", {1, 2}, {1, 2}, 3},
        {"odd count", {3, 4, 5}, {3, 4}, 7},
        {"one value", {5}, {}, 0},
        {"negative value", {-1, 2}, {0, 2}, 2},
        {"nothing but gaps of zero", {0, 0}, {}, 0},
        {"a total at the limit", {1.1920929e-7F, 0}, {}, 0},
        {"a total above the limit", {1.2e-7F, 0}, {1.2e-7F, 0}, 1.2e-7F},
        {"a total beyond floats", {FLT_MAX, FLT_MAX}, {FLT_MAX, FLT_MAX}, FLT_MAX},
        {"empty", {}, {}, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        vgSetfv(VG_STROKE_DASH_PATTERN, static_cast<VGint>(c.pattern.size()), c.pattern.data());
        EXPECT_EQ(readFloats(VG_STROKE_DASH_PATTERN), c.pattern);
        const auto& dashes = context->stroke.effectiveDashes;
        EXPECT_EQ(std::vector<VGfloat>(dashes.begin(), dashes.end()), c.effective);
        EXPECT_EQ(context->stroke.dashTotal, c.total);
    }
    const VGfloat wild[] = {kNan, kInfinity};
    vgSetfv(VG_STROKE_DASH_PATTERN, 2, wild);
    EXPECT_EQ(readFloats(VG_STROKE_DASH_PATTERN), (std::vector<VGfloat>{0, FLT_MAX}));
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(Params, StrokeValuesFollowWidthAndMiterLimit) {
    const StrokeState& stroke = context->stroke;
    vgSeti(VG_STROKE_MITER_LIMIT, 0);
    EXPECT_EQ(vgGetf(VG_STROKE_MITER_LIMIT), 1.0F);
    EXPECT_EQ(stroke.miterLengthSquared, 0.25F);
    vgSetf(VG_STROKE_LINE_WIDTH, 6.0F);
    vgSetf(VG_STROKE_MITER_LIMIT, 3.0F);
    EXPECT_EQ(stroke.halfWidth, 3.0F);
    EXPECT_EQ(stroke.miterLengthSquared, 81.0F);
    vgSetf(VG_STROKE_LINE_WIDTH, 1e30F);
    EXPECT_TRUE(std::isfinite(stroke.miterLengthSquared));
    vgSetf(VG_STROKE_MITER_LIMIT, kNan);
    EXPECT_EQ(vgGetf(VG_STROKE_MITER_LIMIT), 1.0F);
}

TEST_F(Params, TheColorTransformIsInForceOnlyWhileEnabled) {
    const VGfloat values[] = {0.5F, kNan, 2, 1, 0, 0.25F, 0, -1};
    const float* effective = context->effectiveColorTransform.values;
    vgSetfv(VG_COLOR_TRANSFORM_VALUES, 8, values);
    EXPECT_EQ(effective[0], 1.0F);
    vgSeti(VG_COLOR_TRANSFORM, VG_TRUE);
    EXPECT_EQ(effective[0], 0.5F);
    EXPECT_EQ(effective[1], 0.0F);
    EXPECT_EQ(effective[7], -1.0F);
    const VGint integers[] = {3, 3, 3, 3, 0, 0, 0, 0};
    vgSetiv(VG_COLOR_TRANSFORM_VALUES, 8, integers);
    EXPECT_EQ(effective[0], 3.0F);
    vgSeti(VG_COLOR_TRANSFORM, VG_FALSE);
    EXPECT_EQ(effective[0], 1.0F);
    EXPECT_EQ(readFloats(VG_COLOR_TRANSFORM_VALUES)[0], 3.0F);
}

}  // namespace
}  // namespace vg
