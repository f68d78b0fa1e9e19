// Samplers, one format after the other, along a slanted line of an image that fits the cache.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "vg/raster/paint/image_sampler.h"
#include "vg/raster/pixels/pixel_format.h"
#include "vg/raster/pixels/pixel_io.h"

namespace vg::raster {
namespace {

constexpr int32_t kSide = 64;
constexpr int32_t kSamples = 1024;

std::vector<uint8_t> imageBytes() {
    std::vector<uint8_t> bytes(kSide * kSide * 4);
    for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<uint8_t>(i * 37);
    return bytes;
}

void sampling(benchmark::State& state, uint32_t format, bool isBilinear) {
    const std::vector<uint8_t> bytes = imageBytes();
    const int32_t stride = kSide * findPixelFormat(format)->bitsPerPixel / 8;
    const SampledImage image = {bytes.data(), stride,          kSide,          kSide,
                                format,       sideLog2(kSide), sideLog2(kSide)};
    SampleRequest request;
    request.image = &image;
    request.sourceIndex = pixelFormatIndex(format);
    request.workingIndex = pixelFormatIndex(0x42);
    request.tiling = TilingMode::kRepeat;
    request.isBilinear = isBilinear;
    const ImageSampler sampler = selectImageSampler(format);
    std::vector<uint32_t> pixels(kSamples);
    for (auto _ : state) {
        request.x = request.y = 0;
        for (uint32_t& pixel : pixels) {
            pixel = sampler(request);
            request.x += 0xE000;
            request.y += 0x1800;
        }
        benchmark::DoNotOptimize(pixels.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kSamples);
}

void conversion(benchmark::State& state, uint32_t from, uint32_t to) {
    const std::vector<uint8_t> source = imageBytes();
    std::vector<uint8_t> target(kSamples * 4);
    for (auto _ : state) {
        convertPixels(source.data(), 0, *findPixelFormat(from), target.data(), 0,
                      *findPixelFormat(to), kSamples);
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kSamples);
}

struct NamedFormat {
    const char* name;
    uint32_t code;
};
constexpr NamedFormat kFormats[] = {{"sRGBA_8888", 0x01}, {"sARGB_8888_PRE", 0x42},
                                    {"lBGRA_8888", 0x88}, {"sABGR_8888", 0xC1},
                                    {"sRGB_565", 0x03},   {"sARGB_1555", 0x44},
                                    {"sL_8", 0x06},       {"A_8", 0x0B},
                                    {"A_4", 0x0E},        {"BW_1", 0x0C}};

const bool kRegistered = [] {
    for (const NamedFormat& format : kFormats) {
        const std::string name = format.name;
        for (const bool isBilinear : {false, true}) {
            benchmark::RegisterBenchmark(
                ("image/sample_" + name + (isBilinear ? "_bilinear" : "")).c_str(), sampling,
                format.code, isBilinear);
        }
        benchmark::RegisterBenchmark(("image/convert_" + name).c_str(), conversion, format.code,
                                     0x42U);
    }
    return true;
}();

}  // namespace
}  // namespace vg::raster
