// Colour spans: long full runs, all partial coverage, beside a plain fill of the same memory.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <vector>

#include "vg/raster/coverage/coverage_ring.h"
#include "vg/raster/span/span_selection.h"

namespace vg::raster {
namespace {

constexpr int kWidth = 1024;
constexpr int32_t kSource = 0x2000;
constexpr int32_t kSourceOver = 0x2001;

void fillMemory(benchmark::State& state) {
    std::vector<uint32_t> pixels(kWidth);
    for (auto _ : state) {
        std::fill(pixels.begin(), pixels.end(), 0xFF102030);
        benchmark::DoNotOptimize(pixels.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kWidth);
}
BENCHMARK(fillMemory)->Name("span/plain_fill");

/// A change of coverage every `step` columns; 1024 makes one full run.
void span(benchmark::State& state, int32_t mode, uint32_t color, int step) {
    std::vector<uint32_t> pixels(kWidth, 0xFF405060);
    std::vector<uint32_t> changes(kWidth + 1, 0);
    uint32_t sum = 0;
    for (int x = 0; x < kWidth; x += step) {
        const uint32_t next =
            step == kWidth ? kFullCoverage : kFullCoverage / 64 * static_cast<uint32_t>(x % 61 + 1);
        changes[static_cast<size_t>(x)] = next - sum;
        sum = next;
    }
    changes[kWidth] = 0U - sum;
    CoverageRing ring;
    if (!ring.reserve(kWidth)) return state.SkipWithError("out of memory");
    const RowCells row = {ring.row(0), ring.groupCount(), 0};
    const SpanFunctions functions = selectSpanFunctions(mode, color);
    SpanContext context;
    context.color = color;
    for (auto _ : state) {
        std::copy(changes.begin(), changes.end(), row.view.cells);
        for (int x = 0; x <= kWidth; x += step) row.view.touched[x / kGroupCells] = 1;
        functions.span({pixels.data(), kWidth, 1}, context, 0, row);
        benchmark::DoNotOptimize(pixels.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kWidth);
}
BENCHMARK_CAPTURE(span, source_full_run, kSource, 0xFF102030, kWidth);
BENCHMARK_CAPTURE(span, source_every_pixel, kSource, 0xFF102030, 1);
BENCHMARK_CAPTURE(span, source_every_8th, kSource, 0xFF102030, 8);
BENCHMARK_CAPTURE(span, over_full_run, kSourceOver, 0x80102030, kWidth);
BENCHMARK_CAPTURE(span, over_every_pixel, kSourceOver, 0x80102030, 1);
BENCHMARK_CAPTURE(span, over_every_8th, kSourceOver, 0x80102030, 8);

}  // namespace
}  // namespace vg::raster
