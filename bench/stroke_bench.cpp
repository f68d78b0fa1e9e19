// Stroking and dashing, in points of the path a second; the outline alone, not its pixels.

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "vg/path/path.h"
#include "vg/path/path_writer.h"
#include "vg/stroke/stroker.h"

namespace vg {
namespace {

constexpr int kPoints = 10000;

/// Corners of up to a quarter turn, edges of 4 to 12 units.
void polyline(Path& path) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> turn(-1.5, 1.5);
    std::uniform_real_distribution<double> length(4.0, 12.0);
    PathWriter writer(path);
    double place[] = {0.0, 0.0};
    for (int i = 0; i < kPoints; ++i) {
        writer.append(i == 0 ? VG_MOVE_TO : VG_LINE_TO, place);
        const double angle = turn(random);
        const double step = length(random);
        place[0] += step * std::cos(angle);
        place[1] += step * std::sin(angle);
    }
    writer.commit();
}

/// One long spiral of cubics, a tenth of a turn each.
void curve(Path& path) {
    PathWriter writer(path);
    const double kStep = 0.628;
    const double start[] = {20.0, 0.0};
    writer.append(VG_MOVE_TO, start);
    for (int i = 1; i <= kPoints / 10; ++i) {
        const double from = kStep * (i - 1), to = kStep * i;
        const double radius = 20.0 + to, handle = radius * kStep / 3.0;
        const double values[] = {radius * std::cos(from) - handle * std::sin(from),
                                 radius * std::sin(from) + handle * std::cos(from),
                                 radius * std::cos(to) + handle * std::sin(to),
                                 radius * std::sin(to) - handle * std::cos(to),
                                 radius * std::cos(to),
                                 radius * std::sin(to)};
        writer.append(VG_CUBIC_TO, values);
    }
    writer.commit();
}

void stroke(benchmark::State& state, void (*append)(Path&), VGint join, VGint cap, bool isDashed) {
    Path path;
    append(path);
    static const float dashes[] = {6.0F, 4.0F};
    StrokeParams params;
    params.halfWidth = 1.5F;
    params.join = join;
    params.startCap = params.endCap = cap;
    params.miterLengthSquared = 36.0F;
    params.flatness = 0.158F;
    if (isDashed) {
        params.dashes = dashes;
        params.dashCount = 2;
        params.dashTotal = 10.0F;
    }
    Stroker stroker;
    Outline outline;
    for (auto _ : state) benchmark::DoNotOptimize(stroker.stroke(path, params, outline));
    state.SetItemsProcessed(state.iterations() * path.segments.count());
    state.counters["outline points"] = outline.points.count();
}

BENCHMARK_CAPTURE(stroke, polyline_miter, polyline, VG_JOIN_MITER, VG_CAP_BUTT, false);
BENCHMARK_CAPTURE(stroke, polyline_round, polyline, VG_JOIN_ROUND, VG_CAP_ROUND, false);
BENCHMARK_CAPTURE(stroke, polyline_dashed, polyline, VG_JOIN_MITER, VG_CAP_BUTT, true);
BENCHMARK_CAPTURE(stroke, polyline_round_dashes, polyline, VG_JOIN_ROUND, VG_CAP_ROUND, true);
BENCHMARK_CAPTURE(stroke, curve_miter, curve, VG_JOIN_MITER, VG_CAP_BUTT, false);
BENCHMARK_CAPTURE(stroke, curve_dashed, curve, VG_JOIN_MITER, VG_CAP_BUTT, true);

}  // namespace
}  // namespace vg
