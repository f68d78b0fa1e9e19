// Whole spans in every blend mode: a flat colour and a linear gradient, without and with a mask, on
// wholly covered rows of a surface that stays in the cache; beside memset and memcpy of its memory.

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

#include "vg/raster/blend_modes.h"
#include "vg/raster/paint_setup.h"
#include "vg/raster/pixel_io.h"

namespace vg::raster {
namespace {

constexpr int kWidth = 1024;
constexpr int kHeight = 64;
constexpr size_t kPixels = size_t{kWidth} * kHeight;

std::vector<uint32_t> variedPixels() {
    std::vector<uint32_t> pixels(kPixels);
    uint32_t seed = 1;
    for (uint32_t& pixel : pixels) {
        seed = seed * 1664525 + 1013904223;
        pixel = premultiply(seed);
    }
    return pixels;
}

void countPixels(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kPixels));
}

void setMemory(benchmark::State& state) {
    std::vector<uint32_t> pixels = variedPixels();
    for (auto _ : state) {
        std::memset(pixels.data(), 0x55, kPixels * sizeof(uint32_t));
        benchmark::ClobberMemory();
    }
    countPixels(state);
}
BENCHMARK(setMemory)->Name("blend/memset");

void copyMemory(benchmark::State& state) {
    const std::vector<uint32_t> from = variedPixels();
    std::vector<uint32_t> to(kPixels);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), kPixels * sizeof(uint32_t));
        benchmark::ClobberMemory();
    }
    countPixels(state);
}
BENCHMARK(copyMemory)->Name("blend/memcpy");

void blendRows(benchmark::State& state, PaintKind paint, int32_t mode, bool isMasked) {
    const ColorStop stops[] = {{0.0F, {0.1F, 0.2F, 0.9F, 0.9F}}, {1.0F, {0.9F, 0.5F, 0.1F, 0.4F}}};
    ColorRamp ramp;
    if (!buildColorRamp(stops, 2, {}, ramp)) return state.SkipWithError("out of memory");
    std::vector<uint32_t> pixels = variedPixels();
    std::vector<uint8_t> mask(kPixels);
    for (size_t i = 0; i < kPixels; ++i) mask[i] = static_cast<uint8_t>(i * 7);
    FillParams fill;
    fill.surface = {pixels.data(), kWidth, kHeight};
    fill.blendMode = mode;
    fill.mask = isMasked ? mask.data() : nullptr;
    fill.paint.kind = paint;
    fill.paint.color[2] = 0.5F;
    fill.paint.color[3] = 0.7F;
    fill.paint.gradient.geometry.points[1][0] = kWidth;
    fill.paint.gradient.ramp = &ramp;
    SpanContext span;
    const SpanFunctions functions = setupPaint(fill, span);
    for (auto _ : state) {
        for (int y = 0; y < kHeight; ++y) functions.run(fill.surface, span, y, 0, kWidth);
        benchmark::ClobberMemory();
    }
    countPixels(state);
}

const bool kRegistered = [] {
    constexpr std::pair<const char*, PaintKind> kPaints[] = {
        {"flat", PaintKind::kColor}, {"linear", PaintKind::kLinearGradient}};
    for (int32_t mode = 0x2000; mode <= 0x209D; ++mode) {
        const int32_t column = blendColumnOf(mode);
        if (column == kNoBlendColumn || mode == kBlendClear) continue;
        const std::string number = (column < 10 ? "0" : "") + std::to_string(column);
        for (const auto& [name, paint] : kPaints) {
            for (const bool isMasked : {false, true}) {
                benchmark::RegisterBenchmark(
                    ("blend/column_" + number + '/' + name + (isMasked ? "/masked" : "")).c_str(),
                    blendRows, paint, mode, isMasked);
            }
        }
    }
    return true;
}();

}  // namespace
}  // namespace vg::raster
