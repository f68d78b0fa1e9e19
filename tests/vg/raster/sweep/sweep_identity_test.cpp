// The production sweep against the literal one, bit for bit, on every kernel level.

#include <gtest/gtest.h>

#include <cmath>

#include "vg/raster/geometry/to_fixed.h"
#include "vg/raster/kernels/kernels.h"
#include "vg/raster/pixels/blend_modes.h"
#include "vg/raster/raster_fixture.h"
#include "vg/raster/span/span_selection.h"
#include "vg/raster/sweep/chain_sweep.h"
#include "vg/raster/sweep/literal_sweep.h"

namespace vg::raster {
namespace {

constexpr uint32_t kBackground = 0x80402010;

struct Colour {
    const char* name;
    uint32_t pixel;  ///< premultiplied
    int32_t blendMode;
    bool throughSpans;  ///< keeps the sweep off its own composite
};

constexpr Colour kColours[] = {
    {"source", 0x60504030, 0x2000, false},
    {"source over", 0x60504030, 0x2001, false},
    {"opaque", 0xFF123456, 0x2001, false},
    {"span function", 0x60504030, 0x2001, true},
};

SweepTarget targetOf(Picture& picture, const Colour& colour) {
    SweepTarget target;
    target.surface = picture.surface();
    target.span.color = colour.pixel;
    const SpanFunctions functions = selectSpanFunctions(colour.blendMode, colour.pixel);
    target.function = functions.span;
    target.flat = colour.throughSpans ? FlatBlend::kNone : functions.flat;
    return target;
}

/// Both sweeps keep their buffers from shape to shape, as the rasterizer does.
class SweepIdentity : public ::testing::TestWithParam<KernelLevel> {
protected:
    void SetUp() override {
        if (!useKernelLevel(GetParam())) GTEST_SKIP() << "not on this processor";
    }
    void TearDown() override { (void)useKernelLevel(bestKernelLevel()); }

    ::testing::AssertionResult sameOn(const Shape& shape, int width, int height, int round) {
        EXPECT_TRUE(transform_.run(shape.view(), {}, {0, 0, width, height}, fixed_));
        for (const Quality quality : kQualities) {
            const auto result = sameAt(quality, width, height, round);
            if (!result) return result;
        }
        return ::testing::AssertionSuccess();
    }

private:
    ::testing::AssertionResult sameAt(Quality quality, int width, int height, int round) {
        const Colour& colour = kColours[round % 4];
        const FillRule rule = kFillRules[round / 4 % 2];
        Picture expected(width, height, kBackground), actual(width, height, kBackground);
        SweepTarget literalTarget = targetOf(expected, colour);
        SweepTarget target = targetOf(actual, colour);
        EXPECT_TRUE(literal_.run(fixed_, rule, quality, literalTarget));
        EXPECT_TRUE(sweep_.run(fixed_, rule, quality, target));
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                if (expected.at(x, y) == actual.at(x, y)) continue;
                return ::testing::AssertionFailure()
                       << colour.name << ", rule " << static_cast<int>(rule) << ", quality "
                       << std::hex << static_cast<int>(quality) << std::dec << ", round " << round
                       << ": pixel " << x << ' ' << y << " of " << width << 'x' << height
                       << std::hex << " is " << actual.at(x, y) << " instead of "
                       << expected.at(x, y);
            }
        }
        return ::testing::AssertionSuccess();
    }

    FixedTransform transform_;
    FixedPolygon fixed_;
    LiteralSweep literal_;
    ChainSweep sweep_;
};

INSTANTIATE_TEST_SUITE_P(Levels, SweepIdentity, ::testing::ValuesIn(kKernelLevels),
                         [](const auto& level) { return nameOf(level.param); });

float uniform(std::mt19937& random, float low, float high) {
    return std::uniform_real_distribution<float>(low, high)(random);
}

int pick(std::mt19937& random, int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
}

