// Strokes as pixels, through the whole engine, beside a supersampled picture of their definition.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "vg/engine_fixture.h"
#include "vg/stroke/stroke_reference.h"

namespace vg {
namespace {

constexpr int kSide = 64;

/// Surface = matrix * user.
struct Map {
    const char* name;
    double a, b, c, d;  ///< x' = a x + b y, y' = c x + d y, about the centre of the surface

    Place toUser(double x, double y) const {
        const double det = a * d - b * c;
        const double dx = x - kSide / 2.0, dy = y - kSide / 2.0;
        return {(d * dx - b * dy) / det, (a * dy - c * dx) / det};
    }
    Place toSurface(Place p) const {
        return {a * p.x + b * p.y + kSide / 2.0, c * p.x + d * p.y + kSide / 2.0};
    }
};

constexpr Map kMaps[] = {
    {"identity", 1, 0, 0, 1},  {"enlarged", 3, 0, 0, 3},     {"turned", 0.8, -0.6, 0.6, 0.8},
    {"mirrored", -2, 0, 0, 2}, {"skewed", 1.5, 0.7, 0, 1.5}, {"stretched", 3, 0, 0, 0.9},
};

struct Style {
    VGint cap, join;
    std::vector<float> dashes;
    bool isRound() const { return cap == VG_CAP_ROUND || join == VG_JOIN_ROUND; }
};

/// Differences of the pixels along the outline, in levels of 255.
struct Difference {
    double largest = 0.0;
    double largestBeside = 0.0;  ///< beside straight parts, away from joins and caps
    double sum = 0.0;
    double signedSum = 0.0;
    int pixels = 0;
};

std::string describe(const Difference& difference) {
    return "largest " + std::to_string(difference.largest) + ", mean " +
           std::to_string(difference.sum / difference.pixels) + ", lean " +
           std::to_string(difference.signedSum / difference.pixels);
}

class StrokePixels : public EngineFixture {
protected:
    StrokePixels() : EngineFixture(kSide, kSide) {}

    /// A line that goes on to the right and never meets itself.
    Polyline wave(double extent, double halfWidth) {
        Polyline line;
        std::uniform_real_distribution<double> wobble(-0.22, 0.22);
        const int count = 4;
        for (int i = 0; i <= count; ++i) {
            const double x = extent * (i / static_cast<double>(count) - 0.5) * 1.5;
            line.points.push_back({static_cast<float>(x + halfWidth * wobble(random_)),
                                   static_cast<float>(2.0 * extent * wobble(random_))});
            line.smooth.push_back(false);
        }
        return line;
    }

    void setStroke(double halfWidth, const Style& style, const Map& map) {
        const float matrix[9] = {static_cast<float>(map.a),
                                 static_cast<float>(map.c),
                                 0,
                                 static_cast<float>(map.b),
                                 static_cast<float>(map.d),
                                 0,
                                 kSide / 2.0F,
                                 kSide / 2.0F,
                                 1};
        vgSeti(VG_MATRIX_MODE, VG_MATRIX_PATH_USER_TO_SURFACE);
        vgLoadMatrix(matrix);
        vgSetf(VG_STROKE_LINE_WIDTH, static_cast<float>(2.0 * halfWidth));
        vgSeti(VG_STROKE_CAP_STYLE, style.cap);
        vgSeti(VG_STROKE_JOIN_STYLE, style.join);
        vgSetfv(VG_STROKE_DASH_PATTERN, static_cast<VGint>(style.dashes.size()),
                style.dashes.data());
    }

    void draw(const test::Commands& commands) {
        vgClear(0, 0, kSide, kSide);
        const VGPath path = createPath();
        std::vector<float> coordinates;
        std::vector<VGubyte> segments;
        for (const test::Command& command : commands) {
            segments.push_back(command.code);
            for (const double value : command.values) {
                coordinates.push_back(static_cast<float>(value));
            }
        }
        vgAppendPathData(path, static_cast<VGint>(segments.size()), segments.data(),
                         coordinates.data());
        vgDrawPath(path, VG_STROKE_PATH);
        vgDestroyPath(path);
        ASSERT_EQ(vgGetError(), VG_NO_ERROR);
    }

