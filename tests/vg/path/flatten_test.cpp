#include "vg/path/flatten.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "vg/geometry/curve_segments.h"
#include "vg/geometry/tolerance.h"
#include "vg/path/path_samples.h"

namespace vg::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

FlatteningTolerance toleranceOf(double radius) {
    FlatteningTolerance tolerance;
    tolerance.set(static_cast<float>(radius * radius));
    return tolerance;
}

std::vector<Vector2> pointsOf(const Outline& path) {
    std::vector<Vector2> points;
    for (const raster::Point& p : path.points) {
        points.push_back({static_cast<double>(p.x), static_cast<double>(p.y)});
    }
    return points;
}

std::vector<Vector2> densified(const std::vector<Vector2>& line) {
    std::vector<Vector2> points{line.front()};
    for (size_t i = 1; i < line.size(); ++i) {
        for (int k = 1; k <= 5; ++k) {
            points.push_back(line[i - 1] + (line[i] - line[i - 1]) * (k / 5.0));
        }
    }
    return points;
}

/// Checks one curve against its definition, both ways.
void expectWithin(const Command& move, const Command& curve, double radius) {
    Path path;
    appendAll(path, {move, curve});
    Outline flat;
    ASSERT_TRUE(flatten(path, toleranceOf(radius), flat));
    const std::vector<Vector2> line = pointsOf(flat);
    ASSERT_GE(line.size(), 2U);
    const Vector2 from{move.values[0], move.values[1]};
    const size_t last = curve.values.size() - 2;
    EXPECT_EQ(line.front(), from);
    EXPECT_EQ(line.back(), (Vector2{curve.values[last], curve.values[last + 1]}));

    const std::vector<Vector2> samples = sample(from, curve, 1500);
    double size = 0.0;
    for (const Vector2 p : samples) size = std::max({size, std::fabs(p.x), std::fabs(p.y)});
    const double limit = radius / 3.0 * 1.0001 + size * 2.5e-7;  // floats hold the polyline
    for (const Vector2 p : samples) ASSERT_LE(distanceToPolyline(p, line), limit);
    for (const Vector2 p : densified(line)) {  // the samples cut corners a little themselves
        ASSERT_LE(distanceToPolyline(p, samples), limit + size * 2e-5);
    }
}

TEST(Flatten, StaysWithinTheRadiusOfRandomSegments) {
    Random random(1);
    for (int i = 0; i < 300; ++i) {
        SCOPED_TRACE(i);
        const double size = std::pow(10.0, random.between(-1, 3));
        const double radius = size * std::pow(10.0, random.between(-3, -1));
        const Command move{VG_MOVE_TO, {random.between(0, size), random.between(0, size)}};
        expectWithin(move, random.segment(size), radius);
        if (HasFatalFailure()) return;
    }
}

TEST(Flatten, StaysWithinTheRadiusOfAwkwardCurves) {
    const struct {
        const char* name;
        Command curve;
    } cases[] = {
        {"cusp", {VG_CUBIC_TO, {100, 100, 0, 100, 100, 0}}},
        {"loop", {VG_CUBIC_TO, {300, 200, -200, 200, 100, 0}}},
        {"closed loop", {VG_CUBIC_TO, {100, 80, -90, 90, 0, 0}}},
        {"back and forth on a line", {VG_CUBIC_TO, {200, 0, -100, 0, 100, 0}}},
        {"quadratic that turns back", {VG_QUAD_TO, {100, 0, 0, 0}}},
        {"controls on the ends", {VG_CUBIC_TO, {0, 0, 100, 50, 100, 50}}},
        {"all speed at one end", {VG_CUBIC_TO, {0, 0, 0, 1, 100, 50}}},
        {"inflection", {VG_CUBIC_TO, {100, 50, 0, -50, 100, 0}}},
        {"far ahead along the chord", {VG_CUBIC_TO, {500, 3, 600, -3, 100, 0}}},
        {"needle ellipse", {VG_LCCWARC_TO, {100, 0.5, 30, 3, 2}}},
        {"radii too small", {VG_SCWARC_TO, {1, 2, 45, 100, 30}}},
        {"zero radius", {VG_SCWARC_TO, {0, 20, 0, 100, 30}}},
    };
    for (const auto& c : cases) {
        for (const double radius : {10.0, 0.158, 0.001}) {
            SCOPED_TRACE(testing::Message() << c.name << ", radius " << radius);
            expectWithin({VG_MOVE_TO, {0, 0}}, c.curve, radius);
        }
    }
}

