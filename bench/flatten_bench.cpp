// Flattening of quadratics, cubics and arcs at the default tolerance, at three scales.

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "vg/engine.h"
#include "vg/geometry/tolerance.h"
#include "vg/path/flatten.h"
#include "vg/path/path.h"
#include "vg/vg.h"

namespace vg {
namespace {

constexpr int kCurves = 1000;

/// A path of random curves inside a box of 100 units.
void appendCurves(Path& path, VGubyte command) {
    std::mt19937 random(5);
    std::uniform_real_distribution<float> place(0.0F, 100.0F);
    const auto append = [&](VGubyte segment) {
        path.segments.push(segment);
        for (int i = 0; i < coordinatesOf(segment); ++i) {
            const float value = place(random);
            const auto* bytes = reinterpret_cast<const uint8_t*>(&value);
            for (size_t k = 0; k < sizeof value; ++k) path.data.push(bytes[k]);
            ++path.coordinateCount;
        }
    };
    append(VG_MOVE_TO);
    for (int i = 0; i < kCurves; ++i) append(command);
}

void flatten(benchmark::State& state, VGubyte command) {
    Path path;
    appendCurves(path, command);
    FlatteningTolerance tolerance;
    tolerance.set(drawTolerance(0.0249F, static_cast<float>(state.range(0)) / 100.0F, nullptr));
    Outline flattened;
    int64_t points = 0;
    for (auto _ : state) {
        if (!vg::flatten(path, tolerance, flattened)) state.SkipWithError("no memory");
        benchmark::DoNotOptimize(flattened.points.data());
        points += flattened.points.count();
    }
    state.SetItemsProcessed(state.iterations() * kCurves);
    state.counters["points/curve"] =
        static_cast<double>(points) / static_cast<double>(state.iterations() * kCurves);
}
BENCHMARK_CAPTURE(flatten, quadratics, VG_QUAD_TO)->Arg(64)->Arg(256)->Arg(1024);
BENCHMARK_CAPTURE(flatten, cubics, VG_CUBIC_TO)->Arg(64)->Arg(256)->Arg(1024);
BENCHMARK_CAPTURE(flatten, arcs, VG_SCCWARC_TO)->Arg(64)->Arg(256)->Arg(1024);

}  // namespace
}  // namespace vg
