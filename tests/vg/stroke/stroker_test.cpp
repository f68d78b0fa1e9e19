#include "vg/stroke/stroker.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>

#include "vg/stroke/round_fan.h"
#include "vg/stroke/stroke_reference.h"

namespace vg {
namespace {

constexpr VGint kCaps[] = {VG_CAP_BUTT, VG_CAP_ROUND, VG_CAP_SQUARE};
constexpr VGint kJoins[] = {VG_JOIN_MITER, VG_JOIN_ROUND, VG_JOIN_BEVEL};
using Verdict = StrokeReference::Verdict;

/// A path of lines.
struct PathOf {
    explicit PathOf(const std::vector<Polyline>& lines) {
        for (const Polyline& line : lines) test::appendAll(path, commandsOf(line));
    }
    Path path;
};

Polyline lineThrough(std::vector<Place> points, bool isClosed = false) {
    const size_t count = points.size();
    return {std::move(points), std::vector<bool>(count, false), isClosed};
}

Polyline regularPolygon(size_t sides, double radius) {
    Polyline line;
    line.isClosed = true;
    for (size_t i = 0; i < sides; ++i) {
        const double angle = 2.0 * M_PI * static_cast<double>(i) / static_cast<double>(sides);
        line.points.push_back({radius * std::cos(angle), radius * std::sin(angle)});
        line.smooth.push_back(false);
    }
    return line;
}

/// Compares the winding numbers of an outline with the definition at random places.
class StrokeComparison {
public:
    explicit StrokeComparison(uint32_t seed) : random_(seed) {}

    double between(double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random_);
    }
    bool oneIn(int n) { return random_() % static_cast<uint32_t>(n) == 0; }

    /// Floats, so that the definition starts from the very points that the stroker gets.
    Polyline randomLine() {
        Polyline line;
        const size_t count = 2 + random_() % 7;
        line.isClosed = oneIn(2) && count > 2;
        const double reach = oneIn(3) ? 3.0 : 12.0;
        for (size_t i = 0; i < count; ++i) {
            line.points.push_back({static_cast<float>(between(-reach, reach)),
                                   static_cast<float>(between(-reach, reach))});
            line.smooth.push_back(false);
        }
        return line;
    }

    StrokeParams randomParams() {
        StrokeParams params;
        params.halfWidth = static_cast<float>(std::exp2(between(-3.0, 2.5)));
        params.startCap = kCaps[random_() % 3];
        params.endCap = kCaps[random_() % 3];
        params.join = kJoins[random_() % 3];
        const double miter = static_cast<double>(params.halfWidth) * between(1.0, 6.0);
        params.miterLengthSquared = static_cast<float>(miter * miter);
        params.flatness = 0.02F;
        return params;
    }

    void compare(const std::vector<Polyline>& lines, const std::vector<Polyline>& pieces,
                 const StrokeParams& params) {
        ASSERT_TRUE(stroker_.stroke(PathOf(lines).path, params, outline_));
        const StrokeReference reference(pieces, params);
        const double reach = 14.0 + static_cast<double>(params.halfWidth);
        for (int i = 0; i < 400; ++i) {
            const Place p = {between(-reach, reach), between(-reach, reach)};
            const Verdict verdict = reference.at(p);
            const int winding = windingNumber(outline_, p);
            ASSERT_LE(winding, verdict == Verdict::kInside ? -1 : 0) << p.x << ", " << p.y;
            if (verdict == Verdict::kOutside) {
                ASSERT_EQ(winding, 0) << p.x << ", " << p.y;
            }
            if (verdict != Verdict::kTooClose) ++compared_;
        }
    }

