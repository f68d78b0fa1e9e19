// Draws that reuse what earlier ones left, beside draws that do not: the maxima of the
// configuration set to 0 switch band lists off.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "vg/draw/path_cache.h"
#include "vg/engine_fixture.h"
#include "vg/path/path.h"

namespace vg {
namespace {

constexpr int kSide = 64;
constexpr VGint kQualities[] = {VG_RENDERING_QUALITY_NONANTIALIASED, VG_RENDERING_QUALITY_FASTER,
                                VG_RENDERING_QUALITY_BETTER};
constexpr VGbitfield kBoth = VG_FILL_PATH | VG_STROKE_PATH;

using Pixels = std::vector<uint32_t>;

/// The picture `rows` higher and `columns` to the right; what comes in is transparent.
Pixels moved(const Pixels& pixels, int columns, int rows) {
    Pixels result(pixels.size(), 0);
    for (int y = 0; y < kSide; ++y) {
        for (int x = 0; x < kSide; ++x) {
            const int fromX = x - columns, fromY = y + rows;  // memory rows run downwards
            if (fromX < 0 || fromX >= kSide || fromY < 0 || fromY >= kSide) continue;
            result[static_cast<size_t>(y * kSide + x)] =
                pixels[static_cast<size_t>(fromY * kSide + fromX)];
        }
    }
    return result;
}

class DrawCache : public EngineFixture {
protected:
    DrawCache() : EngineFixture(kSide, kSide) {
        const VGfloat color[4] = {1.0F, 0.5F, 0.25F, 0.75F};
        const VGPaint paint = vgCreatePaint();
        vgSetParameterfv(paint, VG_PAINT_COLOR, 4, color);
        vgSetPaint(paint, kBoth);
        allowSnap(false);
    }

    void allowSnap(bool isAllowed) {
        Configuration& settings = context->configuration;
        settings.allowVerticalSnapBetter = settings.allowVerticalSnapFaster =
            settings.allowVerticalSnapNonAntialiased = isAllowed;
    }

    VGPath createPath(const std::vector<VGubyte>& segments, const std::vector<VGfloat>& data) {
        const VGPath path = EngineFixture::createPath();
        vgAppendPathData(path, static_cast<VGint>(segments.size()), segments.data(), data.data());
        return path;
    }

    /// A triangle with one bent side, about 20 pixels wide.
    VGPath createShape() {
        return createPath({VG_MOVE_TO, VG_LINE_TO, VG_CUBIC_TO, VG_CLOSE_PATH},
                          {4.25F, 5.5F, 24, 8.25F, 20, 18, 12, 12, 6.75F, 24.5F});
    }

    void drawAt(VGPath path, float x, float y, VGbitfield modes) {
        const VGfloat matrix[9] = {scaleX, 0, 0, 0, 1, 0, x, y, 1};
        vgLoadMatrix(matrix);
        vgDrawPath(path, modes);
    }

    Pixels pictureAt(VGPath path, float x, float y, VGbitfield modes = kBoth) {
        const bool isScissoring = std::exchange(context->scissoring, false);  // clears honour it
        vgClear(0, 0, kSide, kSide);
        context->scissoring = isScissoring;
        drawAt(path, x, y, modes);
        EXPECT_EQ(vgGetError(), VG_NO_ERROR);
        return {surface->pixels.begin(), surface->pixels.end()};
    }

    /// The picture without band lists, which are not touched.
    Pixels sweptAt(VGPath path, float x, float y, VGbitfield modes = kBoth) {
        const int32_t width = std::exchange(context->configuration.maxCachingBoxWidth, 0);
        Pixels picture = pictureAt(path, x, y, modes);
        context->configuration.maxCachingBoxWidth = width;
        return picture;
    }

    void record(VGPath path, float x = 0.0F, float y = 0.0F) {
        for (int i = 0; i < 3; ++i) drawAt(path, x, y, kBoth);
    }

    PathCache& cacheOf(VGPath path) { return *vg::cacheOf(*context->findPath(path)); }
    bool hasFillList(VGPath path) { return cacheOf(path).fillBands.list() != nullptr; }
    bool hasStrokeList(VGPath path) { return cacheOf(path).strokeBands.list() != nullptr; }

