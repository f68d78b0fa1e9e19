#include "vg/geometry/arc.h"

#include <gtest/gtest.h>

#include "vg/geometry/trigonometry.h"
#include "vg/path/path_samples.h"

namespace vg::test {
namespace {

TEST(Arc, IsTheArcOfTheEndpointDefinition) {
    Random random(3);
    for (int i = 0; i < 2000; ++i) {
        SCOPED_TRACE(i);
        const Vector2 from{random.between(-50, 50), random.between(-50, 50)};
        const Vector2 to{random.between(-50, 50), random.between(-50, 50)};
        const EllipseShape shape{random.between(-80, 80), random.between(-80, 80),
                                 random.between(-800, 800)};
        const bool isLarge = random.below(2) != 0;
        const bool isCounterClockwise = random.below(2) != 0;
        CenterArc arc;
        ASSERT_EQ(toCenterForm({from, to, shape, isLarge, isCounterClockwise}, arc), ArcKind::kArc);
        EXPECT_EQ(arc.sweep > 0.0, isCounterClockwise);

        const int code = (isLarge ? VG_LCCWARC_TO : VG_SCCWARC_TO) + (isCounterClockwise ? 0 : 2);
        const Command command{static_cast<uint8_t>(code),
                              {shape.radiusX, shape.radiusY, shape.rotation, to.x, to.y}};
        const std::vector<Vector2> expected = sampleArc(from, command, 12);
        for (int k = 0; k <= 12; ++k) {
            const Vector2 point = arc.at(arc.sweep * k / 12);
            // Where the chord is nearly a diameter the definition itself is ill-conditioned.
            ASSERT_LT(distance(point, expected[static_cast<size_t>(k)]), arc.largerRadius * 2e-3);
        }
        EXPECT_LT(distance(arc.at(arc.sweep), to), arc.largerRadius * 1e-6);
    }
}

TEST(Arc, HalfTurnsAreRoundFarFromTheOrigin) {
    for (double x = 0.0; x < 3000.0; x += 37.77) {
        const double radius = static_cast<double>(10.1F);
        const auto rounded = [](double value) {
            return static_cast<double>(static_cast<float>(value));
        };
        const Vector2 from{rounded(x + radius), rounded(x)};
        const Vector2 to{rounded(x - radius), rounded(x)};
        CenterArc arc;
        ASSERT_EQ(toCenterForm({from, to, {radius, radius, 0.0}, false, true}, arc), ArcKind::kArc);
        EXPECT_DOUBLE_EQ(arc.sweep, kPi);
        const Vector2 top = arc.at(kPi / 2);
        EXPECT_NEAR(top.x, (from.x + to.x) / 2, 1e-9);
        EXPECT_NEAR(top.y - from.y, radius, x * 1e-7 + 1e-9);
    }
}

TEST(Arc, DegeneratesAsPathDataSays) {
    const struct {
        const char* name;
        Vector2 to;
        EllipseShape ellipse;
        ArcKind kind;
    } cases[] = {
        {"same end points", {0, 0}, {5, 5, 0}, ArcKind::kNothing},
        {"no x radius", {9, 0}, {0, 5, 0}, ArcKind::kLine},
        {"no y radius", {9, 0}, {5, 0, 0}, ArcKind::kLine},
        {"an ellipse beyond the floats", {1e38, 0}, {1e-45, 1, 0}, ArcKind::kLine},
        {"radii too small", {9, 0}, {1, 1, 0}, ArcKind::kArc},
    };
    for (const auto& c : cases) {
        CenterArc arc;
        EXPECT_EQ(toCenterForm({{0, 0}, c.to, c.ellipse, true, false}, arc), c.kind) << c.name;
    }
}

TEST(Arc, KeepsItsDigitsOnHugeEllipses) {
    CenterArc arc;
    ASSERT_EQ(toCenterForm({{3, 4}, {13, 4}, {1e30, 1e30, 0}, false, true}, arc), ArcKind::kArc);
    const Vector2 middle = arc.at(arc.sweep / 2);
    EXPECT_NEAR(middle.x, 8.0, 1e-9);
    EXPECT_NEAR(middle.y, 4.0, 1e-9);
}

TEST(Arc, TurnsBackWhereItIsExtreme) {
    Random random(4);
    for (int i = 0; i < 500; ++i) {
        const EndpointArc ends{{random.between(0, 9), random.between(0, 9)},
                               {random.between(0, 9), random.between(0, 9)},
                               {random.between(3, 9), random.between(3, 9), random.between(0, 360)},
                               random.below(2) != 0,
                               random.below(2) != 0};
        CenterArc arc;
        ASSERT_EQ(toCenterForm(ends, arc), ArcKind::kArc);
        const Vector2 direction{random.between(-1, 1), random.between(-1, 1)};
        double angles[2];
        const int count = arc.extremes(direction, angles);
        double highest = std::max(dot(ends.from, direction), dot(ends.to, direction));
        for (int k = 0; k < count; ++k) {
            EXPECT_NEAR(dot(arc.velocity(angles[k]), direction), 0.0, 1e-9);
            highest = std::max(highest, dot(arc.at(angles[k]), direction));
        }
        for (int k = 0; k <= 100; ++k) {
            EXPECT_LE(dot(arc.at(arc.sweep * k / 100), direction), highest + 1e-6);
        }
    }
}

TEST(Trigonometry, AgreesWithTheLibrary) {
    for (double x = -8.0; x < 8.0; x += 0.00137) {
        EXPECT_NEAR(sinCos(x).sin, std::sin(x), 3e-16) << x;
        EXPECT_NEAR(sinCos(x).cos, std::cos(x), 3e-16) << x;
        const double y = 3 * std::sin(x * 7);
        EXPECT_NEAR(angleOf(x, y), std::atan2(y, x), 2e-15) << x << ", " << y;
    }
    for (const double turns : {0.0, 1.0, -3.0, 1e6}) {
        EXPECT_EQ(sinCosOfDegrees(360 * turns + 90).cos, 0.0);
        EXPECT_EQ(sinCosOfDegrees(360 * turns + 180).cos, -1.0);
        EXPECT_EQ(sinCosOfDegrees(360 * turns - 90).sin, -1.0);
    }
    EXPECT_TRUE(std::isfinite(sinCosOfDegrees(3e38).sin));
    EXPECT_EQ(angleOf(0, 0), 0.0);
    EXPECT_DOUBLE_EQ(angleOf(-1e38, 0), kPi);
    EXPECT_DOUBLE_EQ(angleOf(0, -1e-40), -kPi / 2);
}

}  // namespace
}  // namespace vg::test
