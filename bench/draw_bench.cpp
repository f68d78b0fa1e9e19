// Whole draws of kept documents at best quality, longer side 64, 256 and 1024 pixels.

#include <benchmark/benchmark.h>

#include "fitted_size.h"
#include "quor/quor.h"
#include "sample_files.h"

namespace quor::bench {
namespace {

void drawSample(benchmark::State& state, const SampleFile& file) {
    quorInit(1024, 1024, 96.0F);
    const uint32_t document = quorDocCreate(file.text.c_str());
    const Size size = fittedSize(document, static_cast<uint32_t>(state.range(0)));
    const uint32_t surface = quorSurfaceCreate(size.width, size.height);
    for (auto _ : state) {
        if (quorDocDraw(document, surface, 2) != 0) state.SkipWithError("the draw failed");
        benchmark::DoNotOptimize(quorSurfacePixels(surface));
    }
    state.counters["pixels/s"] = benchmark::Counter(static_cast<double>(size.width) * size.height,
                                                    benchmark::Counter::kIsIterationInvariantRate);
    quorDone();
}

[[maybe_unused]] const bool kRegistered = [] {
    for (const SampleFile& file : sampleFiles()) {
        benchmark::RegisterBenchmark(("draw/" + file.name).c_str(),
                                     [&file](benchmark::State& state) { drawSample(state, file); })
            ->Arg(64)
            ->Arg(256)
            ->Arg(1024)
            ->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

}  // namespace
}  // namespace quor::bench
