// What a kept document's later draws cost beside its first one, best quality, longer side 64, 256
// and 1024 pixels. The rows' own times mean nothing; the counters are geometric means over the
// documents, of the least of each one's times.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iterator>
#include <limits>

#include "fitted_size.h"
#include "quor/quor.h"
#include "sample_files.h"

namespace quor::bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kDraws = 5;  // the last one finds every band list there is

/// Seconds of one document.
struct Times {
    double load = std::numeric_limits<double>::infinity();
    double draws[kDraws];

    Times() { std::fill(std::begin(draws), std::end(draws), load); }
};

template <class Work>
void keepLeast(double& least, const Work& work) {
    const Clock::time_point start = Clock::now();
    work();
    least = std::min(least, std::chrono::duration<double>(Clock::now() - start).count());
}

/// False when the document is rejected.
bool loadAndDraw(const SampleFile& file, uint32_t surface, uint32_t longerSide, Times& times) {
    uint32_t document = 0;
    keepLeast(times.load, [&] { document = quorDocCreate(file.text.c_str()); });
    if (document == 0) return false;
    const Size size = fittedSize(document, longerSide);
    if (quorSurfaceWidth(surface) != size.width || quorSurfaceHeight(surface) != size.height) {
        quorSurfaceResize(surface, size.width, size.height);
    }
    for (double& draw : times.draws) {
        keepLeast(draw, [&] { quorDocDraw(document, surface, QUOR_RENDERING_QUALITY_BETTER); });
    }
    quorDocDestroy(document);
    return true;
}

/// In microseconds; documents that were rejected are left out.
template <class Value>
double geometricMean(const std::vector<Times>& all, const Value& value) {
    double sum = 0.0;
    int count = 0;
    for (const Times& times : all) {
        if (std::isinf(times.draws[0])) continue;
        sum += std::log(value(times) * 1e6);
        ++count;
    }
    return std::exp(sum / count);
}

void redraw(benchmark::State& state) {
    quorInit(1024, 1024, 96.0F);
    const uint32_t surface = quorSurfaceCreate(1, 1);
    std::vector<Times> all(sampleFiles().size());
    for (auto _ : state) {
        for (size_t i = 0; i < all.size(); ++i) {
            loadAndDraw(sampleFiles()[i], surface, static_cast<uint32_t>(state.range(0)), all[i]);
        }
    }
    quorDone();
    const auto report = [&](const char* name, const auto& value) {
        state.counters[name] = geometricMean(all, value);
    };
    report("1: load, us", [](const Times& times) { return times.load; });
    report("2: first, us", [](const Times& times) { return times.draws[0]; });
    report("3: second, us", [](const Times& times) { return times.draws[1]; });
    report("4: fifth, us", [](const Times& times) { return times.draws[kDraws - 1]; });
}
BENCHMARK(redraw)->Arg(64)->Arg(256)->Arg(1024)->Iterations(20)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quor::bench