    static double coverage(const StrokeReference& reference, const Map& map, int x, int y,
                           int samples) {
        int covered = 0;
        for (int i = 0; i < samples * samples; ++i) {
            const double sx = (i % samples + 0.5) / samples, sy = (i / samples + 0.5) / samples;
            covered += reference.covers(map.toUser(x + sx, y + sy)) ? 1 : 0;
        }
        return covered / static_cast<double>(samples * samples);
    }

    /// Whether a pixel lies where nothing but the two sides of an edge is near.
    static bool isBesideAnEdge(const std::vector<Polyline>& pieces, const Map& map, int x, int y) {
        constexpr double kReach = 5.0;  // pixels
        for (const Polyline& piece : pieces) {
            for (const Place& p : piece.points) {
                const Place surface = map.toSurface(p);
                if (length(surface - Place{x + 0.5, y + 0.5}) < kReach) return false;
            }
        }
        return true;
    }

    void compare(const std::vector<Polyline>& pieces, const StrokeParams& params, const Map& map,
                 Difference& difference, int samples = 32) {
        const StrokeReference reference(pieces, params);
        for (int y = 0; y < kSide; ++y) {
            for (int x = 0; x < kSide; ++x) {
                double ideal = coverage(reference, map, x, y, 4);
                if (ideal > 0.0 && ideal < 1.0) ideal = coverage(reference, map, x, y, samples);
                const double alpha = pixelAt(x, y) >> 24;
                const double off = alpha - 255.0 * ideal;
                difference.largest = std::max(difference.largest, std::fabs(off));
                if (ideal <= 0.0 || ideal >= 1.0) continue;
                if (isBesideAnEdge(pieces, map, x, y)) {
                    difference.largestBeside = std::max(difference.largestBeside, std::fabs(off));
                }
                difference.sum += std::fabs(off);
                difference.signedSum += off;
                ++difference.pixels;
            }
        }
    }

