// Colour ramps, and the throughput of every gradient in every spread mode over long covered runs,
// beside a flat colour and memset.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "vg/raster/paint/color_ramp.h"
#include "vg/raster/paint_setup.h"
#include "vg/raster/span/span_function.h"

namespace vg::raster {
namespace {

constexpr int kSide = 1024;
constexpr int32_t kSource = 0x2000;
constexpr int32_t kSourceOver = 0x2001;

constexpr ColorStop kStops[] = {{0.0F, {0.1F, 0.2F, 0.9F, 1.0F}},
                                {0.3F, {0.9F, 0.5F, 0.1F, 0.8F}},
                                {0.7F, {0.2F, 0.9F, 0.4F, 0.6F}},
                                {1.0F, {0.9F, 0.9F, 0.9F, 0.9F}}};

ColorRamp buildRamp(const RampOptions& options) {
    ColorRamp ramp;
    if (!buildColorRamp(kStops, 4, options, ramp)) std::abort();
    return ramp;
}

void ramp(benchmark::State& state, const RampOptions& options) {
    for (auto _ : state) benchmark::DoNotOptimize(buildRamp(options));
    state.SetItemsProcessed(state.iterations() * ColorRamp::kSize);
}
constexpr float kHalfOpaque[8] = {1, 1, 1, 0.5F, 0, 0, 0, 0};
BENCHMARK_CAPTURE(ramp, linear, {});
BENCHMARK_CAPTURE(ramp, mirrored, {.isMirrored = true});
BENCHMARK_CAPTURE(ramp, transformed, {.colorTransform = kHalfOpaque});
BENCHMARK_CAPTURE(ramp, premultiplied, {.interpolatesPremultiplied = true});
BENCHMARK_CAPTURE(ramp, smooth, {.isSmooth = true});
BENCHMARK_CAPTURE(ramp, linear_space, {.isLinearSpace = true});

struct Surface {
    std::vector<uint32_t> pixels = std::vector<uint32_t>(kSide * kSide, 0xFF405060);
    PixelSurface view() { return {pixels.data(), kSide, kSide}; }
};

void setMemory(benchmark::State& state) {
    Surface surface;
    for (auto _ : state) {
        std::memset(surface.pixels.data(), 0x55, surface.pixels.size() * sizeof(uint32_t));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kSide * kSide);
}
BENCHMARK(setMemory)->Name("gradient/memset");

void paint(benchmark::State& state, const PaintParams& paintParams, int32_t blendMode) {
    static const ColorRamp kNormal = buildRamp({});
    static const ColorRamp kMirrored = buildRamp({.isMirrored = true});
    FillParams fill;
    fill.paint = paintParams;
    fill.blendMode = blendMode;
    PaintParams& params = fill.paint;
    const bool isReflected =
        params.gradient.spread == Spread::kReflect && params.kind != PaintKind::kConicalGradient;
    params.gradient.ramp = isReflected ? &kMirrored : &kNormal;
    Surface surface;
    SpanContext span;
    const SpanFunctions functions = setupPaint(fill, span);
    for (auto _ : state) {
        for (int y = 0; y < kSide; ++y) functions.run(surface.view(), span, y, 0, kSide);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kSide * kSide);
}

/// About three periods across the surface, aslant.
PaintParams gradientParams(PaintKind kind, Spread spread) {
    PaintParams params;
    params.kind = kind;
    params.gradient.spread = spread;
    params.gradient.geometry = {{{400, 500}, {600, 700}}, 300.0, 2.0};
    return params;
}

struct Kind {
    const char* name;
    PaintKind kind;
};

[[maybe_unused]] const bool kRegistered = [] {
    static const Kind kinds[] = {{"linear", PaintKind::kLinearGradient},
                                 {"radial", PaintKind::kRadialGradient},
                                 {"conical", PaintKind::kConicalGradient}};
    static const std::pair<const char*, Spread> spreads[] = {
        {"pad", Spread::kPad}, {"repeat", Spread::kRepeat}, {"reflect", Spread::kReflect}};
    static const std::pair<const char*, int32_t> modes[] = {{"source", kSource},
                                                            {"over", kSourceOver}};
    for (const auto& [modeName, mode] : modes) {
        PaintParams flat;
        flat.color[3] = 0.5F;
        const auto add = [mode = mode](const std::string& name, const PaintParams& params) {
            benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
                paint(state, params, mode);
            })->Unit(benchmark::kMicrosecond);
        };
        add(std::string("gradient/flat/") + modeName, flat);
        PaintParams centred = gradientParams(PaintKind::kRadialGradient, Spread::kPad);
        std::copy_n(centred.gradient.geometry.points[0], 2, centred.gradient.geometry.points[1]);
        add(std::string("gradient/centred/pad/") + modeName, centred);
        for (const Kind& kind : kinds) {
            for (const auto& [spreadName, spread] : spreads) {
                add(std::string("gradient/") + kind.name + '/' + spreadName + '/' + modeName,
                    gradientParams(kind.kind, spread));
            }
        }
    }
    return true;
}();

}  // namespace
}  // namespace vg::raster