    float scaleX = 1.0F;
};

struct SceneShape {
    VGPath path;
    VGfloat matrix[9];
    VGbitfield modes;
    float width;
};

TEST_F(DrawCache, UnchangedScenesAreBitIdentical) {
    std::mt19937 random(7);
    const auto within = [&](float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random);
    };
    for (int scene = 0; scene < 12; ++scene) {
        std::vector<SceneShape> shapes;
        for (int i = 0; i < 10; ++i) {
            std::vector<VGubyte> segments = {VG_MOVE_TO};
            std::vector<VGfloat> data = {within(0, 40), within(0, 40)};
            for (int k = i % 7; k >= 0; --k) {
                segments.push_back(k % 3 == 0 ? VG_LINE_TO : VG_QUAD_TO);
                for (int n = k % 3 == 0 ? 2 : 4; n > 0; --n) data.push_back(within(0, 40));
            }
            shapes.push_back({createPath(segments, data),
                              {within(-1, 1), within(-1, 1), 0, within(-1, 1), within(-1, 1), 0,
                               within(0, 60), within(0, 60), 1},
                              static_cast<VGbitfield>(1 + i % 3),
                              within(0.2F, 4)});
        }
        const auto draw = [&] {
            vgClear(0, 0, kSide, kSide);
            for (const SceneShape& shape : shapes) {
                vgLoadMatrix(shape.matrix);
                vgSetf(VG_STROKE_LINE_WIDTH, shape.width);
                vgDrawPath(shape.path, shape.modes);
            }
            return Pixels(surface->pixels.begin(), surface->pixels.end());
        };
        allowSnap(scene % 2 == 0);
        for (const VGint quality : kQualities) {
            vgSeti(VG_RENDERING_QUALITY, quality);
            context->configuration.maxCachingBoxWidth = 0;
            const Pixels expected = draw();
            context->configuration.maxCachingBoxWidth = 128;
            for (int i = 0; i < 5; ++i) ASSERT_EQ(draw(), expected) << scene << ", draw " << i;
        }
    }
}

TEST_F(DrawCache, SnapsToRowsAsTheQualityAllows) {
    constexpr int kSwept = 99;
    constexpr VGint kNone = kQualities[0], kFaster = kQualities[1], kBetter = kQualities[2];
    const struct {
        VGint quality;
        bool isAllowed;
        float deltaY;
        int rows;  ///< that the picture moves up, or kSwept
    } cases[] = {
        // The shape's top lies half a pixel above a border.
        {kBetter, true, 0.25F, 0},   {kBetter, true, 0.75F, 1},
        {kBetter, true, -0.75F, -1}, {kBetter, false, 0.25F, kSwept},
        {kBetter, false, 7.0F, 7},   {kBetter, false, -3.03F, -3},
        {kFaster, true, 0.25F, 0},   {kFaster, false, 0.25F, kSwept},
        {kFaster, false, 2.0F, 2},   {kNone, true, 0.25F, 0},
        {kNone, true, 0.75F, 1},     {kNone, false, 0.25F, kSwept},
        {kNone, false, -2.0F, -2},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE("quality " + std::to_string(c.quality) + ", by " + std::to_string(c.deltaY));
        vgSeti(VG_RENDERING_QUALITY, c.quality);
        allowSnap(c.isAllowed);
        const VGPath path = createShape();
        const Pixels origin = pictureAt(path, 10, 10, VG_FILL_PATH);
        const Pixels expected = c.rows == kSwept ? sweptAt(path, 13, 10 + c.deltaY, VG_FILL_PATH)
                                                 : moved(origin, 3, c.rows);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(pictureAt(path, 13, 10 + c.deltaY, VG_FILL_PATH), expected);
    }
}

TEST_F(DrawCache, MovesAcrossByWholeSubpixels) {
    for (const VGint quality : kQualities) {
        vgSeti(VG_RENDERING_QUALITY, quality);
        const VGPath path = createShape();
        record(path, 10, 10);
        // 0.49 and 0.51 pixels are 15/32 and 16/32, truncated toward the origin.
        EXPECT_EQ(pictureAt(path, 10.49F, 10), sweptAt(path, 10.46875F, 10));
        EXPECT_EQ(pictureAt(path, 10.51F, 10), sweptAt(path, 10.5F, 10));
        EXPECT_EQ(pictureAt(path, 9.51F, 10), sweptAt(path, 9.53125F, 10));
        EXPECT_NE(pictureAt(path, 10.49F, 10), sweptAt(path, 10, 10));
    }
}

TEST_F(DrawCache, ClippedShapesAreSwept) {
    for (const VGint quality : kQualities) {
        vgSeti(VG_RENDERING_QUALITY, quality);
        const VGPath path = createShape();
        drawAt(path, -10, 10, kBoth);  // no origin
        EXPECT_EQ(pictureAt(path, 10.49F, 10), sweptAt(path, 10.49F, 10));
        record(path, 10.49F, 10);
        EXPECT_TRUE(hasFillList(path) && hasStrokeList(path));
        for (const auto& [x, y] : {std::pair{-8.02F, 10.0F}, std::pair{50.02F, 10.0F},
                                   std::pair{20.02F, -9.0F}, std::pair{20.02F, 45.0F}}) {
            EXPECT_EQ(pictureAt(path, x, y), sweptAt(path, x, y)) << x << ", " << y;
        }
        EXPECT_EQ(pictureAt(path, 10, 10), sweptAt(path, 10.49F - 15.0F / 32, 10))
            << "inside again, the list serves as before";
    }
}

TEST_F(DrawCache, ScissorsPreventReplays) {
    const VGint around[4] = {5, 5, 45, 45}, across[8] = {0, 0, 40, 26, 30, 20, 30, 40};
    for (const VGint quality : kQualities) {
        SCOPED_TRACE(quality);
        vgSeti(VG_RENDERING_QUALITY, quality);
        const VGPath path = createShape();
        record(path, 10, 10);
        const Pixels whole = sweptAt(path, 12.02F, 10);
        vgSeti(VG_SCISSORING, VG_TRUE);
        vgSetiv(VG_SCISSOR_RECTS, 4, around);
        EXPECT_EQ(pictureAt(path, 12.02F, 10), whole);

        vgSetiv(VG_SCISSOR_RECTS, 8, across);
        const Pixels cut = pictureAt(path, 12.02F, 10);
        int differences = 0;
        for (int i = 0; i < kSide * kSide; ++i) {
            const int x = i % kSide, y = kSide - 1 - i / kSide;
            const bool isInside = (x < 40 && y < 26) || (30 <= x && x < 60 && 20 <= y && y < 60);
            const auto at = static_cast<size_t>(i);
            if (!isInside) {
                ASSERT_EQ(cut[at], 0U) << x << ", " << y;
            } else {
                differences += cut[at] != whole[at];
            }
        }
        EXPECT_LT(differences, 20) << "edges are cut at rectangles, to 1/32 pixel";

        vgSetiv(VG_SCISSOR_RECTS, 0, nullptr);
        EXPECT_EQ(pictureAt(path, 10, 10), Pixels(kSide * kSide, 0)) << "no rectangle, no pixel";
        vgSeti(VG_SCISSORING, VG_FALSE);
    }
}

TEST_F(DrawCache, ChangesAreSeen) {
    VGPath path = VG_INVALID_HANDLE;
    const auto set = [](VGint parameter, VGint value) {
        return [=] { vgSeti(static_cast<VGParamType>(parameter), value); };
    };
    const VGfloat dashes[2] = {3, 2}, longerDashes[2] = {4, 2};
    const struct {
        const char* name;
        std::function<void()> change;
        bool changesFill, changesStroke;
    } cases[] = {
        {"coordinates",
         [&] {
             const VGfloat corner[2] = {20, 3};
             vgModifyPathCoords(path, 1, 1, corner);
         },
         true, true},
        {"segments",
         [&] {
             const VGubyte segment = VG_LINE_TO;
             const VGfloat corner[2] = {20, 3};
             vgAppendPathData(path, 1, &segment, corner);
         },
         true, true},
        {"quality", set(VG_RENDERING_QUALITY, VG_RENDERING_QUALITY_FASTER), true, true},
        {"tolerance", [&] { context->configuration.curvesTolerance = 1.0F; }, true, true},
        {"matrix", [&] { scaleX = 1.25F; }, true, true},
        {"fill rule", set(VG_FILL_RULE, VG_NON_ZERO), true, false},
        {"line width", set(VG_STROKE_LINE_WIDTH, 2), false, true},
        {"caps", set(VG_STROKE_CAP_STYLE, VG_CAP_SQUARE), false, true},
        {"join", set(VG_STROKE_JOIN_STYLE, VG_JOIN_ROUND), false, true},
        {"miter limit", set(VG_STROKE_MITER_LIMIT, 1), false, true},
        {"dashes", [&] { vgSetfv(VG_STROKE_DASH_PATTERN, 2, dashes); }, false, true},
        {"other dashes", [&] { vgSetfv(VG_STROKE_DASH_PATTERN, 2, longerDashes); }, false, true},
        {"dash phase", set(VG_STROKE_DASH_PHASE, 1), false, true},
    };
    path = createShape();
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        context->recoverMemory();  // releases the lists of the case before
        record(path, 10, 10);
        ASSERT_TRUE(hasFillList(path) && hasStrokeList(path));
        c.change();
        // A replay would be moved by 15/32 pixel, a sweep by a little more.
        EXPECT_EQ(
            pictureAt(path, 10.49F, 10, VG_FILL_PATH) == sweptAt(path, 10.49F, 10, VG_FILL_PATH),
            c.changesFill);
        EXPECT_EQ(pictureAt(path, 10.49F, 10, VG_STROKE_PATH) ==
                      sweptAt(path, 10.49F, 10, VG_STROKE_PATH),
                  c.changesStroke);
    }
}