    std::mt19937 random_{31};
};

TEST_F(StrokePixels, FollowTheDefinitionUnderEveryMatrix) {
    const Style styles[] = {
        {VG_CAP_BUTT, VG_JOIN_MITER, {}},       {VG_CAP_SQUARE, VG_JOIN_BEVEL, {}},
        {VG_CAP_ROUND, VG_JOIN_ROUND, {}},      {VG_CAP_BUTT, VG_JOIN_MITER, {5, 3}},
        {VG_CAP_SQUARE, VG_JOIN_MITER, {1, 7}}, {VG_CAP_ROUND, VG_JOIN_ROUND, {2, 5}},
    };
    Difference straight, round;
    for (const Map& map : kMaps) {
        for (const Style& style : styles) {
            SCOPED_TRACE(map.name);
            const double scale = std::max(std::fabs(map.a), std::fabs(map.d));
            const double halfWidth = 1.5 / std::sqrt(std::fabs(map.a * map.d - map.b * map.c));
            const Polyline line = wave(0.6 * kSide / scale, halfWidth);
            setStroke(halfWidth, style, map);
            draw(commandsOf(line));
            StrokeParams params;
            params.halfWidth = context->stroke.halfWidth;
            params.startCap = params.endCap = style.cap;
            params.join = style.join;
            params.miterLengthSquared = context->stroke.miterLengthSquared;
            double phase = 0.0;
            const auto pieces = style.dashes.empty() ? std::vector<Polyline>{line}
                                                     : cutIntoDashes(line, style.dashes, phase);
            Difference one;
            compare(pieces, params, map, one);
            Difference& all = style.isRound() ? round : straight;
            all.largest = std::max(all.largest, one.largest);
            all.sum += one.sum;
            all.signedSum += one.signedSum;
            all.pixels += one.pixels;
            // 1/32 pixel explains 14 levels, the samples 4; a corner is where several edges meet.
            EXPECT_LE(one.largestBeside, 18.0) << style.cap << ' ' << style.join;
            EXPECT_LE(one.largest, style.isRound() ? 56.0 : 40.0) << style.cap << ' ' << style.join;
        }
    }
    ASSERT_GT(straight.pixels, 1000);
    EXPECT_LE(straight.sum / straight.pixels, 4.0);
    EXPECT_LE(std::fabs(straight.signedSum) / straight.pixels, 1.5) << "leans to one side";
    // Round parts are inscribed: they may lack up to the flatness, and lean inwards.
    EXPECT_LE(round.sum / round.pixels, 8.0);
    RecordProperty("straight", describe(straight));
    RecordProperty("round", describe(round));
}

TEST_F(StrokePixels, FollowCurvesBentWithinTheWidth) {
    const struct {
        const char* name;
        test::Commands commands;
    } cases[] = {
        {"half an arc, smaller than the width",
         {{VG_MOVE_TO, {-3, 1}}, {VG_SCCWARC_TO, {3, 3, 0, 3, 1}}}},
        {"a dot of two arcs",
         {{VG_MOVE_TO, {0, 5}},
          {VG_SCWARC_TO, {5, 5, 0, 0, -5}},
          {VG_MOVE_TO, {0, 5}},
          {VG_SCCWARC_TO, {5, 5, 0, 0, -5}}}},
        {"a closed arc",
         {{VG_MOVE_TO, {4, 0}}, {VG_LCCWARC_TO, {4, 3, 30, 0, 4}}, {VG_CLOSE_PATH, {}}}},
        {"a quadratic's hook", {{VG_MOVE_TO, {-12, 8}}, {VG_QUAD_TO, {12, 8, -10, -8}}}},
        {"a cubic's loop", {{VG_MOVE_TO, {-8, 9}}, {VG_CUBIC_TO, {18, -14, -18, -14, 8, 9}}}},
        {"a cusp", {{VG_MOVE_TO, {-9, 8}}, {VG_CUBIC_TO, {9, -10, -9, -10, 9, 8}}}},
        {"a line into an arc",
         {{VG_MOVE_TO, {-14, 3}},
          {VG_LINE_TO, {0, 3}},
          {VG_SCWARC_TO, {3, 3, 0, 0, -3}},
          {VG_LINE_TO, {-14, -3}}}},
    };
    const Style styles[] = {{VG_CAP_BUTT, VG_JOIN_BEVEL, {}},
                            {VG_CAP_SQUARE, VG_JOIN_BEVEL, {}},
                            {VG_CAP_ROUND, VG_JOIN_ROUND, {}}};
    constexpr double kHalfWidth = 7.0;
    size_t next = 0;
    for (const auto& c : cases) {
        for (int i = 0; i < 2; ++i) {
            const Style& style = styles[next++ % std::size(styles)];
            SCOPED_TRACE(testing::Message() << c.name << ", cap " << style.cap);
            setStroke(kHalfWidth, style, kMaps[0]);
            draw(c.commands);
            StrokeParams params;
            params.halfWidth = context->stroke.halfWidth;
            params.startCap = params.endCap = style.cap;
            params.join = style.join;
            std::vector<Polyline> pieces;
            for (const test::Commands& subpath : test::subpathsOf(c.commands)) {
                pieces.push_back(finely(subpath, 40));
            }
            Difference one;
            compare(pieces, params, kMaps[0], one, 12);
            EXPECT_LE(one.largest, 48.0);
            EXPECT_LE(one.sum / one.pixels, 8.0) << describe(one);
        }
    }
}

TEST_F(StrokePixels, NothingIsDrawnWithoutWidthOrUnderAnEmptyMatrix) {
    const Polyline line = wave(40, 2);
    setStroke(0.0, {VG_CAP_ROUND, VG_JOIN_ROUND, {}}, kMaps[0]);
    draw(commandsOf(line));
    setStroke(2.0, {VG_CAP_ROUND, VG_JOIN_ROUND, {}}, {"empty", 0, 0, 0, 0});
    draw(commandsOf(line));
    for (int i = 0; i < kSide * kSide; ++i) ASSERT_EQ(surface->pixels[i], 0U);
}

}  // namespace
}  // namespace vg
