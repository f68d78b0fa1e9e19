// Rectangles of one value, aligned and not, beside memset of the same rows.

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

#include "vg/raster/clear_rect.h"

namespace vg::raster {
namespace {

constexpr int kSide = 1024;

void fillByClear(const PixelSurface& surface, const PixelRect& rect) {
    clearRect(surface, rect, 0x55555555);
}

void fillByMemset(const PixelSurface& surface, const PixelRect& rect) {
    const size_t width = static_cast<size_t>(rect.x1 - rect.x0);
    const auto height = static_cast<size_t>(rect.y1 - rect.y0);
    if (width == kSide) {
        std::memset(surface.row(rect.y1 - 1), 0x55, width * height * sizeof(uint32_t));
        return;
    }
    for (int32_t y = rect.y0; y < rect.y1; ++y) {
        std::memset(surface.row(y) + rect.x0, 0x55, width * sizeof(uint32_t));
    }
}

void fill(benchmark::State& state, void (*function)(const PixelSurface&, const PixelRect&),
          const PixelRect& rect) {
    std::vector<uint32_t> pixels(size_t{kSide} * kSide, 0xFF405060);
    const PixelSurface surface = {pixels.data(), kSide, kSide};
    for (auto _ : state) {
        function(surface, rect);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * (rect.x1 - rect.x0) * (rect.y1 - rect.y0));
}

[[maybe_unused]] const bool kRegistered = [] {
    struct Case {
        const char* name;
        PixelRect rect;
    };
    constexpr Case kCases[] = {
        {"whole_surface", {0, 0, kSide, kSide}},
        {"all_but_borders", {1, 1, kSide - 1, kSide - 1}},
        {"103_columns", {3, 0, 106, 64}},
        {"13_columns", {3, 0, 16, 64}},
    };
    for (const auto& [name, rect] : kCases) {
        const std::string prefix = std::string("clear/") + name;
        benchmark::RegisterBenchmark((prefix + "/memset").c_str(), fill, fillByMemset, rect);
        benchmark::RegisterBenchmark(prefix.c_str(), fill, fillByClear, rect);
    }
    return true;
}();

}  // namespace
}  // namespace vg::raster
