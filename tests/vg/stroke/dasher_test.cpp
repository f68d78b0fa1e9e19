#include "vg/stroke/dasher.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace vg {
namespace {

struct Subpath {
    std::vector<raster::Point> points;
    bool isClosed = false;
};

/// Owns the edges of a run.
class TestRun {
public:
    explicit TestRun(const Subpath& subpath) {
        const size_t count = subpath.points.size();
        for (size_t i = 0; i < count; ++i) {
            const raster::Point a = subpath.points[i], b = subpath.points[(i + 1) % count];
            const Vector2 step = Vector2{b.x, b.y} - Vector2{a.x, a.y};
            const double length = lengthOf(step);
            const Vector2 direction = count > 1 ? step * (1.0 / length) : Vector2{1.0, 0.0};
            edges_.push({{a.x, a.y}, direction, direction, length, StrokeJoint::kCorner, false});
        }
        if (subpath.isClosed) edges_.push(edges_[0]);
        run_ = {edges_.data(), edges_.count() - 1, subpath.isClosed};
    }
    const StrokeRun& get() const { return run_; }

private:
    base::Array<StrokeEdge> edges_;
    StrokeRun run_;
};

std::string textOf(const StrokeRun& run) {
    std::ostringstream text;
    for (int32_t i = 0; i <= run.count - (run.isClosed ? 1 : 0); ++i) {
        text << run.edges[i].start.x << ',' << run.edges[i].start.y << ' ';
    }
    if (run.count == 0) {
        text << "towards " << run.edges[0].direction.x << ',' << run.edges[0].direction.y << ' ';
    }
    return text.str() + (run.isClosed ? "closed; " : "; ");
}

DashPattern patternOf(const std::vector<float>& lengths, float phase, bool resetsPhase = false) {
    float total = 0.0F;
    for (float length : lengths) total += length;
    return {lengths.data(), static_cast<int32_t>(lengths.size()), total, phase, resetsPhase};
}

/// The points of every dash.
std::string dashesOf(const std::vector<Subpath>& path, const DashPattern& pattern) {
    Dasher dasher;
    EXPECT_TRUE(dasher.setPattern(pattern));
    std::string text;
    for (const Subpath& subpath : path) {
        const TestRun run(subpath);
        EXPECT_TRUE(dasher.begin(run.get()));
        for (StrokeRun dash; dasher.next(dash);) text += textOf(dash);
    }
    return text;
}

const Subpath kLine = {{{0, 0}, {10, 0}}};
const Subpath kHook = {{{0, 0}, {4, 0}, {4, 6}}};
const Subpath kSquare = {{{0, 0}, {10, 0}, {10, 10}, {0, 10}}, true};
const Subpath kDot = {{{7, 7}}};

TEST(Dasher, CutsWhereThePatternSays) {
    struct Case {
        const char* name;
        Subpath subpath;
        std::vector<float> pattern;
        float phase;
        std::string dashes;
    } cases[] = {
        {"no pattern", kLine, {}, 0, "0,0 10,0 ; "},
        {"from the start", kLine, {3, 2}, 0, "0,0 3,0 ; 5,0 8,0 ; "},
        {"inside a dash", kLine, {3, 2}, 1, "0,0 2,0 ; 4,0 7,0 ; 9,0 10,0 ; "},
        {"inside a gap", kLine, {3, 2}, 4, "1,0 4,0 ; 6,0 9,0 ; "},
        {"where a gap starts", kLine, {3, 2}, 3, "2,0 5,0 ; 7,0 10,0 ; "},
        {"cycles later", kLine, {3, 2}, 54, "1,0 4,0 ; 6,0 9,0 ; "},
        {"before the start", kLine, {3, 2}, -1, "1,0 4,0 ; 6,0 9,0 ; "},
        {"cycles before the start", kLine, {3, 2}, -51, "1,0 4,0 ; 6,0 9,0 ; "},
        {"longer than the path", kLine, {30, 2}, 4, "0,0 10,0 ; "},
        {"a gap longer than the path", kLine, {3, 90}, 5, ""},
        {"several lengths", kLine, {1, 2, 3, 4}, 0, "0,0 1,0 ; 3,0 6,0 ; "},
        {"round a corner", kHook, {5, 2}, 0, "0,0 4,0 4,1 ; 4,3 4,6 ; "},
        {"up to a corner", kHook, {4, 2}, 0, "0,0 4,0 ; 4,2 4,6 ; "},
        {"from a corner", kHook, {2, 2}, 0, "0,0 2,0 ; 4,0 4,2 ; 4,4 4,6 ; "},
        {"dots, none at the end", kLine, {0, 5}, 0, "0,0 towards 1,0 ; 5,0 towards 1,0 ; "},
        {"dots keep the direction", kHook, {0, 6}, 0, "0,0 towards 1,0 ; 4,2 towards 0,1 ; "},
        {"dots between dashes",
         kLine,
         {0, 2, 4, 2},
         0,
         "0,0 towards 1,0 ; 2,0 6,0 ; 8,0 towards 1,0 ; "},
        {"empty gaps cut nothing", kLine, {2, 0, 3, 1}, 0, "0,0 5,0 ; 6,0 10,0 ; "},
        {"only empty gaps", kSquare, {3, 0}, 1, "0,0 10,0 10,10 0,10 closed; "},
        {"off before the seam", kSquare, {30, 20}, 0, "0,0 10,0 10,10 0,10 ; "},
        {"through the seam", kSquare, {10, 5}, 0, "10,5 10,10 5,10 ; 0,10 0,0 10,0 ; "},
        {"through the seam, inside a dash", kSquare, {20, 15}, 15, "10,10 0,10 0,0 5,0 ; "},
        {"off where the path starts, on where it ends",
         kSquare,
         {15, 10},
         20,
         "5,0 10,0 10,10 ; 0,10 0,0 ; "},
        {"on all round", kSquare, {50, 10}, 3, "0,0 10,0 10,10 0,10 closed; "},
        {"on all round, to the very end", kSquare, {40, 10}, 0, "0,0 10,0 10,10 0,10 closed; "},
        {"a point in a dash", kDot, {3, 2}, 2, "7,7 towards 1,0 ; "},
        {"a point in a gap", kDot, {3, 2}, 3, ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(dashesOf({c.subpath}, patternOf(c.pattern, c.phase)), c.dashes) << c.name;
    }
}

TEST(Dasher, ThePhaseIsCarriedOnUnlessItIsReset) {
    const Subpath second = {{{0, 9}, {4, 9}}};
    const std::vector<float> pattern = {6, 6};
    EXPECT_EQ(dashesOf({kLine, second, second}, patternOf(pattern, 0, false)),
              "0,0 6,0 ; 2,9 4,9 ; 0,9 4,9 ; ");
    EXPECT_EQ(dashesOf({kLine, second, second}, patternOf(pattern, 1, true)),
              "0,0 5,0 ; 0,9 4,9 ; 0,9 4,9 ; ");
}

int countDashes(float length, const DashPattern& pattern, int subpaths = 1) {
    Dasher dasher;
    EXPECT_TRUE(dasher.setPattern(pattern));
    const TestRun run({{{0, 0}, {length, 0}}});
    int count = 0;
    for (int i = 0; i < subpaths; ++i) {
        EXPECT_TRUE(dasher.begin(run.get()));
        for (StrokeRun dash; dasher.next(dash);) ++count;
    }
    return count;
}

TEST(Dasher, TooManyDashesAreNone) {
    const std::vector<float> ones = {1, 1};
    EXPECT_EQ(countDashes(2e6F, patternOf(ones, 0)), Dasher::kMaxDashes);
    EXPECT_EQ(countDashes(2e6F + 1, patternOf(ones, 0)), 1);
    EXPECT_EQ(countDashes(3e38F, patternOf(ones, 0)), 1);
    EXPECT_LE(countDashes(2e6F, patternOf(ones, 0, true), 8), Dasher::kMaxDashesInPath + 8);
    const std::vector<float> tiny = {1e-6F, 1e-6F};
    EXPECT_EQ(countDashes(100.0F, patternOf(tiny, 0)), 1);
    const std::vector<float> wide = {3e38F, 3e38F, 3e38F, 3e38F};  // its sum is not a float
    EXPECT_EQ(countDashes(10.0F, patternOf(wide, -1e38F)), 0);
    const std::vector<float> many(2'000'000, 1e-3F);  // more elements than a path may have dashes
    EXPECT_EQ(countDashes(1.0F, patternOf(many, 0)), 500);
}

// What is on is as long as the pattern says, whatever the corners and the phase.
TEST(Dasher, DashesAddUpToThePatternsShare) {
    std::mt19937 random(4);
    std::uniform_real_distribution<float> coordinate(-20, 20);
    std::uniform_real_distribution<float> element(0.0F, 6.0F);
    for (int round = 0; round < 300; ++round) {
        Subpath subpath;
        for (int i = 0; i < 12; ++i)
            subpath.points.push_back({coordinate(random), coordinate(random)});
        subpath.isClosed = round % 2 == 0;
        const std::vector<float> lengths = {element(random), element(random), element(random),
                                            element(random)};
        const DashPattern pattern = patternOf(lengths, 5 * coordinate(random));
        const TestRun run(subpath);
        double pathLength = 0.0;
        for (int32_t i = 0; i < run.get().count; ++i) pathLength += run.get().edges[i].length;
        Dasher dasher;
        ASSERT_TRUE(dasher.setPattern(pattern));
        ASSERT_TRUE(dasher.begin(run.get()));
        double sum = 0.0;
        for (StrokeRun dash; dasher.next(dash);) {
            for (int32_t i = 0; i < dash.count; ++i) {
                const StrokeEdge& edge = dash.edges[i];
                ASSERT_GT(edge.length, 0.0);
                const Vector2 end = edge.start + edge.direction * edge.length;
                ASSERT_NEAR(lengthOf(end - dash.edges[i + 1].start), 0.0, 1e-9);
                sum += edge.length;
            }
        }
        const double total = static_cast<double>(lengths[0]) + lengths[1] + lengths[2] + lengths[3];
        const auto isOn = [&](double position) {
            double phase = std::fmod(position + pattern.phase, total);
            if (phase < 0) phase += total;
            const double onAgain = static_cast<double>(lengths[0]) + lengths[1];
            return phase < lengths[0] || (phase >= onAgain && phase < onAgain + lengths[2]);
        };
        constexpr int kSamples = 20000;
        int on = 0;
        for (int i = 0; i < kSamples; ++i) on += isOn(pathLength * (i + 0.5) / kSamples);
        EXPECT_NEAR(sum, pathLength * on / kSamples, pathLength * 0.01) << "round " << round;
    }
}

}  // namespace
}  // namespace vg
