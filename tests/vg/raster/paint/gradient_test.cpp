#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "vg/raster/kernels/gradient_spreads.h"
#include "vg/raster/paint/color_ramp.h"
#include "vg/raster/paint/gradient_state.h"
#include "vg/raster/raster_fixture.h"

namespace vg::raster {
namespace {

/// Red falls from 1 to 0, green rises, blue stays: a level of red is a parameter to 1/255.
constexpr ColorStop kStops[] = {{0, {1, 0, 0.5F, 1}}, {1, {0, 1, 0.5F, 1}}};

double spreadParameter(double g, Spread spread) {
    switch (spread) {
        case Spread::kPad:
            return std::clamp(g, 0.0, 1.0);
        case Spread::kRepeat:
            return g - std::floor(g);
        case Spread::kReflect:
            break;
    }
    return std::fabs(g - 2.0 * std::floor(g * 0.5 + 0.5));
}

double linearParameter(const GradientGeometry& geometry, double x, double y) {
    const auto& [a, b] = geometry.points;
    const double dx = b[0] - a[0];
    const double dy = b[1] - a[1];
    return ((x - a[0]) * dx + (y - a[1]) * dy) / (dx * dx + dy * dy);
}

/// How far along the ray from the focus through the place, the circle being at 1: by the quadratic
/// equation |e + d / g| = r.
double radialParameter(const GradientGeometry& geometry, double x, double y) {
    const auto& [c, f] = geometry.points;
    const double ex = f[0] - c[0];
    const double ey = f[1] - c[1];
    const double dx = x - f[0];
    const double dy = y - f[1];
    const double a = dx * dx + dy * dy;
    const double b = ex * dx + ey * dy;
    const double rest = ex * ex + ey * ey - geometry.radius * geometry.radius;
    if (a == 0.0) return 0.0;
    return a / (-b + std::sqrt(b * b - a * rest));
}

double conicalParameter(const GradientGeometry& geometry, double x, double y) {
    const auto& [c, target] = geometry.points;
    const double angle =
        std::atan2(y - c[1], x - c[0]) - std::atan2(target[1] - c[1], target[0] - c[0]);
    const double turns = angle / (2.0 * std::numbers::pi);
    return (turns - std::floor(turns)) * geometry.repeats;
}

struct Gradient {
    PaintKind kind;
    Spread spread;
    GradientGeometry geometry;
    SurfaceToPaint map;

    double parameterAt(int column, int row) const {
        const double px = column + 0.5;
        const double py = row + 0.5;
        const double x = map.m00 * px + map.m01 * py + map.m02;
        const double y = map.m10 * px + map.m11 * py + map.m12;
        switch (kind) {
            case PaintKind::kLinearGradient:
                return linearParameter(geometry, x, y);
            case PaintKind::kRadialGradient:
                return radialParameter(geometry, x, y);
            default:
                return conicalParameter(geometry, x, y);
        }
    }
};

const ColorRamp& rampFor(PaintKind kind, Spread spread) {
    static const auto build = [](bool isMirrored) {
        ColorRamp ramp;
        EXPECT_TRUE(buildColorRamp(kStops, 2, {.isMirrored = isMirrored}, ramp));
        return ramp;
    };
    static const ColorRamp kNormal = build(false);
    static const ColorRamp kMirrored = build(true);
    const bool mirrors = spread == Spread::kReflect && kind != PaintKind::kConicalGradient;
    return mirrors ? kMirrored : kNormal;
}

FillParams paramsFor(const Shape& shape, Picture& picture, const Gradient& gradient) {
    FillParams params = paramsFor(shape, picture);
    params.paint.kind = gradient.kind;
    params.paint.gradient = {gradient.spread, gradient.geometry, gradient.map,
                             &rampFor(gradient.kind, gradient.spread)};
    return params;
}

Picture draw(const Gradient& gradient, int width, int height, const Shape& shape) {
    Picture picture(width, height);
    Rasterizer rasterizer;
    EXPECT_TRUE(rasterizer.fill(paramsFor(shape, picture, gradient)));
    return picture;
}

Shape all(int width, int height) {
    return rectangle(0, 0, static_cast<float>(width), static_cast<float>(height));
}

int redOf(uint32_t pixel) { return static_cast<int>(pixel >> 16 & 0xFF); }

/// The distance, in levels, from the pixel to the nearest colour of a parameter in g +- slack.
double distanceTo(uint32_t pixel, const Gradient& gradient, double g, double slack) {
    double nearest = 1e9;
    for (const double parameter : {g - slack, g, g + slack}) {
        const double red = 255.0 * (1.0 - spreadParameter(parameter, gradient.spread));
        nearest = std::min(nearest, std::fabs(red - redOf(pixel)));
    }
    return nearest;
}

/// Within two levels. Where a repeat jumps, the parameter may fall on either side of it.
void expectGradient(const Gradient& gradient, int width, int height, double slack = 1e-3) {
    const Picture picture = draw(gradient, width, height, all(width, height));
    double worst = 0.0;
    for (int y = 0; y < std::min(height, 2047); ++y) {
        for (int x = 0; x < std::min(width, 2047); ++x) {
            worst = std::max(
                worst, distanceTo(picture.at(x, y), gradient, gradient.parameterAt(x, y), slack));
        }
    }
    EXPECT_LE(worst, 2.0);
}

constexpr Spread kSpreads[] = {Spread::kPad, Spread::kRepeat, Spread::kReflect};

const SurfaceToPaint kMaps[] = {
    {},
    {0.02, 0, -0.3, 0, 0.02, 0.1},              // a unit square over 50 pixels
    {0.7071, -0.7071, 3, 0.7071, 0.7071, -20},  // turned
    {1.3, 0.9, -40, -0.2, 0.5, 12},             // skewed
    {-1, 0, 100, 0, -1, 60},                    // upside down
    {1e-4, 3e-5, 0.2, -2e-5, 1e-4, 0.1},        // enlarged
};

TEST(Gradient, LinearMatchesTheFormula) {
    for (const Spread spread : kSpreads) {
        for (const SurfaceToPaint& map : kMaps) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(spread) << ' ' << map.m00);
            const double size = map.m00 * 40;
            Gradient gradient = {PaintKind::kLinearGradient, spread, {}, map};
            gradient.geometry.points[0][0] = 0.3 * size;
            gradient.geometry.points[1][0] = 1.3 * size;
            gradient.geometry.points[1][1] = 0.7 * size;
            expectGradient(gradient, 131, 67);
        }
    }
}