TEST_F(DrawCache, BoxesBeyondTheMaximumAreSwept) {
    const VGPath path = createPath({VG_MOVE_TO, VG_LINE_TO, VG_LINE_TO},
                                   {10.5F, 10.5F, 30.5F, 10.5F, 30.5F, 24.5F});
    vgSeti(VG_STROKE_LINE_WIDTH, 2);
    const struct {
        int32_t width, height;
        bool hasFillList, hasStrokeList;
    } cases[] = {{128, 128, true, true},  {20, 14, true, false},  {19, 128, false, false},
                 {128, 13, false, false}, {0, 128, false, false}, {128, 0, false, false}};
    for (const auto& c : cases) {
        context->configuration.maxCachingBoxWidth = c.width;
        context->configuration.maxCachingBoxHeight = c.height;
        context->recoverMemory();  // releases all lists
        record(path);
        EXPECT_EQ(hasFillList(path), c.hasFillList) << c.width << " x " << c.height;
        EXPECT_EQ(hasStrokeList(path), c.hasStrokeList) << c.width << " x " << c.height;
    }
}

TEST_F(DrawCache, RecoveryReleasesAndDrawsGoOn) {
    const VGPath path = createShape();
    const Pixels expected = pictureAt(path, 10, 10);
    record(path, 10, 10);
    context->recoverMemory();
    EXPECT_EQ(context->findPath(path)->leftovers, nullptr);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(pictureAt(path, 10, 10), expected);
}