/// Points on a coarse grid: ties of every kind, flat contours, edges on top of each other.
Shape gridShape(std::mt19937& random, int width, int height, float grid) {
    Shape shape;
    const int contours = pick(random, 1, 4);
    for (int i = 0; i < contours; ++i) {
        std::vector<Point> contour;
        const int points = pick(random, 1, 12);
        for (int k = 0; k < points; ++k) {
            contour.push_back(
                {std::floor(uniform(random, 0, static_cast<float>(width)) / grid) * grid,
                 std::floor(uniform(random, 0, static_cast<float>(height)) / grid) * grid});
        }
        shape.add(contour);
    }
    return shape;
}

/// A closed outline of a wavy line: two long monotone sides that twist around each other at turns.
Shape strokeLike(std::mt19937& random, int points, float size, float width) {
    std::vector<Point> left, right;
    Point at = {uniform(random, 0, size), uniform(random, 0, size)};
    float angle = uniform(random, 0, 6);
    for (int i = 0; i < points; ++i) {
        angle += uniform(random, -0.7F, 0.7F);
        at = {at.x + size / 20 * std::cos(angle), at.y + size / 20 * std::sin(angle)};
        left.push_back({at.x - width * std::sin(angle), at.y + width * std::cos(angle)});
        right.push_back(at);  // the inner side runs through the vertices
        right.push_back({at.x + width * std::sin(angle), at.y - width * std::cos(angle)});
    }
    left.insert(left.end(), right.rbegin(), right.rend());
    Shape shape;
    shape.add(left);
    return shape;
}

TEST_P(SweepIdentity, OfRandomPolygonsClippedAtEverySide) {
    std::mt19937 random(101);
    for (int round = 0; round < 4000; ++round) {
        const int width = pick(random, 1, 90), height = pick(random, 1, 90);
        const auto size = static_cast<float>(std::max(width, height));
        const float margin = round % 3 == 0 ? size : 0.0F;
        const Shape shape =
            randomShape(random, pick(random, 1, 3), pick(random, 3, 14), -margin, size + margin);
        ASSERT_TRUE(sameOn(shape, width, height, round));
    }
}

TEST_P(SweepIdentity, OfTiesAndFlatContours) {
    std::mt19937 random(102);
    const float grids[] = {1.0F / 32, 0.25F, 1.0F, 5.0F};
    for (int round = 0; round < 4000; ++round) {
        const int width = pick(random, 1, 60), height = pick(random, 1, 40);
        ASSERT_TRUE(
            sameOn(gridShape(random, width, height, grids[round / 8 % 4]), width, height, round));
    }
}

TEST_P(SweepIdentity, OfStarsAndStrokes) {
    std::mt19937 random(103);
    for (int round = 0; round < 1200; ++round) {
        const int side = pick(random, 8, 120);
        const auto size = static_cast<float>(side);
        Shape shape = strokeLike(random, pick(random, 3, 60), size, uniform(random, 0.1F, 4.0F));
        if (round % 2 == 0) shape = simpleShape(random, pick(random, 5, 200), size);
        ASSERT_TRUE(sameOn(shape, side, side, round));
    }
}

TEST_P(SweepIdentity, OnTheWidestSurface) {
    std::mt19937 random(104);
    for (int round = 0; round < 300; ++round) {
        const int height = pick(random, 1, 12);
        Shape shape;
        std::vector<Point> contour;
        const int points = pick(random, 3, 30);
        for (int i = 0; i < points; ++i) {
            contour.push_back(
                {uniform(random, -50, 2100), uniform(random, -1, static_cast<float>(height) + 1)});
        }
        shape.add(contour);
        ASSERT_TRUE(sameOn(shape, round % 2 == 0 ? 2047 : 2048, height, round));
    }
}

