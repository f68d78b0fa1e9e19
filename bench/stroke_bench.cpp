// Stroking and dashing, in points of the path a second; the outline alone, not its pixels.

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

#include "vg/flattened_path.h"
#include "vg/stroker.h"

namespace vg {
namespace {

constexpr int kPoints = 10000;

void finish(FlattenedPath& path) {
    path.contourSizes.push(path.points.count());
    path.contourFlags.push(0);
}

/// Corners of up to a quarter turn, edges of 4 to 12 units.
FlattenedPath polyline() {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> turn(-1.5F, 1.5F);
    std::uniform_real_distribution<float> length(4.0F, 12.0F);
    FlattenedPath path;
    float x = 0.0F, y = 0.0F;
    for (int i = 0; i < kPoints; ++i) {
        path.points.push({x, y});
        path.pointFlags.push(0);
        const float angle = turn(random);
        const float step = length(random);
        x += step * std::cos(angle);
        y += step * std::sin(angle);
    }
    finish(path);
    return path;
}

/// One long flattened spiral.
FlattenedPath curve() {
    FlattenedPath path;
    for (int i = 0; i < kPoints; ++i) {
        const float angle = 0.05F * static_cast<float>(i);
        const float radius = 20.0F + angle;
        path.points.push({radius * std::cos(angle), radius * std::sin(angle)});
        path.pointFlags.push(FlattenedPath::kInsideCurve);
    }
    finish(path);
    return path;
}

void stroke(benchmark::State& state, const FlattenedPath& path, VGint join, VGint cap,
            bool isDashed) {
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
    StrokeOutline outline;
    for (auto _ : state) benchmark::DoNotOptimize(stroker.stroke(path, params, outline));
    state.SetItemsProcessed(state.iterations() * path.points.count());
    state.counters["outline points"] = outline.points.count();
}

BENCHMARK_CAPTURE(stroke, polyline_miter, polyline(), VG_JOIN_MITER, VG_CAP_BUTT, false);
BENCHMARK_CAPTURE(stroke, polyline_round, polyline(), VG_JOIN_ROUND, VG_CAP_ROUND, false);
BENCHMARK_CAPTURE(stroke, polyline_dashed, polyline(), VG_JOIN_MITER, VG_CAP_BUTT, true);
BENCHMARK_CAPTURE(stroke, polyline_round_dashes, polyline(), VG_JOIN_ROUND, VG_CAP_ROUND, true);
BENCHMARK_CAPTURE(stroke, curve_miter, curve(), VG_JOIN_MITER, VG_CAP_BUTT, false);
BENCHMARK_CAPTURE(stroke, curve_dashed, curve(), VG_JOIN_MITER, VG_CAP_BUTT, true);

}  // namespace
}  // namespace vg