// The uniform count is the bound that everything may be measured against.
TEST(Flatten, NeedsFewerPointsThanUniformSteps) {
    Random random(2);
    const double radius = 0.158;
    double uniform = 0.0;
    int points = 0;
    for (int i = 0; i < 500; ++i) {
        std::vector<double> v;
        for (int k = 0; k < 8; ++k) v.push_back(random.between(0, 100));
        Path path;
        appendAll(path, {{VG_MOVE_TO, {v[0], v[1]}}, {VG_CUBIC_TO, {v.begin() + 2, v.end()}}});
        Outline flat;
        ASSERT_TRUE(flatten(path, toleranceOf(radius), flat));
        points += flat.points.count() - 1;
        const double first = std::hypot(v[0] - 2 * v[2] + v[4], v[1] - 2 * v[3] + v[5]);
        const double last = std::hypot(v[2] - 2 * v[4] + v[6], v[3] - 2 * v[5] + v[7]);
        uniform += std::ceil(0.5 * std::sqrt(6.25 / radius * std::max(first, last)));
    }
    EXPECT_LT(points, 0.95 * uniform);
}

double areaOf(const std::vector<Vector2>& line) {
    double twice = 0.0;
    for (size_t i = 0; i < line.size(); ++i) twice += cross(line[i], line[(i + 1) % line.size()]);
    return 0.5 * twice;
}

// Inscribed polylines lose area on every curve that bends one way, and are lighter than it.
TEST(Flatten, KeepsTheAreaOfCurves) {
    Random random(8);
    for (const double radius : {0.3, 0.1, 0.02}) {
        double difference = 0.0;
        double lost = 0.0;
        for (int i = 0; i < 200; ++i) {
            const Vector2 from{random.between(0, 50), random.between(0, 50)};
            const double x = random.between(20, 50), y = random.between(20, 50);
            const Command curves[] = {
                {VG_CUBIC_TO,
                 {from.x + x, from.y, from.x + 2 * x, from.y + y, from.x + x, from.y + 2 * y}},
                {VG_QUAD_TO, {from.x + x, from.y - y, from.x + 2 * x, from.y + y}},
                {VG_LCCWARC_TO, {x, y, x + y, from.x + 20, from.y + 20}},
            };
            const Command& curve = curves[i % 3];
            Path path;
            appendAll(path, {{VG_MOVE_TO, {from.x, from.y}}, curve});
            Outline flat;
            ASSERT_TRUE(flatten(path, toleranceOf(radius), flat));
            const std::vector<Vector2> samples = sample(from, curve, 4000);
            difference += areaOf(pointsOf(flat)) - areaOf(samples);
            const std::vector<Vector2> inscribed = sample(from, curve, flat.points.count() - 1);
            lost += areaOf(samples) - areaOf(inscribed);
        }
        EXPECT_LE(std::fabs(difference), 0.1 * lost) << radius;
    }
}

