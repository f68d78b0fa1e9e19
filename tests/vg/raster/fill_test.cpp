#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "vg/raster/raster_fixture.h"
#include "vg/raster/sweep/scanline_oracle.h"

namespace vg::raster {
namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

TEST(Fill, AlignedRectanglesAreExactAtEveryQuality) {
    // The second contour is empty of area, which keeps the rectangle off its short cut.
    for (bool shortCut : {true, false}) {
        for (Quality quality : kQualities) {
            Shape shape = rectangle(3, 2, 9, 7);
            if (!shortCut) shape.add({{3, 2}, {3, 2}, {3, 2}});
            Picture picture(12, 10);
            ASSERT_TRUE(fill(shape, picture, quality));
            for (int y = 0; y < 10; ++y) {
                for (int x = 0; x < 12; ++x) {
                    const bool inside = x >= 3 && x < 9 && y >= 2 && y < 7;
                    ASSERT_EQ(picture.at(x, y), inside ? 0xFFFFFFFF : 0U) << x << ' ' << y;
                }
            }
        }
    }
}

/// Largest and mean difference from ideal coverage, in levels of 255.
struct CoverageError {
    double largest = 0.0;
    double mean = 0.0;
};

CoverageError errorOf(const Shape& shape, FillRule rule, int size) {
    const auto fractions = ScanlineOracle::evenFractions(256);
    const ScanlineOracle oracle(shape, rule);
    Picture picture(size, size);
    EXPECT_TRUE(fill(shape, picture, Quality::kBetter, rule));
    CoverageError error;
    for (int y = 0; y < size; ++y) {
        const auto ideal = oracle.row(y, size, fractions);
        for (int x = 0; x < size; ++x) {
            const double difference =
                std::abs(picture.alphaAt(x, y) - 255 * ideal[static_cast<size_t>(x)]);
            error.largest = std::max(error.largest, difference);
            error.mean += difference / (size * size);
        }
    }
    return error;
}

TEST(Fill, MatchesIdealCoverage) {
    std::mt19937 random(20261122);
    for (int round = 0; round < 60; ++round) {
        Shape shape = simpleShape(random, 3 + round % 9, 24);
        // 1/32 pixel corners, so that their rounding does not count.
        for (Point& p : shape.points) p = {std::round(p.x * 32) / 32, std::round(p.y * 32) / 32};
        const CoverageError error = errorOf(shape, kFillRules[round % 2], 24);
        // An edge is rounded to 1/32 pixel at every band: up to 255/32 levels in a pixel.
        EXPECT_LE(error.largest, 10.0) << "round " << round;
        EXPECT_LE(error.mean, 0.5) << "round " << round;
    }
}

TEST(Fill, StaysCloseToIdealCoverageWhereEdgesCross) {
    std::mt19937 random(4);
    for (int round = 0; round < 40; ++round) {
        // Bands are not split at crossings: coverage moves between the pixels along shallow
        // crossing edges of one row, but not out of the shape.
        const CoverageError error =
            errorOf(randomShape(random, 2, 4, 0, 24), kFillRules[round % 2], 24);
        EXPECT_LE(error.mean, 3.0) << "round " << round;
    }
}

TEST(Fill, SampledQualitiesFollowTheirSampleLines) {
    std::mt19937 random(7);
    for (int round = 0; round < 40; ++round) {
        const Shape shape = randomShape(random, 1, 5, 0, 16);
        const FillRule rule = kFillRules[round % 2];
        const ScanlineOracle oracle(shape, rule);
        Picture faster(16, 16), plain(16, 16);
        ASSERT_TRUE(fill(shape, faster, Quality::kFaster, rule));
        ASSERT_TRUE(fill(shape, plain, Quality::kNonAntialiased, rule));
        int wrong = 0;
        for (int y = 0; y < 16; ++y) {
            const auto two = oracle.row(y, 16, {8 / 32.0, 24 / 32.0});
            for (int x = 0; x < 16; ++x) {
                // Corners and crossings are rounded to 1/32 pixel.
                ASSERT_NEAR(faster.alphaAt(x, y), 255 * two[static_cast<size_t>(x)], 40);
                const int alpha = plain.alphaAt(x, y);
                ASSERT_TRUE(alpha == 0 || alpha == 255);
                const auto centre = oracle.row(y, 16, {0.5});
                const double covered = centre[static_cast<size_t>(x)];
                if (covered == 0.0 && alpha == 255) ++wrong;
                if (covered == 1.0 && alpha == 0) ++wrong;
            }
        }
        EXPECT_LE(wrong, 2) << "round " << round;
    }
}

TEST(Fill, PixelCentresOnAnEdgeBelongToTheRight) {
    Picture picture(6, 2);
    ASSERT_TRUE(fill(rectangle(1.5F, 0, 3.5F, 2), picture, Quality::kNonAntialiased));
    for (int x = 0; x < 6; ++x) EXPECT_EQ(picture.alphaAt(x, 1), x == 1 || x == 2 ? 255 : 0) << x;
}

TEST(Fill, StarCentreFollowsTheFillRule) {
    Shape star;
    star.add({{16, 31}, {7, 3}, {30, 20}, {2, 20}, {25, 3}});
    for (Quality quality : kQualities) {
        Picture evenOdd(32, 32), nonZero(32, 32);
        ASSERT_TRUE(fill(star, evenOdd, quality, FillRule::kEvenOdd));
        ASSERT_TRUE(fill(star, nonZero, quality, FillRule::kNonZero));
        EXPECT_EQ(evenOdd.alphaAt(16, 14), 0);
        EXPECT_EQ(nonZero.alphaAt(16, 14), 255);
        EXPECT_EQ(evenOdd.alphaAt(16, 24), 255);
    }
}

TEST(Fill, MovesWithItsShapeByWholePixels) {
    std::mt19937 random(3);
    for (int round = 0; round < 30; ++round) {
        const Shape shape = randomShape(random, 2, 6, 2, 14);
        for (Quality quality : kQualities) {
            Picture here(64, 64), there(64, 64);
            FillParams params = paramsFor(shape, here, quality, kFillRules[round % 2]);
            Rasterizer rasterizer;
            ASSERT_TRUE(rasterizer.fill(params));
            params.surface = there.surface();
            params.userToSurface.m02 = 32;
            params.userToSurface.m12 = 16;
            ASSERT_TRUE(rasterizer.fill(params));
            for (int y = 0; y < 16; ++y) {
                for (int x = 0; x < 16; ++x) {
                    ASSERT_EQ(here.at(x, y), there.at(x + 32, y + 16)) << "round " << round;
                }
            }
        }
    }
}

TEST(Fill, DoesNotDependOnWhereContoursStartOrInWhichOrderTheyCome) {
    std::mt19937 random(11);
    for (int round = 0; round < 40; ++round) {
        const Shape shape = randomShape(random, 3, 7, 0, 24);
        Shape turned;
        for (int contour = 2; contour >= 0; --contour) {
            std::vector<Point> points(shape.points.begin() + contour * 7,
                                      shape.points.begin() + contour * 7 + 7);
            std::rotate(points.begin(), points.begin() + 1 + round % 6, points.end());
            turned.add(points);
        }
        for (FillRule rule : kFillRules) {
            Picture a(24, 24), b(24, 24);
            ASSERT_TRUE(fill(shape, a, Quality::kBetter, rule));
            ASSERT_TRUE(fill(turned, b, Quality::kBetter, rule));
            ASSERT_EQ(a.pixels, b.pixels) << "round " << round;
        }
    }
}

TEST(Fill, ClippingShowsThePartOfTheWholePicture) {
    std::mt19937 random(5);
    for (int round = 0; round < 60; ++round) {
        const Shape shape = simpleShape(random, 5 + round % 20, 64);
        Picture whole(64, 64);
        ASSERT_TRUE(fill(shape, whole, Quality::kBetter, kFillRules[round % 2]));
        const PixelRect windows[] = {{20, 20, 40, 40}, {0, 0, 64, 10}, {50, 0, 64, 64}};
        for (const PixelRect& window : windows) {
            Picture clipped(64, 64);
            FillParams params = paramsFor(shape, clipped, Quality::kBetter, kFillRules[round % 2]);
            params.clip = window;
            Rasterizer rasterizer;
            ASSERT_TRUE(rasterizer.fill(params));
            for (int y = 0; y < 64; ++y) {
                for (int x = 0; x < 64; ++x) {
                    const bool inside =
                        x >= window.x0 && x < window.x1 && y >= window.y0 && y < window.y1;
                    // Edges that are cut start from points of their own rounding.
                    ASSERT_NEAR(clipped.alphaAt(x, y), inside ? whole.alphaAt(x, y) : 0,
                                inside ? 10 : 0)
                        << "round " << round << " at " << x << ' ' << y;
                }
            }
        }
    }
}

TEST(Fill, CoversTheWholeSurfaceFromFarOutside) {
    for (float far : {100.0F, 1e6F, 1e20F, 1e37F}) {
        for (Quality quality : kQualities) {
            Picture picture(9, 5);
            ASSERT_TRUE(fill(rectangle(-far, -far, far, far), picture, quality));
            EXPECT_EQ(picture.pixels, std::vector<uint32_t>(45, 0xFFFFFFFF)) << far;
        }
    }
}

TEST(Fill, HostileCoordinatesStayHarmless) {
    const float values[] = {kNaN,   kInfinity, -kInfinity, 3e38F, -3e38F,
                            1e-40F, 0.0F,      7.5F,       -1e9F, 65504.0F};
    std::mt19937 random(1);
    std::uniform_int_distribution<size_t> pick(0, std::size(values) - 1);
    Rasterizer rasterizer;
    for (int round = 0; round < 400; ++round) {
        Shape shape;
        std::vector<Point> contour;
        for (int i = 0; i < 5; ++i) contour.push_back({values[pick(random)], values[pick(random)]});
        shape.add(contour);
        Picture picture(8, 8);
        FillParams params = paramsFor(shape, picture, kQualities[round % 3]);
        if (round % 5 == 0) params.userToSurface.m00 = values[pick(random)];
        ASSERT_TRUE(rasterizer.fill(params));
    }
    // Whatever came before, the coverage row is clean.
    Picture picture(8, 8);
    ASSERT_TRUE(rasterizer.fill(paramsFor(rectangle(2.5F, 2.5F, 5.5F, 5.5F), picture)));
    EXPECT_EQ(picture.alphaAt(0, 3), 0);
    EXPECT_EQ(picture.alphaAt(3, 3), 255);
    EXPECT_EQ(picture.alphaAt(7, 3), 0);
}

TEST(Fill, DegenerateShapesDrawNothing) {
    Shape shapes[4];
    shapes[1].add({{1, 1}});
    shapes[2].add({{1, 1}, {5, 5}});
    shapes[3].add({{1, 3}, {6, 3}, {2, 3}});
    for (const Shape& shape : shapes) {
        for (Quality quality : kQualities) {
            Picture picture(8, 8);
            ASSERT_TRUE(fill(shape, picture, quality));
            EXPECT_EQ(picture.pixels, std::vector<uint32_t>(64, 0));
        }
    }
}

TEST(Fill, TheWidestSurfaceKeepsItsOutermostColumnAndTopRow) {
    Picture picture(2048, 2048);
    Shape slanted;
    slanted.add({{0, 0}, {2048, 0}, {2048, 2048}, {0, 2048}, {1, 1024}});
    ASSERT_TRUE(fill(slanted, picture));
    EXPECT_EQ(picture.alphaAt(2046, 2046), 255);
    EXPECT_EQ(picture.alphaAt(2047, 100), 0);
    EXPECT_EQ(picture.alphaAt(100, 2047), 0);
}

}  // namespace
}  // namespace vg::raster