    int compared() const { return compared_; }

private:
    std::mt19937 random_;
    Stroker stroker_;
    Outline outline_;
    int compared_ = 0;
};

TEST(Stroker, CoversExactlyItsDefinition) {
    StrokeComparison comparison(20261122);
    constexpr int kRounds = 1500;
    for (int round = 0; round < kRounds; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const std::vector<Polyline> lines = {comparison.randomLine()};
        comparison.compare(lines, lines, comparison.randomParams());
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(comparison.compared(), kRounds * 300);
}

TEST(Stroker, CoversExactlyTheDefinitionOfDashes) {
    StrokeComparison comparison(11);
    for (int round = 0; round < 1000; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const std::vector<Polyline> lines = {comparison.randomLine(), comparison.randomLine()};
        StrokeParams params = comparison.randomParams();
        std::vector<float> pattern;
        const int elements = comparison.oneIn(2) ? 2 : 6;
        for (int i = 0; i < elements; ++i) {
            pattern.push_back(static_cast<float>(comparison.between(0.1, 9.0)));
            params.dashTotal += pattern.back();
        }
        params.dashes = pattern.data();
        params.dashCount = static_cast<int32_t>(pattern.size());
        params.dashPhase = static_cast<float>(comparison.between(0.0, 40.0));
        params.dashPhaseReset = comparison.oneIn(2);
        std::vector<Polyline> pieces;
        double phase = static_cast<double>(params.dashPhase);
        for (const Polyline& line : lines) {
            if (params.dashPhaseReset) phase = static_cast<double>(params.dashPhase);
            for (Polyline& dash : cutIntoDashes(line, pattern, phase)) pieces.push_back(dash);
        }
        comparison.compare(lines, pieces, params);
        if (HasFatalFailure()) return;
    }
}

TEST(Stroker, RingsAreCoveredAtEveryWidth) {
    StrokeComparison comparison(3);
    for (size_t sides : {3U, 4U, 5U, 16U, 60U}) {
        for (float halfWidth : {0.5F, 2.4F, 3.5F, 4.9F, 5.1F, 8.0F}) {
            SCOPED_TRACE(std::to_string(sides) + " sides, " + std::to_string(halfWidth));
            Polyline ring = regularPolygon(sides, 5.0);
            for (Place& p : ring.points) p = {static_cast<float>(p.x), static_cast<float>(p.y)};
            StrokeParams params = comparison.randomParams();
            params.halfWidth = halfWidth;
            comparison.compare({ring}, {ring}, params);
            if (HasFatalFailure()) return;
        }
    }
}

// The sweep pays for every edge: corners must not cost more points than they need.
TEST(Stroker, CornersCostOnePointASideWherePossible) {
    const Polyline square = lineThrough({{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true);
    struct Case {
        const char* name;
        const Polyline& line;
        VGint join;
        float halfWidth;
        int32_t points;
    } cases[] = {
        {"mitered square", square, VG_JOIN_MITER, 1.0F, 8},
        {"beveled square", square, VG_JOIN_BEVEL, 1.0F, 12},
        {"square whose hole is closed: one corner in the long form", square, VG_JOIN_MITER, 6.0F,
         10},
    };
    for (const Case& c : cases) {
        StrokeParams params;
        params.join = c.join;
        params.halfWidth = c.halfWidth;
        params.miterLengthSquared = 16.0F * c.halfWidth * c.halfWidth;
        Stroker stroker;
        Outline outline;
        ASSERT_TRUE(stroker.stroke(PathOf({c.line}).path, params, outline));
        EXPECT_EQ(outline.points.count(), c.points) << c.name;
        EXPECT_EQ(outline.contourSizes.count(), 2) << c.name;
    }
}

TEST(Stroker, DotsShowTheirCapsAlone) {
    struct Case {
        const char* name;
        std::vector<Place> points;
        bool isClosed;
    } cases[] = {
        {"one point, closed", {{3, 4}}, true},
        {"the same point three times", {{3, 4}, {3, 4}, {3, 4}}, false},
        {"the same point twice, closed", {{3, 4}, {3, 4}}, true},
    };
    Stroker stroker;
    Outline outline;
    for (const Case& c : cases) {
        for (VGint startCap : kCaps) {
            for (VGint endCap : kCaps) {
                StrokeParams params;
                params.halfWidth = 2.0F;
                params.flatness = 0.001F;
                params.startCap = startCap;
                params.endCap = endCap;
                ASSERT_TRUE(stroker.stroke(PathOf({lineThrough(c.points, c.isClosed)}).path, params,
                                           outline));
                const StrokeReference reference({lineThrough({{3, 4}})}, params);
                for (double x = 0.55; x < 6.0; x += 0.1) {
                    for (double y = 1.55; y < 7.0; y += 0.1) {
                        const Verdict verdict = reference.at({x, y});
                        if (verdict == Verdict::kTooClose) continue;
                        ASSERT_EQ(windingNumber(outline, {x, y}) != 0, verdict == Verdict::kInside)
                            << c.name << ' ' << startCap << ' ' << endCap << ' ' << x << ' ' << y;
                    }
                }
            }
        }
    }
}

// A path whose relative steps come back almost to the start has its miter there all the same.
TEST(Stroker, RoundingNoiseMakesNoCorner) {
    const Polyline square = lineThrough({{0, 0}, {10, 0}, {10, 10}, {0, 10}, {-1e-6, 1e-6}}, true);
    StrokeParams params;
    Stroker stroker;
    Outline outline;
    ASSERT_TRUE(stroker.stroke(PathOf({square}).path, params, outline));
    EXPECT_EQ(outline.points.count(), 8);
    EXPECT_NE(windingNumber(outline, {-0.49, -0.49}), 0);
}

TEST(Stroker, ReversalsMakeNoSpikes) {
    // Directions of single-precision steps: they cancel out up to rounding, or exactly across.
    const std::vector<Place> lines[] = {
        {{416.799988, 483.399994},
         {417.699982, 483.399994},
         {416.699982, 483.399994},
         {417.112488, 483.399994}},
        {{0, 0}, {3, 0}, {1, 0}, {2, 0}},
        {{0, 0}, {0.1F, 0.3F}, {0, 0}, {0.2F, 0.6F}},
        {{1.1F, 7.7F}, {2.3F, 9.1F}, {1.1F, 7.7F}, {0.5F, 7.0F}},
    };
    Stroker stroker;
    Outline outline;
    for (const std::vector<Place>& points : lines) {
        for (VGint join : kJoins) {
            for (bool isClosed : {false, true}) {
                const Polyline line = lineThrough(points, isClosed);
                StrokeParams params;
                params.halfWidth = 0.6666667F;
                params.miterLengthSquared = 7.1F;
                params.join = join;
                ASSERT_TRUE(stroker.stroke(PathOf({line}).path, params, outline));
                for (const raster::Point& p : outline.points) {
                    ASSERT_NEAR(p.x, points[0].x, 6.0);
                    ASSERT_NEAR(p.y, points[0].y, 6.0);
                }
            }
        }
    }
}

// Every second renderer draws half a disc where a path turns back exactly.
TEST(Stroker, ReversalsHaveARoundJoin) {
    const Place directions[] = {{1, 0}, {-1, 0}, {0, 1}, {0, -1}, {0.6F, 0.8F}, {-0.8F, 0.6F}};
    for (const Place& d : directions) {
        for (const VGint join : kJoins) {
            StrokeParams params;
            params.halfWidth = 2.0F;
            params.flatness = 0.01F;
            params.join = join;
            params.miterLengthSquared = 64.0F;
            Stroker stroker;
            Outline outline;
            const Polyline line = lineThrough({{0, 0}, d * 10.0, d * 4.0});
            ASSERT_TRUE(stroker.stroke(PathOf({line}).path, params, outline));
            const bool isRound = join == VG_JOIN_ROUND;
            EXPECT_EQ(windingNumber(outline, d * 11.9) != 0, isRound) << d.x << ' ' << d.y;
            for (const double side : {-1.3, 1.3}) {
                EXPECT_EQ(windingNumber(outline, d * 11.3 + leftOf(d) * side) != 0, isRound);
            }
            EXPECT_EQ(windingNumber(outline, d * 12.1), 0);
        }
    }
}

/// The outline of a path of curves.
Outline& strokeOf(const test::Commands& commands, const StrokeParams& params) {
    static Stroker stroker;
    static Outline outline;
    Path path;
    test::appendAll(path, commands);
    EXPECT_TRUE(stroker.stroke(path, params, outline));
    return outline;
}

// The definition of a stroke that is a little thinner lies inside, that of a thicker one around.
TEST(Stroker, CurvesCoverWhatTheirNormalsSweep) {
    StrokeComparison comparison(13);
    test::Random random(13);
    for (int round = 0; round < 100; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        test::Commands commands = random.subpath(12.0, 1 + random.below(3));
        if (random.below(3) == 0) commands.push_back({VG_CLOSE_PATH, {}});
        StrokeParams params = comparison.randomParams();
        if (params.join == VG_JOIN_MITER) params.join = VG_JOIN_BEVEL;
        const Outline& outline = strokeOf(commands, params);
        const Polyline line = finely(commands, 200);
        StrokeParams thin = params, thick = params;
        thin.halfWidth -= params.flatness;
        thick.halfWidth += params.flatness;
        const StrokeReference inner({line}, thin);
        const StrokeReference outer({line}, thick);
        for (int i = 0; i < 50; ++i) {
            const Place p = {comparison.between(-6.0, 18.0), comparison.between(-6.0, 18.0)};
            const int winding = windingNumber(outline, p);
            ASSERT_LE(winding, inner.at(p) == Verdict::kInside ? -1 : 0) << p.x << ", " << p.y;
            if (outer.at(p) != Verdict::kOutside) continue;
            ASSERT_EQ(winding, 0) << p.x << ", " << p.y;
        }
    }
}

TEST(Stroker, CapsFollowTheTangentHoweverWideTheStroke) {
    struct Case {
        const char* name;
        test::Command curve;
        Place start, end;  ///< tangents
    } cases[] = {
        {"arc", {VG_SCCWARC_TO, {3, 3, 0, 3, 3}}, {1, 0}, {0, 1}},
        {"half circle", {VG_SCCWARC_TO, {1, 1, 0, 2, 0}}, {0, -1}, {0, 1}},
        {"cubic", {VG_CUBIC_TO, {0, 2, 4, 3, 6, 3}}, {0, 1}, {1, 0}},
        {"quadratic", {VG_QUAD_TO, {0, 3, 3, 3}}, {0, 1}, {1, 0}},
        {"controls on the ends", {VG_CUBIC_TO, {0, 0, 0, 3, 3, 3}}, {0, 1}, {1, 0}},
        {"both on the first", {VG_CUBIC_TO, {0, 0, 0, 0, 3, 4}}, {0.6, 0.8}, {0.6, 0.8}},
        {"rounding noise beside the end",
         {VG_CUBIC_TO, {0, 2, 3.000001, 3, 3, 3}},
         {0, 1},
         {1, 1 / 3.0}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        StrokeParams params;
        params.halfWidth = 6.0F;
        const Outline& outline = strokeOf({{VG_MOVE_TO, {0, 0}}, c.curve}, params);
        const std::vector<double>& v = c.curve.values;
        const Place end = {v[v.size() - 2], v[v.size() - 1]};
        const auto hasPoint = [&](Place p) {
            return std::any_of(outline.points.begin(), outline.points.end(), [&](raster::Point q) {
                return std::hypot(q.x - p.x, q.y - p.y) < 1e-4;
            });
        };
        for (const double side : {-6.0, 6.0}) {
            EXPECT_TRUE(hasPoint(leftOf(c.start) * (side / length(c.start))));
            EXPECT_TRUE(hasPoint(end + leftOf(c.end) * (side / length(c.end))));
        }
    }
}

TEST(Stroker, DashesOfCurvesEndOnTheirNormals) {
    const float dashes[] = {3.0F, 2.0F};
    StrokeParams params;
    params.halfWidth = 6.0F;
    params.flatness = 0.02F;
    params.dashes = dashes;
    params.dashCount = 2;
    params.dashTotal = 5.0F;
    constexpr double kRadius = 5.0;
    const Outline& outline =
        strokeOf({{VG_MOVE_TO, {kRadius, 0}}, {VG_SCCWARC_TO, {5, 5, 0, 0, kRadius}}}, params);
    for (const double along : {0.0, 3.0, 5.0}) {
        const Place normal = {std::cos(along / kRadius), std::sin(along / kRadius)};
        for (const double side : {-6.0, 6.0}) {
            const Place corner = normal * (kRadius + side);
            double nearest = 1.0;
            for (const raster::Point p : outline.points) {
                nearest = std::min(nearest, std::hypot(p.x - corner.x, p.y - corner.y));
            }
            EXPECT_LE(nearest, 0.03) << along << ' ' << side;
        }
    }
}

// The heart's notch: whether it has a miter is a matter of its angle, not of how finely the arcs
// that meet there are cut.
TEST(Stroker, JoinsOfCurvesDoNotDependOnTheFlatness) {
    const test::Commands heart = {{VG_MOVE_TO, {2, 8.5}},
                                  {VG_SCCWARC_TO, {5, 5, 0, 12, 6}},
                                  {VG_SCCWARC_TO, {5, 5, 0, 22, 8.5}}};
    for (const float miterLimit : {2.0F, 4.0F, 4.2F, 9.0F}) {  // the tangents ask for 4.123
        StrokeParams params;
        params.halfWidth = 1.0F;
        params.miterLengthSquared = miterLimit * miterLimit;
        std::vector<bool> verdicts;
        for (const float flatness : {0.3F, 0.1F, 0.03F, 0.01F, 0.001F}) {
            params.flatness = flatness;
            verdicts.push_back(windingNumber(strokeOf(heart, params), {12, 9}) != 0);
        }
        EXPECT_EQ(verdicts, std::vector<bool>(verdicts.size(), miterLimit > 4.123F)) << miterLimit;
    }
}

TEST(Stroker, RoundPartsHaveTheAreaOfTheirCircles) {
    for (float flatness : {0.3F, 0.1F, 0.01F, 1e-5F}) {
        StrokeParams params;
        params.halfWidth = 4.0F;
        params.flatness = flatness;
        params.startCap = params.endCap = VG_CAP_ROUND;
        const Outline& outline = strokeOf({{VG_MOVE_TO, {0, 0}}, {VG_CLOSE_PATH, {}}}, params);
        const int32_t count = outline.points.count();
        double farthest = 0.0;
        double area = 0.0;
        for (int32_t i = 0; i < count; ++i) {
            const raster::Point a = outline.points[i], b = outline.points[(i + 1) % count];
            const double middle = std::hypot((a.x + b.x) / 2, (a.y + b.y) / 2);
            farthest = std::max({farthest, std::fabs(4.0 - std::hypot(a.x, a.y)), 4.0 - middle});
            area += 0.5 * (static_cast<double>(b.x) * a.y - static_cast<double>(a.x) * b.y);
        }
        EXPECT_LE(farthest, static_cast<double>(flatness) / 3.0 + 1e-6);
        EXPECT_NEAR(area / (16.0 * M_PI), 1.0, 0.1 * static_cast<double>(flatness) + 1e-6);
        const double ideal = M_PI / std::acos(1.0 - static_cast<double>(flatness) / 8.0);
        EXPECT_LE(count, ideal + 3.0);
    }
}

TEST(Stroker, HostileStrokesAreBoundedAndFinite) {
    constexpr float kHuge = std::numeric_limits<float>::max();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    const float coordinates[] = {0.0F,  -0.0F,  1.0F, 1e-45F,    1e-30F,         1e30F,
                                 kHuge, -kHuge, kNaN, kInfinity, 1.0F + 0x1p-23F};
    const float amounts[] = {0.0F, -1.0F, 1e-45F, 1e-30F, 1.0F, 1e30F, kHuge, kNaN, kInfinity};
    std::mt19937 random(5);
    const auto pick = [&](const auto& values) { return values[random() % std::size(values)]; };
    Stroker stroker;
    Outline outline;
    for (int round = 0; round < 20000; ++round) {
        test::Commands commands = {{VG_MOVE_TO, {pick(coordinates), pick(coordinates)}}};
        for (int i = 0; i < 4; ++i) {
            constexpr uint8_t kCodes[] = {VG_LINE_TO, VG_QUAD_TO, VG_CUBIC_TO, VG_SCCWARC_TO,
                                          VG_CLOSE_PATH};
            test::Command command = {pick(kCodes), {}};
            for (int k = 0; k < coordinatesOf(command.code); ++k) {
                command.values.push_back(static_cast<double>(pick(coordinates)));
            }
            commands.push_back(command);
        }
        Path path;
        test::appendAll(path, commands);
        const float pattern[] = {std::max(pick(coordinates), 0.0F), std::fabs(pick(coordinates))};
        StrokeParams params;
        params.halfWidth = pick(amounts);
        params.flatness = pick(amounts);
        params.miterLengthSquared = pick(amounts);
        params.startCap = pick(kCaps);
        params.endCap = pick(kCaps);
        params.join = pick(kJoins);
        if (std::isfinite(pattern[0] + pattern[1]) && random() % 2 != 0) {
            params.dashes = pattern;
            params.dashCount = 2;
            params.dashTotal = pattern[0] + pattern[1];
            params.dashPhase = std::isfinite(pick(amounts)) ? pick(coordinates) : 0.0F;
            if (!std::isfinite(params.dashPhase)) params.dashPhase = -1e30F;
        }
        ASSERT_TRUE(stroker.stroke(path, params, outline));
        ASSERT_LT(outline.points.count(), 100000);
        int64_t sum = 0;
        for (int32_t size : outline.contourSizes) sum += size;
        ASSERT_EQ(sum, outline.points.count());
        for (const raster::Point& p : outline.points) {
            ASSERT_TRUE(std::isfinite(p.x) && std::isfinite(p.y)) << "round " << round;
        }
    }
}

TEST(Stroker, LongDashedPolylinesAreBoundedAndReuseTheirBuffers) {
    Polyline zigzag;
    for (int i = 0; i < 100000; ++i) zigzag.points.push_back({i * 0.5, i % 2 * 7.0});
    const PathOf zigzagPath({zigzag});
    const Path& path = zigzagPath.path;
    const float tiny[] = {0.5F, 0.5F};
    StrokeParams params;
    params.startCap = params.endCap = VG_CAP_ROUND;
    params.flatness = 1e-6F;  // half a million round caps at this flatness cannot all be round
    params.dashes = tiny;
    params.dashCount = 2;
    params.dashTotal = 1.0F;
    Stroker stroker;
    Outline outline;
    ASSERT_TRUE(stroker.stroke(path, params, outline));
    EXPECT_GT(outline.contourSizes.count(), 690000);
    EXPECT_LT(outline.points.count(), RoundFan::kMaxPoints + 10 * 1000000);
    const raster::Point* buffer = outline.points.data();
    ASSERT_TRUE(stroker.stroke(path, params, outline));
    EXPECT_EQ(outline.points.data(), buffer);
}

}  // namespace
}  // namespace vg