TEST(Flatten, MakesOneContourForEachDrawnSubpath) {
    using Floats = std::vector<double>;
    struct Case {
        const char* name;
        Commands commands;
        Floats points;
        std::vector<int> sizes;
    };
    const Case cases[] = {
        {"nothing", {}, {}, {}},
        {"lone moves", {{VG_MOVE_TO, {1, 2}}, {VG_MOVE_TO, {3, 4}}}, {}, {}},
        {"lone close", {{VG_CLOSE_PATH, {}}}, {}, {}},
        {"move and close",
         {{VG_MOVE_TO, {1, 2}}, {VG_CLOSE_PATH, {}}, {VG_CLOSE_PATH, {}}},
         {1, 2},
         {1}},
        {"a path starts at the origin", {{VG_LINE_TO, {3, 4}}}, {0, 0, 3, 4}, {2}},
        {"zero length", {{VG_MOVE_TO, {1, 2}}, {VG_LINE_TO, {1, 2}}}, {1, 2, 1, 2}, {2}},
        {"going on after a close",
         {{VG_MOVE_TO, {1, 1}},
          {VG_LINE_TO, {5, 1}},
          {VG_LINE_TO, {5, 5}},
          {VG_CLOSE_PATH, {}},
          {VG_LINE_TO | kRelative, {0, 2}}},
         {1, 1, 5, 1, 5, 5, 1, 1, 1, 3},
         {3, 2}},
        {"a close that has returned",
         {{VG_MOVE_TO, {1, 1}}, {VG_LINE_TO, {5, 1}}, {VG_LINE_TO, {1, 1}}, {VG_CLOSE_PATH, {}}},
         {1, 1, 5, 1},
         {2}},
        {"horizontal, vertical, relative",
         {{VG_MOVE_TO | kRelative, {1, 2}},
          {VG_HLINE_TO, {7}},
          {VG_VLINE_TO | kRelative, {3}},
          {VG_HLINE_TO | kRelative, {-2}},
          {VG_VLINE_TO, {0}}},
         {1, 2, 7, 2, 7, 5, 5, 5, 5, 0},
         {5}},
        {"an arc to where it is", {{VG_MOVE_TO, {1, 2}}, {VG_LCWARC_TO, {5, 5, 0, 1, 2}}}, {}, {}},
        {"what is not finite is not there",
         {{VG_MOVE_TO, {1, 1}},
          {VG_LINE_TO, {kNaN, 1}},
          {VG_CUBIC_TO, {1, kInfinity, 1, 1, 1, 1}},
          {VG_LINE_TO | kRelative, {1, 1}},
          {VG_MOVE_TO, {kNaN, 0}},
          {VG_SCWARC_TO, {5, 5, kNaN, 1, 2}},
          {VG_LINE_TO | kRelative, {2, 0}}},
         {1, 1, 2, 2, 4, 2},
         {3}},
        {"sums beyond the floats",
         {{VG_MOVE_TO, {3e38, 0}}, {VG_LINE_TO | kRelative, {3e38, 0}}, {VG_LINE_TO, {1, 1}}},
         {static_cast<double>(3e38F), 0, 1, 1},
         {2}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Path path;
        appendAll(path, c.commands);
        Outline flat;
        ASSERT_TRUE(flatten(path, toleranceOf(0.1), flat));
        Floats points;
        for (const Vector2 p : pointsOf(flat)) points.insert(points.end(), {p.x, p.y});
        EXPECT_EQ(points, c.points);
        EXPECT_EQ(std::vector<int>(flat.contourSizes.begin(), flat.contourSizes.end()), c.sizes);
    }
}

TEST(Flatten, ReflectsTheControlPointOfTheCurveBefore) {
    const struct {
        const char* name;
        Commands shorthand, full;
    } cases[] = {
        {"smooth cubic",
         {{VG_CUBIC_TO, {0, 10, 10, 20, 20, 10}}, {VG_SCUBIC_TO, {40, 0, 50, 50}}},
         {{VG_CUBIC_TO, {0, 10, 10, 20, 20, 10}}, {VG_CUBIC_TO, {30, 0, 40, 0, 50, 50}}}},
        {"smooth quadratics",
         {{VG_QUAD_TO, {10, 20, 20, 0}}, {VG_SQUAD_TO, {40, 0}}, {VG_SQUAD_TO, {60, 0}}},
         {{VG_QUAD_TO, {10, 20, 20, 0}},
          {VG_QUAD_TO, {30, -20, 40, 0}},
          {VG_QUAD_TO, {50, 20, 60, 0}}}},
        {"after a line there is none",
         {{VG_LINE_TO, {20, 5}}, {VG_SCUBIC_TO, {40, 0, 50, 50}}},
         {{VG_LINE_TO, {20, 5}}, {VG_CUBIC_TO, {20, 5, 40, 0, 50, 50}}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Path shorthand;
        Path full;
        appendAll(shorthand, c.shorthand);
        appendAll(full, c.full);
        Outline a;
        Outline b;
        ASSERT_TRUE(flatten(shorthand, toleranceOf(0.1), a) && flatten(full, toleranceOf(0.1), b));
        EXPECT_EQ(pointsOf(a), pointsOf(b));
    }
}

TEST(Flatten, BoundsThePointsOfHostilePaths) {
    const FlatteningTolerance finest = toleranceOf(1e-18);
    const Command curves[] = {
        {VG_CUBIC_TO, {1e30, -1e30, 3e38, 1e-30, 1, 1}},
        {VG_QUAD_TO, {-3e38, 3e38, 3e38, 3e38}},
        {VG_LCWARC_TO, {3e38, 1e-45, 77, 5, 5}},
        {VG_SCCWARC_TO, {1e-45, 1e-45, 1e30, 3e38, 3e38}},
        {VG_LCCWARC_TO, {1e30, 1e30, 0, 1e-30, 0}},
        {VG_CUBIC_TO, {1e-40, 1e-40, 1e-45, 2e-40, 0, 1e-42}},
    };
    for (const Command& curve : curves) {
        Path path;
        appendAll(path, {{VG_MOVE_TO, {0, 0}}, curve});
        Outline flat;
        ASSERT_TRUE(flatten(path, finest, flat));
        EXPECT_LE(flat.points.count(), kMaxCurveSegments + 1);
        for (const Vector2 p : pointsOf(flat)) EXPECT_TRUE(fitsFloat(p));
    }

    Path many;
    for (int i = 0; i < 3000; ++i) appendAll(many, {{VG_CUBIC_TO, {90, 0, 90, 90, 0.0 + i, 90}}});
    Outline flat;
    ASSERT_TRUE(flatten(many, finest, flat));
    EXPECT_LE(flat.points.count(), kMaxFlattenedPoints);
    EXPECT_EQ(flat.points.last().x, 2999.0F) << "the last curves are still there";
}

TEST(Flatten, KeepsTheMinimumOfSubdivisions) {
    FlatteningTolerance tolerance = toleranceOf(1e-5);
    ASSERT_GT(tolerance.minimumSubdivisions, 4);
    const Command curves[] = {{VG_QUAD_TO, {5e-5, 5e-5, 1e-4, 0}},
                              {VG_SCCWARC_TO, {5e-5, 5e-5, 0, 1e-4, 0}}};
    for (const Command& curve : curves) {
        Path path;
        appendAll(path, {{VG_MOVE_TO, {0, 0}}, curve});
        Outline flat;
        ASSERT_TRUE(flatten(path, tolerance, flat));
        EXPECT_GE(flat.points.count(), tolerance.minimumSubdivisions + 1);
    }
}

TEST(Tolerance, FollowsScaleAndStroke) {
    EXPECT_FLOAT_EQ(drawTolerance(0.0249F, 1.0F, nullptr), 0.0249F);
    EXPECT_FLOAT_EQ(drawTolerance(0.0249F, 2.0F, nullptr), 0.0249F / 4);
    const StrokeTolerance wide{10.0F, false, 40, 20};
    EXPECT_FLOAT_EQ(drawTolerance(0.0249F, 1.0F, &wide), 0.0249F / 2.25F);
    const StrokeTolerance dashed{10.0F, true, 40, 20};
    EXPECT_FLOAT_EQ(drawTolerance(0.0249F, 1.0F, &dashed), 0.0249F / 22.5F);
    const StrokeTolerance thin{1.0F, true, 40, 20};
    EXPECT_FLOAT_EQ(drawTolerance(0.0249F, 1.0F, &thin), 0.0249F);
    const StrokeTolerance flat{10.0F, false, 40, 0};
    EXPECT_FLOAT_EQ(drawTolerance(0.0249F, 1.0F, &flat), 0.0249F);
}

TEST(Tolerance, IsPositiveAndFiniteForEveryScale) {
    for (const float scale : {0.0F, 1e-30F, 1e30F, std::numeric_limits<float>::quiet_NaN()}) {
        FlatteningTolerance tolerance;
        tolerance.set(drawTolerance(0.0249F, scale, nullptr));
        EXPECT_GT(tolerance.squared, 0.0F);
        EXPECT_TRUE(std::isfinite(tolerance.squared) && std::isfinite(tolerance.threeOverRadius));
        EXPECT_GE(tolerance.minimumSubdivisions, 1);
    }
}

}  // namespace
}  // namespace vg::test
