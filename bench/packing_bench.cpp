// Packing plain rectangles: all three heuristics, as one quorPackingEnd does. Sides between 4 and
// 256 pixels, small ones as frequent as large ones; bins of 2048.

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

#include "api/packing/bin_packer.h"

namespace quor::packing {
namespace {

std::vector<Size> logUniformSizes(int count) {
    std::mt19937 random(1);
    const auto side = [&] {
        return static_cast<int>(std::exp2(2.0 + 6.0 * static_cast<double>(random()) / 0x1p32));
    };
    std::vector<Size> sizes;
    for (int i = 0; i < count; ++i) {
        const int width = side();
        sizes.push_back({width, side()});
    }
    return sizes;
}

void pack(benchmark::State& state, const std::vector<Size>& sizes, bool isPowerOfTwo) {
    const BinRules rules = {2048, 1, isPowerOfTwo};
    BinPacker packers[kHeuristicCount];
    const BinPacker* best = packers;
    for (auto _ : state) {
        for (int i = 0; i < kHeuristicCount; ++i) {
            const bool isDone = packers[i].pack(sizes.data(), static_cast<int>(sizes.size()), rules,
                                                static_cast<Heuristic>(i));
            if (!isDone) state.SkipWithError("out of memory");
        }
        best = packers;
        for (const BinPacker& packer : packers) {
            if (packer.isBetterThan(*best)) best = &packer;
        }
    }
    int64_t used = 0;
    int64_t all = 0;
    for (const Size& size : sizes) used += rules.footprint(size).area();
    for (const Size& bin : best->bins()) all += rules.freeArea(bin).area();
    state.counters["bins"] = best->bins().count();
    state.counters["percent"] = 100.0 * static_cast<double>(used) / static_cast<double>(all);
}

void packLogUniform(benchmark::State& state) {
    pack(state, logUniformSizes(static_cast<int>(state.range(0))), state.range(1) != 0);
}
BENCHMARK(packLogUniform)
    ->Name("packing/log_uniform")
    ->ArgsProduct({{100, 1000, 10000}, {0, 1}})
    ->ArgNames({"rectangles", "pow2"})
    ->Unit(benchmark::kMillisecond);

void packEqual(benchmark::State& state) {
    pack(state, std::vector<Size>(static_cast<size_t>(state.range(0)), Size{63, 47}), false);
}
BENCHMARK(packEqual)
    ->Name("packing/equal")
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->ArgName("rectangles")
    ->Unit(benchmark::kMillisecond);

/// Bins that hold few each: what grows with bins times rectangles shows here.
void packFewEach(benchmark::State& state) {
    std::mt19937 random(1);
    const auto side = [&] { return 1100 + static_cast<int>(random() % 901); };
    std::vector<Size> sizes(static_cast<size_t>(state.range(0)));
    for (Size& size : sizes) size = {side(), side()};
    pack(state, sizes, false);
}
BENCHMARK(packFewEach)
    ->Name("packing/one_a_bin")
    ->Arg(5000)
    ->Arg(20000)
    ->ArgName("rectangles")
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quor::packing
