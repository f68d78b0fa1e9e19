// The sweep with its composite: few large edges, many small ones, noise; every quality.

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "vg/raster/kernels/kernels.h"
#include "vg/raster/rasterizer.h"

namespace vg::raster {
namespace {

constexpr int kSide = 1024;

struct Scene {
    std::vector<Point> points;
    std::vector<int32_t> sizes;
};

/// One triangle over the whole surface.
Scene largeTriangle() { return {{{3.3F, 5.1F}, {1020.7F, 200.2F}, {400.4F, 1019.6F}}, {3}}; }

/// 2,000 small discs of 16 edges.
Scene manyDiscs() {
    std::mt19937 random(1);
    std::uniform_real_distribution<float> place(10.0F, 1014.0F);
    std::uniform_real_distribution<float> size(2.0F, 9.0F);
    Scene scene;
    for (int disc = 0; disc < 2000; ++disc) {
        const float cx = place(random), cy = place(random), r = size(random);
        for (int i = 0; i < 16; ++i) {
            const float angle = static_cast<float>(i) * 0.39269908F;
            scene.points.push_back({cx + r * std::cos(angle), cy + r * std::sin(angle)});
        }
        scene.sizes.push_back(16);
    }
    return scene;
}

/// One disc of 16 edges, 11 pixels across: what a draw costs before there are pixels.
Scene smallDisc() {
    Scene scene = {{}, {16}};
    for (int i = 0; i < 16; ++i) {
        const float angle = static_cast<float>(i) * 0.39269908F;
        scene.points.push_back({300.3F + 5.5F * std::cos(angle), 300.6F + 5.5F * std::sin(angle)});
    }
    return scene;
}

/// One contour of random points.
Scene noise(int count, float side) {
    std::mt19937 random(2);
    std::uniform_real_distribution<float> place(0.0F, side);
    Scene scene;
    for (int i = 0; i < count; ++i) scene.points.push_back({place(random), place(random)});
    scene.sizes = {count};
    return scene;
}

/// A rectangle that is not aligned to pixels.
Scene rectangle() {
    return {{{0.5F, 0.5F}, {1023.5F, 0.5F}, {1023.5F, 1023.5F}, {0.5F, 1023.5F}}, {4}};
}

/// A rectangle along pixel borders.
Scene alignedRectangle() { return {{{0, 0}, {1024, 0}, {1024, 1024}, {0, 1024}}, {4}}; }

struct Variant {
    const char* name;
    Quality quality;
    float alpha;
    KernelLevel level = bestKernelLevel();
};

void sweep(benchmark::State& state, const Scene& scene, const Variant& variant) {
    useKernelLevel(variant.level);
    std::vector<uint32_t> pixels(kSide * kSide, 0xFF203040);
    FillParams params;
    params.polygon = {scene.points.data(), static_cast<int32_t>(scene.points.size()),
                      scene.sizes.data(), static_cast<int32_t>(scene.sizes.size())};
    params.quality = variant.quality;
    params.surface = {pixels.data(), kSide, kSide};
    params.clip = {0, 0, kSide, kSide};
    params.paint.color[0] = 0.8F;
    params.paint.color[3] = variant.alpha;
    Rasterizer rasterizer;
    for (auto _ : state) benchmark::DoNotOptimize(rasterizer.fill(params));
    useKernelLevel(bestKernelLevel());
    state.counters["edges"] = static_cast<double>(scene.points.size());
}

[[maybe_unused]] const bool kRegistered = [] {
    static const std::pair<const char*, Scene> scenes[] = {
        {"large_triangle", largeTriangle()},
        {"many_discs", manyDiscs()},
        {"small_disc", smallDisc()},
        {"noise_800", noise(800, 1024)},
        {"noise_20000_at_256", noise(20000, 256)},
        {"rectangle", rectangle()},
        {"aligned_rectangle", alignedRectangle()},
    };
    static const Variant variants[] = {
        {"best", Quality::kBetter, 1.0F},
        {"faster", Quality::kFaster, 1.0F},
        {"none", Quality::kNonAntialiased, 1.0F},
        {"best_translucent", Quality::kBetter, 0.5F},
        {"best_portable", Quality::kBetter, 1.0F, KernelLevel::kPortable},
    };
    for (const auto& [sceneName, scene] : scenes) {
        for (const Variant& variant : variants) {
            const std::string name = std::string("sweep/") + sceneName + '/' + variant.name;
            benchmark::RegisterBenchmark(name.c_str(), [&scene = scene,
                                                        &variant](benchmark::State& state) {
                sweep(state, scene, variant);
            })->Unit(benchmark::kMicrosecond);
        }
    }
    return true;
}();

}  // namespace
}  // namespace vg::raster
