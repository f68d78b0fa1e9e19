// Whole spans in every blend mode: a flat colour and a linear gradient, without and with a mask, on
// wholly covered rows of a surface that stays in the cache; beside memset and memcpy of its memory,
// and a plain loop for source over.

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

#include "vg/raster/paint/color_ramp.h"
#include "vg/raster/paint_setup.h"
#include "vg/raster/pixels/blend_modes.h"
#include "vg/raster/pixels/pixel_io.h"

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

#if defined(__x86_64__)
/// What a compiler makes of the plain formula of source over, with the same instructions as the
/// best kernels.
[[gnu::target("avx2")]] void overPlainly(uint32_t* pixels, size_t count, uint32_t color) {
    const uint32_t rest = 255 - (color >> 24);
    for (size_t i = 0; i < count; ++i) {
        const uint32_t low = (pixels[i] & 0x00FF00FF) * rest + 0x00800080;
        const uint32_t high = (pixels[i] >> 8 & 0x00FF00FF) * rest + 0x00800080;
        const uint32_t scaledLow = (low + (low >> 8 & 0x00FF00FF)) >> 8 & 0x00FF00FF;
        const uint32_t scaledHigh = (high + (high >> 8 & 0x00FF00FF)) & 0xFF00FF00;
        pixels[i] = color + (scaledLow | scaledHigh);
    }
}

void plainLoop(benchmark::State& state) {
    std::vector<uint32_t> pixels = variedPixels();
    for (auto _ : state) {
        overPlainly(pixels.data(), kPixels, 0xB3000059);
        benchmark::ClobberMemory();
    }
    countPixels(state);
}
[[maybe_unused]] const bool kHasPlainLoop = [] {
    if (__builtin_cpu_supports("avx2")) {
        benchmark::RegisterBenchmark("blend/plain_source_over_loop", plainLoop);
    }
    return true;
}();
#endif

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

[[maybe_unused]] const bool kRegistered = [] {
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