TEST_F(DrawCache, FlattensAndStrokesOncePerKey) {
    const VGPath path = createShape();
    vgSeti(VG_STROKE_LINE_WIDTH, 4);
    for (int i = 0; i < 3; ++i) {
        for (const float scale : {1.0F, 1.5F, 2.0F}) {
            scaleX = scale;
            drawAt(path, 0, 0, VG_FILL_PATH);
            drawAt(path, 0, 0, VG_STROKE_PATH);
        }
    }
    EXPECT_EQ(cacheOf(path).flattenings.makeCount(), 3U);
    EXPECT_EQ(cacheOf(path).strokes.makeCount(), 3U);
}

TEST_F(DrawCache, LongOutlinesAreMadeAnew) {
    const VGPath path = createPath({VG_MOVE_TO, VG_LINE_TO}, {2, 30, 62, 30});
    const VGfloat dashes[2] = {0.01F, 0.01F};
    vgSetfv(VG_STROKE_DASH_PATTERN, 2, dashes);
    const Pixels first = pictureAt(path, 0, 0, VG_STROKE_PATH);
    EXPECT_NE(first, Pixels(kSide * kSide, 0));
    for (int i = 0; i < 3; ++i) EXPECT_EQ(pictureAt(path, 0, 0, VG_STROKE_PATH), first);
    EXPECT_EQ(cacheOf(path).strokes.makeCount(), 0U);
}

}  // namespace
}  // namespace vg
