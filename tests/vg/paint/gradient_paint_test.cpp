#include <gtest/gtest.h>

#include <cfloat>
#include <limits>
#include <vector>

#include "vg/engine_fixture.h"
#include "vg/paint/paint.h"
#include "vg/vgu.h"

namespace vg {
namespace {

/// A paint that fills, and a path over the whole surface of 16 x 16 pixels.
struct GradientPaint : EngineFixture {
    GradientPaint() : paint(vgCreatePaint()) {
        path = createPath();
        vguRect(path, 0, 0, 16, 16);
        vgSetPaint(paint, VG_FILL_PATH);
    }

    void setVector(VGint type, const std::vector<VGfloat>& values) const {
        vgSetParameterfv(paint, type, static_cast<VGint>(values.size()), values.data());
    }
    void setMatrix(VGint mode, VGfloat sx, VGfloat shx, VGfloat tx, VGfloat shy, VGfloat sy,
                   VGfloat ty) const {
        const VGfloat m[9] = {sx, shy, 0, shx, sy, 0, tx, ty, 1};
        vgSeti(VG_MATRIX_MODE, mode);
        vgLoadMatrix(m);
    }
    void setOpacity(VGfloat opacity) const {
        const VGfloat values[8] = {1, 1, 1, opacity, 0, 0, 0, 0};
        vgSetfv(VG_COLOR_TRANSFORM_VALUES, 8, values);
        vgSeti(VG_COLOR_TRANSFORM, VG_TRUE);
    }
    /// A linear gradient over the 16 columns.
    void setLinear() const {
        vgSetParameteri(paint, VG_PAINT_TYPE, VG_PAINT_TYPE_LINEAR_GRADIENT);
        setVector(VG_PAINT_LINEAR_GRADIENT, {0, 0, 16, 0});
    }
    /// Draws on zeroed pixels.
    void draw() const {
        vgClear(0, 0, 16, 16);
        vgDrawPath(path, VG_FILL_PATH);
        EXPECT_EQ(vgGetError(), VG_NO_ERROR);
    }
    uint32_t builds() const { return context->findPaint(paint)->ramps.buildCount(); }
    const base::Array<raster::ColorStop>& usedStops() const {
        return context->findPaint(paint)->stops.used();
    }

    VGPaint paint;
    VGPath path;
};

TEST_F(GradientPaint, ParametersHaveTheirDefaultsAndKeepWhatIsSet) {
    struct Case {
        VGint type;
        std::vector<VGfloat> initial, set;
    };
    const Case cases[] = {
        {VG_PAINT_COLOR_RAMP_STOPS, {}, {0.5F, 1, 2, 3, 4, 7, 0, 0, 0, 0}},
        {VG_PAINT_LINEAR_GRADIENT, {0, 0, 1, 0}, {1, 2, 3, 4}},
        {VG_PAINT_RADIAL_GRADIENT, {0, 0, 0, 0, 1}, {5, 4, 3, 2, -1}},
        {VG_PAINT_CONICAL_GRADIENT_KRN, {0, 0, 1, 0, 1}, {1, 2, 3, 4, 5}},
    };
    const auto read = [&](VGint type) {
        std::vector<VGfloat> values(static_cast<size_t>(vgGetParameterVectorSize(paint, type)));
        if (!values.empty()) {
            vgGetParameterfv(paint, type, static_cast<VGint>(values.size()), values.data());
        }
        return values;
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.type);
        EXPECT_EQ(read(c.type), c.initial);
        setVector(c.type, c.set);
        EXPECT_EQ(read(c.type), c.set);
    }
    EXPECT_EQ(vgGetParameteri(paint, VG_PAINT_COLOR_RAMP_PREMULTIPLIED), VG_TRUE);
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(GradientPaint, EnumerationsAreCheckedAtTheirEnds) {
    const struct {
        VGint type, least, greatest;
    } cases[] = {
        {VG_PAINT_TYPE, VG_PAINT_TYPE_COLOR, VG_PAINT_TYPE_CONICAL_GRADIENT_KRN},
        {VG_PAINT_COLOR_RAMP_SPREAD_MODE, VG_COLOR_RAMP_SPREAD_PAD, VG_COLOR_RAMP_SPREAD_REFLECT},
        {VG_PAINT_PATTERN_TILING_MODE, VG_TILE_FILL, VG_TILE_REFLECT},
        {VG_PAINT_COLOR_RAMP_INTERPOLATION_TYPE_KRN, VG_COLOR_RAMP_INTERPOLATION_LINEAR_KRN,
         VG_COLOR_RAMP_INTERPOLATION_SMOOTH_KRN},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.type);
        EXPECT_EQ(vgGetParameteri(paint, c.type), c.least) << "the default is the first value";
        vgSetParameteri(paint, c.type, c.greatest);
        EXPECT_EQ(vgGetError(), VG_NO_ERROR);
        for (const VGint bad : {c.least - 1, c.greatest + 1}) {
            vgSetParameteri(paint, c.type, bad);
            EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR) << bad;
        }
        EXPECT_EQ(vgGetParameteri(paint, c.type), c.greatest);
    }
    for (const VGint count : {1, 4, 6, 9}) {
        const VGfloat values[9] = {};
        vgSetParameterfv(paint, VG_PAINT_COLOR_RAMP_STOPS, count, values);
        EXPECT_EQ(vgGetError(), VG_ILLEGAL_ARGUMENT_ERROR) << count;
    }
}

