// A thousand repeated symbols, with band lists and without (maxima of 0 in the configuration).

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "vg/raster/band_cache.h"

namespace vg::raster {
namespace {

constexpr int kSide = 1024;
constexpr int kSymbols = 1000;

/// A polygon around (0.5, 0.5), within the unit square.
struct Symbol {
    const char* name;
    int32_t edges;
    int32_t teeth;  ///< 0: a disc
    bool hasHole;

    std::vector<Point> contour(float radius) const {
        std::vector<Point> points;
        for (int32_t i = 0; i < edges; ++i) {
            const float angle = static_cast<float>(i) * 6.2831853F / static_cast<float>(edges);
            const float wave =
                teeth == 0 ? 1.0F : 0.8F + 0.2F * std::sin(angle * static_cast<float>(teeth));
            points.push_back(
                {0.5F + radius * wave * std::cos(angle), 0.5F + radius * wave * std::sin(angle)});
        }
        return points;
    }
};

constexpr Symbol kDiamond = {"diamond", 4, 0, false};
constexpr Symbol kDisc = {"disc", 24, 0, false};
constexpr Symbol kRing = {"ring", 24, 0, true};
constexpr Symbol kGear = {"gear", 96, 12, true};

std::vector<Point> polygonOf(const Symbol& symbol) {
    std::vector<Point> points = symbol.contour(0.5F);
    if (symbol.hasHole) {
        const std::vector<Point> hole = symbol.contour(0.3F);
        points.insert(points.end(), hole.begin(), hole.end());
    }
    return points;
}

/// Where the symbols go: across by whole pixels or by 1/32, up and down by whole pixels.
std::vector<Point> placesOf(bool isFractional) {
    std::mt19937 random(1);
    std::uniform_int_distribution<int> place(0, kSide - 130);
    std::uniform_int_distribution<int> fraction(0, isFractional ? 31 : 0);
    std::vector<Point> places;
    for (int i = 0; i < kSymbols; ++i) {
        const float x =
            static_cast<float>(place(random)) + 0.03125F * static_cast<float>(fraction(random));
        places.push_back({x, static_cast<float>(place(random))});
    }
    return places;
}

struct Variant {
    const char* name;
    bool isCached;
    bool isFractional;
};

constexpr Variant kVariants[] = {
    {"sweep", false, false}, {"whole-pixels", true, false}, {"fractions", true, true}};

void replay(benchmark::State& state, const Symbol& symbol, Quality quality,
            const Variant& variant) {
    const auto size = static_cast<float>(state.range(0));
    const std::vector<Point> points = polygonOf(symbol);
    const int32_t sizes[2] = {symbol.edges, symbol.edges};
    std::vector<uint32_t> pixels(kSide * kSide, 0xFF203040);
    FillParams params;
    params.polygon = {points.data(), static_cast<int32_t>(points.size()), sizes,
                      symbol.hasHole ? 2 : 1};
    params.quality = quality;
    params.surface = {pixels.data(), kSide, kSide};
    params.clip = {0, 0, kSide, kSide};
    params.paint.color[0] = 0.8F;
    params.userToSurface = {size, 0, 0, 0, size, 0};
    const BandCacheRules rules = {variant.isCached ? 128 : 0, 128, false};
    const std::vector<Point> places = placesOf(variant.isFractional);
    Rasterizer rasterizer;
    BandCache cache;
    for (auto _ : state) {
        for (const Point& place : places) {
            params.userToSurface.m02 = place.x;
            params.userToSurface.m12 = place.y;
            benchmark::DoNotOptimize(cache.draw(rasterizer, params, 1, rules));
        }
    }
    if (variant.isCached && cache.list() == nullptr) state.SkipWithError("no list was recorded");
}

[[maybe_unused]] const bool kRegistered = [] {
    static const std::pair<const char*, Quality> qualities[] = {{"best", Quality::kBetter},
                                                                {"faster", Quality::kFaster},
                                                                {"none", Quality::kNonAntialiased}};
    for (const Symbol& symbol : {kDiamond, kDisc, kRing, kGear}) {
        for (const auto& [qualityName, quality] : qualities) {
            for (const Variant& variant : kVariants) {
                const std::string name =
                    std::string("replay/") + symbol.name + '/' + qualityName + '/' + variant.name;
                benchmark::RegisterBenchmark(
                    name.c_str(),
                    [=, quality = quality, &variant](benchmark::State& state) {
                        replay(state, symbol, quality, variant);
                    })
                    ->Arg(8)
                    ->Arg(32)
                    ->Arg(128)
                    ->Unit(benchmark::kMicrosecond);
            }
        }
    }
    return true;
}();

}  // namespace
}  // namespace vg::raster