TEST(Gradient, RadialMatchesTheFormulaForEveryFocus) {
    const double foci[][2] = {{0, 0}, {0.3, -0.2}, {-0.6, 0.6}, {0, 0.95}};
    for (const Spread spread : kSpreads) {
        for (const SurfaceToPaint& map : kMaps) {
            for (const auto& [fx, fy] : foci) {
                SCOPED_TRACE(testing::Message()
                             << static_cast<int>(spread) << ' ' << map.m00 << ' ' << fy);
                const double r = std::fabs(map.m00) * 45;
                Gradient gradient = {PaintKind::kRadialGradient, spread, {}, map};
                gradient.geometry = {{{r, r}, {r + fx * r, r + fy * r}}, r, 1};
                expectGradient(gradient, 131, 67, 2e-3);
            }
        }
    }
}

TEST(Gradient, ConicalMatchesTheFormulaWithinItsTable) {
    // The table has 64 directions a side, each good for 1 / 31.5 to either axis; doubled by
    // repeats.
    for (const Spread spread : kSpreads) {
        for (const double repeats : {1.0, 2.0, 0.5}) {
            SCOPED_TRACE(testing::Message() << static_cast<int>(spread) << ' ' << repeats);
            Gradient gradient = {PaintKind::kConicalGradient, spread, {}, kMaps[2]};
            gradient.geometry = {{{20, 10}, {60, 40}}, 1, repeats};
            const Picture picture = draw(gradient, 131, 67, all(131, 67));
            for (int y = 0; y < 67; ++y) {
                for (int x = 0; x < 131; ++x) {
                    // Pad turns from its last colour to its first along the target's direction.
                    const double g = gradient.parameterAt(x, y);
                    const double slack = 0.0085 * repeats;
                    const bool isAtJump = g < slack || g > repeats - slack;
                    if (isAtJump) continue;
                    double nearest = 1e9;
                    for (int i = -8; i <= 8; ++i) {
                        nearest = std::min(
                            nearest, distanceTo(picture.at(x, y), gradient, g + i * slack / 8, 0));
                    }
                    ASSERT_LE(nearest, 2.0) << x << ' ' << y;
                }
            }
        }
    }
}

TEST(Gradient, KeepsToTheFormulaAcrossTheWidestSurface) {
    constexpr int kWidth = 2048;
    for (const Spread spread : kSpreads) {
        SCOPED_TRACE(static_cast<int>(spread));
        for (const double length : {2047.0, 700.3, 33.0}) {
            SCOPED_TRACE(length);
            GradientGeometry geometry = {{{5.3, 1}, {5.3 + length, 30}}, length, 1};
            expectGradient({PaintKind::kLinearGradient, spread, geometry, {}}, kWidth, 3);
            geometry.points[1][0] = 5.3 + length / 2;
            geometry.points[1][1] = 2;
            expectGradient({PaintKind::kRadialGradient, spread, geometry, {}}, kWidth, 3, 3e-3);
        }
    }
}

