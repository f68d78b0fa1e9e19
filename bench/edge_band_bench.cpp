// The unit of the sweep's work: one edge in one band. A drawing of 300 paths, without and with the
// composite of its pixels.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include "vg/raster/geometry/to_fixed.h"
#include "vg/raster/span/span_selection.h"
#include "vg/raster/sweep/chain_sweep.h"
#include "vg/raster/sweep/sweep_lines.h"

namespace vg::raster {
namespace {

constexpr int kSide = 1024;

/// Blobs with wavy outlines of 24 to 120 edges, 40 to 400 pixels across.
std::vector<FixedPolygon> drawing() {
    std::mt19937 random(3);
    const auto uniform = [&](float low, float high) {
        return std::uniform_real_distribution<float>(low, high)(random);
    };
    FixedTransform transform;
    std::vector<FixedPolygon> paths(300);
    for (FixedPolygon& path : paths) {
        const float cx = uniform(0, kSide), cy = uniform(0, kSide), radius = uniform(20, 200);
        const auto count = static_cast<int32_t>(uniform(24, 120));
        const float waves = std::floor(uniform(2, 9));
        std::vector<Point> points;
        for (int32_t i = 0; i < count; ++i) {
            const float angle = 6.2831853F * static_cast<float>(i) / static_cast<float>(count);
            const float r = radius * (1.0F + 0.3F * std::sin(angle * waves));
            points.push_back({cx + r * std::cos(angle), cy + r * std::sin(angle)});
        }
        if (!transform.run({points.data(), count, &count, 1}, {}, {0, 0, kSide, kSide}, path)) {
            std::abort();
        }
    }
    return paths;
}

/// How many bands the path's edges cross in all.
int64_t edgeBands(const FixedPolygon& path) {
    SweepLines lines;
    if (!lines.collectVertexHeights(path)) std::abort();
    int64_t total = 0;
    const int32_t count = path.points.count();  // one contour
    for (int32_t i = 0; i < count; ++i) {
        const int32_t from = lines.indexAtOrBelow(path.points[i].y);
        const int32_t to = lines.indexAtOrBelow(path.points[(i + 1) % count].y);
        total += std::abs(from - to);
    }
    return total;
}

/// Leaves the row zero without a look at it: finding what was touched is the composite's work.
void dropRow(const PixelSurface& /*surface*/, const SpanContext& /*span*/, int32_t /*y*/,
             const RowCells& row) noexcept {
    const auto groups = static_cast<size_t>(row.groupCount);
    std::memset(row.view.cells, 0, groups * kGroupCells * sizeof *row.view.cells);
    std::memset(row.view.touched, 0, groups);
}

void sweepDrawing(benchmark::State& state, bool composites) {
    const std::vector<FixedPolygon> paths = drawing();
    int64_t total = 0;
    for (const FixedPolygon& path : paths) total += edgeBands(path);
    std::vector<uint32_t> pixels(size_t{kSide} * kSide);
    SweepTarget target;
    target.surface = {pixels.data(), kSide, kSide};
    target.span.color = 0xFF204060;
    const SpanFunctions functions = selectSpanFunctions(0x2000, target.span.color);
    target.function = composites ? functions.span : &dropRow;
    target.flat = composites ? functions.flat : FlatBlend::kNone;
    ChainSweep sweep;
    for (auto _ : state) {
        for (const FixedPolygon& path : paths) {
            benchmark::DoNotOptimize(sweep.run(path, FillRule::kNonZero, Quality::kBetter, target));
        }
    }
    state.counters["time/edge x band"] = benchmark::Counter(
        static_cast<double>(total),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK_CAPTURE(sweepDrawing, alone, false)
    ->Name("edge_band/sweep")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(sweepDrawing, composited, true)
    ->Name("edge_band/sweep_and_composite")
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vg::raster