TEST_F(GradientPaint, StopsAreMadeUsable) {
    struct Stop {
        VGfloat offset, red;
    };
    struct Case {
        const char* name;
        std::vector<Stop> given, used;
    };
    constexpr VGfloat kInfinity = std::numeric_limits<VGfloat>::infinity();
    const VGfloat kNan = std::numeric_limits<VGfloat>::quiet_NaN();
    const Case cases[] = {
        {"as they are", {{0, 0.1F}, {0.5F, 0.2F}, {1, 0.3F}}, {{0, 0.1F}, {0.5F, 0.2F}, {1, 0.3F}}},
        {"ends are added",
         {{0.4F, 0.1F}, {0.6F, 0.2F}},
         {{0, 0.1F}, {0.4F, 0.1F}, {0.6F, 0.2F}, {1, 0.2F}}},
        {"one stop", {{0.4F, 0.7F}}, {{0, 0.7F}, {0.4F, 0.7F}, {1, 0.7F}}},
        {"out of range is left out",
         {{-0.1F, 0.9F}, {0, 0.1F}, {1, 0.2F}, {kInfinity, 0.9F}},
         {{0, 0.1F}, {1, 0.2F}}},
        {"a falling offset invalidates all",
         {{0, 0.1F}, {0.6F, 0.2F}, {0.5F, 0.3F}, {1, 0.4F}},
         {}},
        {"an offset out of range does not fall",
         {{0, 0.1F}, {2, 0.2F}, {1, 0.4F}},
         {{0, 0.1F}, {1, 0.4F}}},
        {"the first and the last of equals stay",
         {{0, 0.1F}, {0.5F, 0.2F}, {0.5F, 0.3F}, {0.5F, 0.4F}, {0.5F, 0.5F}, {1, 0.6F}},
         {{0, 0.1F}, {0.5F, 0.2F}, {0.5F, 0.5F}, {1, 0.6F}}},
        {"components are clamped",
         {{0, -3}, {0.5F, kNan}, {1, kInfinity}},
         {{0, 0}, {0.5F, 0}, {1, 1}}},
        {"nothing stays", {{-1, 0.1F}, {2, 0.2F}}, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<VGfloat> values;
        for (const Stop& stop : c.given) {
            values.insert(values.end(), {stop.offset, stop.red, 0, 0, 1});
        }
        setVector(VG_PAINT_COLOR_RAMP_STOPS, values);
        const auto& used = usedStops();
        ASSERT_EQ(used.count(), static_cast<int>(c.used.size()));
        for (int i = 0; i < used.count(); ++i) {
            EXPECT_EQ(used[i].offset, c.used[static_cast<size_t>(i)].offset) << i;
            EXPECT_EQ(used[i].color[0], c.used[static_cast<size_t>(i)].red) << i;
        }
    }
    EXPECT_EQ(vgGetError(), VG_NO_ERROR);
}

TEST_F(GradientPaint, DrawsThroughBothMatrices) {
    setLinear();
    draw();
    for (int x = 0; x < 16; ++x) {
        const auto level = static_cast<int>(pixelAt(x, 3) & 0xFF);
        EXPECT_NEAR(level, (x + 0.5) / 16 * 255, 1) << x;
    }
    const std::vector<uint32_t> plain(surface->pixels.begin(), surface->pixels.end());

    // A smaller paint in a larger user space: the same, the geometry being the same.
    setMatrix(VG_MATRIX_PATH_USER_TO_SURFACE, 2, 0, 0, 0, 2, 0);
    setMatrix(VG_MATRIX_FILL_PAINT_TO_USER, 0.5F, 0, 0, 0, 0.5F, 0);
    draw();
    EXPECT_EQ(plain, std::vector<uint32_t>(surface->pixels.begin(), surface->pixels.end()));

    // The stroke's matrix is not the fill's.
    setMatrix(VG_MATRIX_STROKE_PAINT_TO_USER, 7, 0, 0, 0, 7, 0);
    draw();
    EXPECT_EQ(plain, std::vector<uint32_t>(surface->pixels.begin(), surface->pixels.end()));

    setMatrix(VG_MATRIX_FILL_PAINT_TO_USER, 0, -0.5F, 0, 0.5F, 0, 0);  // a quarter turn
    draw();
    EXPECT_EQ(pixelAt(2, 9), plain[9]);
}

TEST_F(GradientPaint, DrawsNothingUnderAMatrixWithoutInverse) {
    setLinear();
    const VGfloat matrices[][4] = {
        {0, 0, 0, 0}, {1, 0, 0, 0}, {1, 2, 2, 4}, {3e38F, 3e38F, 3e38F, 3e38F}};
    for (const auto& m : matrices) {
        setMatrix(VG_MATRIX_FILL_PAINT_TO_USER, m[0], m[1], 0, m[2], m[3], 0);
        draw();
        EXPECT_EQ(pixelAt(8, 8), 0U) << m[0] << ' ' << m[1];
    }
}

TEST_F(GradientPaint, WithoutExtentDrawsTheLastColorWhateverTheSpread) {
    setVector(VG_PAINT_COLOR_RAMP_STOPS, {0, 1, 0, 0, 1, 1, 0, 0, 1, 1});
    setVector(VG_PAINT_LINEAR_GRADIENT, {3, 3, 3, 3});
    setVector(VG_PAINT_RADIAL_GRADIENT, {3, 3, 3, 3, 0});
    for (const VGint type : {VG_PAINT_TYPE_LINEAR_GRADIENT, VG_PAINT_TYPE_RADIAL_GRADIENT}) {
        for (VGint spread = VG_COLOR_RAMP_SPREAD_PAD; spread <= VG_COLOR_RAMP_SPREAD_REFLECT;
             ++spread) {
            vgSetParameteri(paint, VG_PAINT_TYPE, type);
            vgSetParameteri(paint, VG_PAINT_COLOR_RAMP_SPREAD_MODE, spread);
            draw();
            EXPECT_EQ(pixelAt(8, 8), 0xFF0000FF) << type << ' ' << spread;
        }
    }
}

TEST_F(GradientPaint, PatternsWithoutAnImageAndUnknownTypesPaintTheirColor) {
    vgSetColor(paint, 0x112233FF);
    for (const VGint type : {VGint{VG_PAINT_TYPE_PATTERN}, VGint{0x1B04}, VGint{0x1B8F}}) {
        vgSetParameteri(paint, VG_PAINT_TYPE, type);
        draw();
        EXPECT_EQ(pixelAt(8, 8), 0xFF112233) << type;
    }
}

TEST_F(GradientPaint, ConicalTurnsFromItsTarget) {
    vgSetParameteri(paint, VG_PAINT_TYPE, VG_PAINT_TYPE_CONICAL_GRADIENT_KRN);
    setVector(VG_PAINT_CONICAL_GRADIENT_KRN, {8, 8, 8, 16, 1});  // angle 0 is up
    draw();
    const auto level = [&](int x, int y) { return static_cast<int>(pixelAt(x, y) & 0xFF); };
    EXPECT_NEAR(level(0, 8), 64, 4) << "a quarter turn on, to the left";
    EXPECT_NEAR(level(8, 0), 128, 5);
    EXPECT_NEAR(level(15, 7), 191, 5);
}

TEST_F(GradientPaint, OpacitiesInTurnBuildNoRampsTwice) {
    setLinear();
    for (int round = 0; round < 5; ++round) {
        for (const VGfloat opacity : {0.25F, 0.5F, 0.75F, 1.0F}) {
            setOpacity(opacity);
            draw();
            EXPECT_EQ(pixelAt(3, 3) >> 24, static_cast<uint32_t>(opacity * 255 + 0.5F));
        }
    }
    EXPECT_EQ(builds(), 4U);
    vgSeti(VG_COLOR_TRANSFORM, VG_FALSE);
    draw();
    EXPECT_EQ(builds(), 4U) << "no transform is the same as one that changes nothing";
}

TEST_F(GradientPaint, RampsFollowEveryParameterTheyDependOn) {
    setLinear();
    setVector(VG_PAINT_COLOR_RAMP_STOPS, {0, 1, 0, 0, 0, 0.3F, 0, 0, 1, 1, 1, 0, 1, 0, 0.5F});
    draw();
    std::vector<uint32_t> before;
    uint32_t count = 1;
    const auto expectRebuilt = [&](const char* what) {
        before.assign(surface->pixels.begin(), surface->pixels.end());
        draw();
        EXPECT_EQ(builds(), ++count) << what;
        EXPECT_NE(before, std::vector<uint32_t>(surface->pixels.begin(), surface->pixels.end()))
            << what;
    };
    vgSetParameteri(paint, VG_PAINT_COLOR_RAMP_PREMULTIPLIED, VG_FALSE);
    expectRebuilt("premultiplied");
    vgSetParameteri(paint, VG_PAINT_COLOR_RAMP_INTERPOLATION_TYPE_KRN,
                    VG_COLOR_RAMP_INTERPOLATION_SMOOTH_KRN);
    expectRebuilt("interpolation");
    vgSetParameteri(paint, VG_PAINT_COLOR_RAMP_SPREAD_MODE, VG_COLOR_RAMP_SPREAD_REFLECT);
    setVector(VG_PAINT_LINEAR_GRADIENT, {0, 0, 4, 0});
    expectRebuilt("mirrored");
    setVector(VG_PAINT_COLOR_RAMP_STOPS, {0, 1, 0, 0, 1});
    expectRebuilt("stops");
    setVector(VG_PAINT_COLOR_RAMP_STOPS, {0, 1, 0, 0, 1});
    draw();
    EXPECT_EQ(builds(), count) << "the same stops again";
}

TEST_F(GradientPaint, TheRampUsedLongestAgoGoesFirst) {
    setLinear();
    const auto drawWith = [&](int opacity) {
        setOpacity(static_cast<float>(opacity) / 16.0F);
        draw();
        return builds();
    };
    for (int opacity = 0; opacity < RampCache::kEntries; ++opacity) drawWith(opacity);
    const uint32_t full = builds();
    EXPECT_EQ(drawWith(0), full);
    EXPECT_EQ(drawWith(15), full + 1) << "takes the place of 1";
    EXPECT_EQ(drawWith(0), full + 1);
    EXPECT_EQ(drawWith(1), full + 2);
}

TEST_F(GradientPaint, ALinearSurfaceGetsLinearColors) {
    Surface* linear = createSurface(16, 16, {.linear = true, .premultiplied = true});
    makeCurrent(context, linear);
    setLinear();
    draw();
    EXPECT_NEAR(static_cast<int>(linear->view().row(0)[8] & 0xFF), 62, 2);  // of 0.53
    makeCurrent(context, surface);
    destroySurface(linear);
}

}  // namespace
}  // namespace vg