TEST(Gradient, DependsOnThePlaceAloneNotOnTheShape) {
    std::mt19937 random(8);
    for (const PaintKind kind :
         {PaintKind::kLinearGradient, PaintKind::kRadialGradient, PaintKind::kConicalGradient}) {
        const Gradient gradient = {kind, Spread::kReflect, {{{30, 20}, {70, 45}}, 60, 3}, kMaps[3]};
        const Picture whole = draw(gradient, 200, 50, all(200, 50));
        for (int round = 0; round < 20; ++round) {
            const auto x0 = static_cast<float>(random() % 190);
            const auto x1 = x0 + 1 + static_cast<float>(random() % 10);
            const Picture part = draw(gradient, 200, 50, rectangle(x0, 3, x1, 40));
            for (int x = static_cast<int>(x0); x < static_cast<int>(x1); ++x) {
                ASSERT_EQ(part.at(x, 20), whole.at(x, 20)) << x;
            }
        }
    }
}

TEST(Gradient, EndsWhereTheTableOfSpreadsSays) {
    EXPECT_EQ(SpreadPad::entry<16>(int64_t{-1}), 0U);
    EXPECT_EQ(SpreadPad::entry<16>(int64_t{0x10000}), 1023U);
    EXPECT_EQ(SpreadPad::entry<16>(int64_t{1} << 50), 1023U);
    EXPECT_EQ(SpreadRepeat::entry<16>(0x10000), 0U);
    EXPECT_EQ(SpreadRepeat::entry<20>(-1), 1023U);
    EXPECT_EQ(SpreadReflect::entry<16>(0x18000), 768U);  // 1.5, of a mirrored ramp
    EXPECT_EQ(SpreadReflect::entry<20>(0x80000), 256U);  // 0.5
    EXPECT_EQ(SpreadReflect::conicalEntry(0x400), 1023U);
    EXPECT_EQ(SpreadReflect::conicalEntry(0x7FF), 0U);
}

TEST(Gradient, WithoutExtentIsTheLastColor) {
    const Gradient cases[] = {
        {PaintKind::kLinearGradient, Spread::kRepeat, {{{3, 4}, {3, 4}}, 1, 1}, {}},
        {PaintKind::kRadialGradient, Spread::kPad, {{{3, 4}, {3, 4}}, 0, 1}, {}},
        {PaintKind::kRadialGradient, Spread::kReflect, {{{3, 4}, {3, 4}}, -2, 1}, {}},
        {PaintKind::kRadialGradient, Spread::kPad, {{{3, 4}, {4, 4}}, 1e-30, 1}, {}},
    };
    for (const Gradient& gradient : cases) {
        EXPECT_EQ(draw(gradient, 9, 9, all(9, 9)).at(5, 5), 0xFF00FF80);
    }
}

TEST(Gradient, BlendsWithWhatIsThere) {
    // Half transparent, under full and partial coverage, and over an opaque surface.
    constexpr ColorStop kGlass[] = {{0, {1, 1, 1, 0.5F}}, {1, {1, 1, 1, 0.5F}}};
    ColorRamp ramp;
    ASSERT_TRUE(buildColorRamp(kGlass, 2, {}, ramp));
    const Gradient gradient = {PaintKind::kLinearGradient, Spread::kPad, {}, {}};
    const Shape shape = rectangle(0, 0.5F, 80, 2);
    for (const int32_t mode : {0x2000, 0x2001}) {
        Picture glass(80, 2, 0xFF000000);
        FillParams params = paramsFor(shape, glass, gradient);
        params.paint.gradient.ramp = &ramp;
        params.blendMode = mode;
        Picture flat(80, 2, 0xFF000000);
        FillParams flatParams = paramsFor(shape, flat);
        flatParams.paint.color[3] = 0.5F;
        flatParams.blendMode = mode;
        Rasterizer rasterizer;
        ASSERT_TRUE(rasterizer.fill(params) && rasterizer.fill(flatParams));
        EXPECT_EQ(glass.pixels, flat.pixels) << mode;
    }
}

TEST(Gradient, TakesHugeNumbers) {
    const double values[] = {0, 1, -1, 3e38, -3e38, 1e-45, 1e20, -1e-20};
    const double entries[] = {0, 1, -1e100, 1e100, 1e-100, 1e30};
    std::mt19937 random(12);
    const auto pick = [&](const auto& from) { return from[random() % std::size(from)]; };
    for (int round = 0; round < 3000; ++round) {
        Gradient gradient = {
            static_cast<PaintKind>(1 + random() % 3), kSpreads[random() % 3], {}, {}};
        for (auto& point : gradient.geometry.points) {
            for (double& coordinate : point) coordinate = pick(values);
        }
        gradient.geometry.radius = pick(values);
        gradient.geometry.repeats = pick(values);
        gradient.map = {pick(entries), pick(entries), pick(entries),
                        pick(entries), pick(entries), pick(entries)};
        const Picture picture = draw(gradient, 70, 2, all(70, 2));
        for (const uint32_t pixel : picture.pixels) ASSERT_EQ(pixel >> 24, 255U) << round;
    }
}

}  // namespace
}  // namespace vg::raster
