#include "vg/raster/replay/band_list.h"
#include "vg/raster/span/span_selection.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <vector>

#include "vg/raster/geometry/to_fixed.h"
#include "vg/raster/raster_fixture.h"
#include "vg/raster/replay/band_recorder.h"
#include "vg/raster/replay/band_replay.h"
#include "vg/raster/sweep/chain_sweep.h"

namespace vg::raster {
namespace {

constexpr uint32_t kColor = 0xC0806020;
constexpr int kWidth = 160, kHeight = 40;
constexpr PixelRect kClip = {0, 0, kWidth, kHeight};

/// The polygon in surface coordinates, y upwards.
void toFixed(const Shape& shape, float x, float y, FixedPolygon& fixed) {
    FixedTransform transform;
    ASSERT_TRUE(transform.run(shape.view(), {1, 0, x, 0, 1, y}, kClip, fixed));
}

SweepTarget targetFor(Picture& picture) {
    SweepTarget target;
    target.surface = picture.surface();
    target.span.color = kColor;
    target.function = selectSpanFunctions(0x2001, kColor).span;
    return target;
}

Picture sweep(const Shape& shape, float x, float y, FillRule rule, Quality quality) {
    Picture picture(kWidth, kHeight, 0xFF336699);
    FixedPolygon fixed;
    toFixed(shape, x, y, fixed);
    SweepTarget target = targetFor(picture);
    ChainSweep sweep;
    EXPECT_TRUE(sweep.run(fixed, rule, quality, target));
    return picture;
}

void record(const Shape& shape, float x, float y, FillRule rule, Quality quality, BandList& list) {
    FixedPolygon fixed;
    toFixed(shape, x, y, fixed);
    BandRecorder recorder;
    ASSERT_EQ(recorder.record(fixed, rule, quality, list), RecordResult::kRecorded);
    list.originX = x;
    list.originY = y;
}

/// Replays from the bands and from the cells, with rows composited and through the span function:
/// the pictures must agree.
Picture replay(BandList& list, Quality quality, float x, float y) {
    const BandShift shift = list.shiftTo(x, y);
    EXPECT_TRUE(list.fits(shift, kClip));
    BandReplayer replayer;
    std::vector<Picture> pictures;
    for (const FlatBlend flat : {FlatBlend::kNone, FlatBlend::kSourceOver}) {
        list.cells.clear();
        list.cells.lastPhase = RecordedCells::kNoPhase;
        for (const bool fromCells : {false, true}) {
            pictures.emplace_back(kWidth, kHeight, 0xFF336699);
            SweepTarget target = targetFor(pictures.back());
            target.flat = flat;
            EXPECT_TRUE(replayer.replayBands(list, quality, shift, target));
            EXPECT_EQ(list.cells.phase != RecordedCells::kNoPhase, fromCells && list.nonEmpty);
            EXPECT_EQ(pictures.back().pixels, pictures[0].pixels);
        }
    }
    return pictures[0];
}

/// Slivers one above the other within a pixel row, gaps of rows, and rows that begin in the middle.
Shape layers() {
    Shape shape;
    for (const float y : {1.0F, 1.25F, 1.5F, 2.1F, 7.9F, 12.03F, 14.0F}) {
        shape.add({{3.3F, y}, {17.6F, y + 0.2F}, {9.1F, y + 0.09375F}});
    }
    return shape;
}

TEST(BandList, ReplayWithoutMovementIsTheSweep) {
    std::mt19937 random(13);
    for (int i = 0; i < 120; ++i) {
        const Shape shape = i == 0       ? layers()
                            : i % 3 == 0 ? simpleShape(random, 3 + i % 9, 30.0F)
                                         : randomShape(random, 1 + i % 4, 3 + i % 5, 0.0F, 36.0F);
        for (const Quality quality : kQualities) {
            for (const FillRule rule : kFillRules) {
                BandList list;
                record(shape, 1.3F, 2.7F, rule, quality, list);
                ASSERT_EQ(replay(list, quality, 1.3F, 2.7F).pixels,
                          sweep(shape, 1.3F, 2.7F, rule, quality).pixels)
                    << "shape " << i << ", quality " << static_cast<int>(quality);
            }
        }
    }
}

TEST(BandList, MovesByWholePixelsAsTheSweepWould) {
    const Shape shape = layers();
    for (const Quality quality : kQualities) {
        BandList list;
        record(shape, 5.0F, 8.5F, FillRule::kNonZero, quality, list);
        for (const float dx : {-8.0F, 0.0F, 13.0F, 100.0F}) {  // as far as the third word of a map
            for (const float dy : {-8.0F, 0.0F, 11.0F}) {
                ASSERT_EQ(replay(list, quality, 5.0F + dx, 8.5F + dy).pixels,
                          sweep(shape, 5.0F + dx, 8.5F + dy, FillRule::kNonZero, quality).pixels)
                    << dx << ", " << dy;
            }
        }
    }
}

TEST(BandList, ManyCellsAreNotKept) {
    constexpr int kSide = 1400;  // two or three groups of cells a row, and more than 2048 in all
    Shape diamond;
    diamond.add({{10.0F, 700.0F}, {700.0F, 10.0F}, {1390.0F, 700.0F}, {700.0F, 1390.0F}});
    FillParams params;
    params.polygon = diamond.view();
    params.clip = {0, 0, kSide, kSide};
    Picture swept(kSide, kSide);
    params.surface = swept.surface();
    Rasterizer rasterizer;
    ASSERT_TRUE(rasterizer.fill(params));
    BandList list;
    ASSERT_EQ(rasterizer.record(params, {128, kSide, false}, list), RecordResult::kTooLarge);
    ASSERT_EQ(rasterizer.record(params, {kSide, kSide, false}, list), RecordResult::kRecorded);
    for (int i = 0; i < 3; ++i) {
        Picture replayed(kSide, kSide);
        params.surface = replayed.surface();
        ASSERT_TRUE(rasterizer.replay(params, list, list.shiftTo(0.0F, 0.0F)));
        EXPECT_EQ(list.cells.phase, RecordedCells::kNoPhase);
        EXPECT_TRUE(list.cells.areTooMany);
        EXPECT_TRUE(swept.pixels == replayed.pixels);
    }
}

TEST(BandList, AlignedRectanglesAreReplayedWhereverTheyGo) {
    const Shape shape = rectangle(4.0F, 6.0F, 10.0F, 12.0F);
    for (const Quality quality : kQualities) {
        FillParams params;
        params.polygon = shape.view();
        params.quality = quality;
        params.clip = kClip;
        Rasterizer rasterizer;
        BandList list;
        ASSERT_EQ(rasterizer.record(params, {kWidth, kHeight, false}, list),
                  RecordResult::kRecorded);
        ASSERT_TRUE(list.isAlignedRectangle);
        for (const float dx : {0.0F, 7.0F, 7.53125F}) {
            params.userToSurface.m02 = dx;
            params.userToSurface.m12 = -3.0F;
            Picture swept(kWidth, kHeight), replayed(kWidth, kHeight);
            params.surface = swept.surface();
            ASSERT_TRUE(rasterizer.fill(params));
            params.surface = replayed.surface();
            ASSERT_TRUE(rasterizer.replay(params, list, list.shiftTo(dx, -3.0F)));
            EXPECT_EQ(swept.pixels, replayed.pixels) << dx;
        }
    }
}

TEST(BandList, ShiftsKeepThePhaseAndTruncate) {
    BandList list;
    list.originX = 10.0F;
    list.originY = 20.0F;
    list.startY = 32 * 9 + 7;
    const float infinite = std::numeric_limits<float>::infinity();
    const struct {
        const char* name;
        float x, y;
        int32_t dx, rows;
    } cases[] = {
        {"no movement", 10.0F, 20.0F, 0, 0},
        {"a pixel", 11.0F, 21.0F, 32, 1},
        {"half a pixel up stays in the row", 10.5F, 20.5F, 16, 0},
        {"enough to leave it", 10.0F, 20.79F, 0, 1},
        {"half a pixel down leaves it", 9.5F, 19.5F, -16, -1},
        {"less than 1/32 is nothing", 9.97F, 20.03F, 0, 0},
        {"five pixels down", 10.0F, 15.0F, 0, -5},
    };
    for (const auto& c : cases) {
        const BandShift shift = list.shiftTo(c.x, c.y);
        EXPECT_EQ(shift.dx, c.dx) << c.name;
        EXPECT_EQ(shift.startY, list.startY + 32 * c.rows) << c.name;
    }
    list.minX = 64;
    list.maxX = 128;
    list.depth = 100;
    for (const float far : {infinite, -infinite, 1e30F, NAN}) {
        EXPECT_FALSE(list.fits(list.shiftTo(far, far), {0, 0, 8, 8}));
    }
}

TEST(BandList, FitsOnlyInsideTheClip) {
    Shape square = rectangle(4.0F, 6.0F, 10.0F, 12.0F);
    for (const Quality quality : kQualities) {
        BandList list;
        record(square, 0.0F, 0.0F, FillRule::kNonZero, quality, list);
        const struct {
            float x, y;
            bool fits;
        } cases[] = {{0, 0, true},  {-4, 0, true},  {-5, 0, false}, {150, 0, true}, {151, 0, false},
                     {0, -6, true}, {0, -7, false}, {0, 28, true},  {0, 29, false}};
        for (const auto& c : cases) {
            EXPECT_EQ(list.fits(list.shiftTo(c.x, c.y), kClip), c.fits) << c.x << ", " << c.y;
            if (c.fits) {
                EXPECT_EQ(replay(list, quality, c.x, c.y).pixels,
                          sweep(square, c.x, c.y, FillRule::kNonZero, quality).pixels);
            }
        }
        EXPECT_FALSE(list.fits(list.shiftTo(0, 0), {5, 0, 20, 20}));
        EXPECT_FALSE(list.fits(list.shiftTo(0, 0), {0, 7, 20, 20}));
    }
}

TEST(BandList, EmptyAndOverfullPolygons) {
    BandRecorder recorder;
    for (const Quality quality : kQualities) {
        BandList list;
        FixedPolygon fixed;
        toFixed(rectangle(3.0F, 3.0F, 9.0F, 3.0F), 0, 0, fixed);
        EXPECT_EQ(recorder.record(fixed, FillRule::kNonZero, quality, list),
                  RecordResult::kRecorded);
        EXPECT_FALSE(list.nonEmpty);

        Shape comb;
        for (int i = 0; i < 3000; ++i) {
            const float x = static_cast<float>(i % 40);
            comb.add({{x, 0.0F}, {x + 1.0F, 0.0F}, {x + 0.5F, 39.0F}});
        }
        toFixed(comb, 0, 0, fixed);
        EXPECT_EQ(recorder.record(fixed, FillRule::kEvenOdd, quality, list),
                  RecordResult::kTooManyCoords);
        EXPECT_EQ(list.bandCount(), 0);
    }
}

TEST(BandList, VerticalMovesDependOnTheQuality) {
    constexpr Quality kNone = Quality::kNonAntialiased, kFaster = Quality::kFaster,
                      kBetter = Quality::kBetter;
    const struct {
        Quality quality;
        float deltaY;
        bool isAllowed;
    } cases[] = {{kBetter, 3.0F, true},   {kBetter, -3.03F, true}, {kBetter, 3.03125F, false},
                 {kBetter, 0.5F, false},  {kFaster, 0.5F, true},   {kFaster, -2.53F, true},
                 {kFaster, 0.25F, false}, {kNone, 7.0F, true},     {kNone, 0.5F, false}};
    for (const auto& c : cases) {
        EXPECT_EQ(allowsVerticalMove(c.quality, false, c.deltaY), c.isAllowed) << c.deltaY;
        EXPECT_TRUE(allowsVerticalMove(c.quality, true, c.deltaY));
    }
}

}  // namespace
}  // namespace vg::raster
