// Every blend operator alone, on rows of varied pixels.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "vg/raster/blend_modes.h"
#include "vg/raster/pixel_io.h"

namespace vg::raster {
namespace {

constexpr size_t kWidth = 1024;

std::vector<uint32_t> variedPixels(uint32_t seed) {
    std::vector<uint32_t> pixels(kWidth);
    for (uint32_t& pixel : pixels) {
        seed = seed * 1664525 + 1013904223;
        pixel = premultiply(seed);
    }
    return pixels;
}

template <class Mode>
void blend(benchmark::State& state) {
    const std::vector<uint32_t> s = variedPixels(1);
    const std::vector<uint32_t> d = variedPixels(2);
    std::vector<uint32_t> result(kWidth);
    for (auto _ : state) {
        for (size_t x = 0; x < kWidth; ++x) result[x] = Mode::apply(s[x], d[x]);
        benchmark::DoNotOptimize(result.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kWidth));
}

template <class... Modes>
bool registerAll(BlendList<Modes...>) {
    int column = 0;
    const auto add = [&]<class Mode>(Mode) {
        const std::string number = (column < 10 ? "0" : "") + std::to_string(column);
        ++column;
        if constexpr (requires { Mode::apply(0U, 0U); }) {
            benchmark::RegisterBenchmark(("blend/column_" + number).c_str(), blend<Mode>);
        }
    };
    (add(Modes{}), ...);
    return true;
}

const bool kRegistered = registerAll(BlendColumns{});

}  // namespace
}  // namespace vg::raster