TEST_P(SweepIdentity, OfNoise) {
    std::mt19937 random(105);
    struct Noise {
        int points;
        int width, height;
    };
    const Noise cases[] = {{60, 3, 50},    {300, 40, 40},   {800, 256, 64},
                           {3000, 64, 64}, {4000, 900, 40}, {2500, 2000, 30},
                           {500, 2, 3},    {1500, 1, 300},  {30000, 1200, 2}};
    for (int round = 0; round < 36; ++round) {
        const Noise& noise = cases[static_cast<size_t>(round / 4) % std::size(cases)];
        std::vector<Point> contour;
        for (int i = 0; i < noise.points; ++i) {
            contour.push_back({uniform(random, 0, static_cast<float>(noise.width)),
                               uniform(random, 0, static_cast<float>(noise.height))});
        }
        Shape shape;
        shape.add(contour);
        ASSERT_TRUE(sameOn(shape, noise.width, noise.height, round + round / 4 % 2 * 4));
    }
}

TEST_P(SweepIdentity, OfManyEdgesInOnePlace) {
    // Spokes from a few hubs: more edges than one place has room for, on top of much noise.
    std::mt19937 random(108);
    for (int round = 0; round < 24; ++round) {
        const int side = pick(random, 2, 24), hubs = pick(random, 1, 3);
        const auto size = static_cast<float>(side);
        Shape shape = randomShape(random, 1, 20 * side, 0, size);
        for (int hub = 0; hub < hubs; ++hub) {
            const Point centre = {uniform(random, 0, size), uniform(random, 0, size)};
            std::vector<Point> contour;
            for (int i = 0; i < 60; ++i) {
                contour.push_back(centre);
                contour.push_back({uniform(random, 0, size), uniform(random, 0, size)});
            }
            shape.add(contour);
        }
        ASSERT_TRUE(sameOn(shape, side, side, round));
    }
}

TEST_P(SweepIdentity, OfLongContoursWithFlatSteps) {
    // Stairs up and down, thinner than the scanlines are apart, turning at every place of a
    // word of directions.
    std::mt19937 random(109);
    for (int round = 0; round < 400; ++round) {
        std::vector<Point> contour;
        float x = 0, y = uniform(random, 0, 40);
        for (int steps = pick(random, 1, 150); steps > 0; --steps) {
            if (pick(random, 0, 2) == 0) y = uniform(random, 0, 40);
            if (pick(random, 0, 1) == 0) y += uniform(random, 0, 0.3F);
            x += uniform(random, 0, 0.4F);
            contour.push_back({x, std::min(y, 40.0F)});
        }
        Shape shape;
        shape.add(contour);
        ASSERT_TRUE(sameOn(shape, 64, 40, round));
    }
}

TEST_P(SweepIdentity, OfManyFarApartChains) {
    // Combs: hundreds of chains that start and end together, some of them crossing.
    std::mt19937 random(106);
    for (int round = 0; round < 24; ++round) {
        const int teeth = pick(random, 50, 1500);
        std::vector<Point> contour;
        for (int i = 0; i < teeth; ++i) {
            const float x = 1000.0F * static_cast<float>(i) / static_cast<float>(teeth);
            contour.push_back({x, uniform(random, 0, 4)});
            contour.push_back({x + uniform(random, 0, 3), uniform(random, 60, 64)});
        }
        Shape shape;
        shape.add(contour);
        ASSERT_TRUE(sameOn(shape, 1000, 64, round));
    }
}

TEST_P(SweepIdentity, OfRunsOfEveryLength) {
    constexpr int kRoom = 48;
    std::mt19937 random(107);
    for (const Colour& colour : kColours) {
        const SpanFunctions functions = selectSpanFunctions(colour.blendMode, colour.pixel);
        for (int count = 0; count < kRoom; ++count) {
            std::vector<uint32_t> pixels(kRoom);
            for (uint32_t& pixel : pixels) pixel = static_cast<uint32_t>(random());
            std::vector<uint32_t> expected = pixels;
            for (int i = 0; i < count; ++i) {
                uint32_t& pixel = expected[static_cast<size_t>(i)];
                pixel = colour.blendMode == 0x2000 ? colour.pixel
                                                   : SourceOver::apply(colour.pixel, pixel);
            }
            SpanContext span;
            span.color = colour.pixel;
            functions.run({pixels.data(), kRoom, 1}, span, 0, 0, count);
            ASSERT_EQ(pixels, expected) << colour.name << ", " << count << " pixels";
        }
    }
}

}  // namespace
}  // namespace vg::raster
