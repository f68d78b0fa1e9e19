// The span kernels of every vector level beside their definitions, pixel by pixel.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numeric>
#include <random>
#include <vector>

#include "vg/raster/kernels/gradient_runs.h"
#include "vg/raster/kernels/kernels.h"
#include "vg/raster/paint/color_ramp.h"

namespace vg::raster {
namespace {

constexpr int32_t kCounts[] = {0, 1, 2, 3, 4, 5, 7, 8, 9, 15, 16, 17, 31, 33, 63, 64};
constexpr Spread kSpreads[] = {Spread::kPad, Spread::kRepeat, Spread::kReflect};

/// Entry i is i, so that a pixel tells its entry.
const std::vector<uint32_t>& countingRamp() {
    static const std::vector<uint32_t> ramp = [] {
        std::vector<uint32_t> entries(ColorRamp::kSize);
        std::iota(entries.begin(), entries.end(), 0U);
        return entries;
    }();
    return ramp;
}

/// The entry of a parameter whose 1.0 is 2^bits; reflected ramps hold both ways.
uint32_t entryOf(int64_t parameter, Spread spread, int bits) {
    const int64_t one = int64_t{1} << bits;
    if (spread == Spread::kPad) parameter = std::clamp<int64_t>(parameter, 0, one - 1);
    if (spread == Spread::kReflect) parameter >>= 1;
    return static_cast<uint32_t>((parameter & (one - 1)) >> (bits - 10));
}

class KernelLevels : public ::testing::TestWithParam<KernelLevel> {
protected:
    void SetUp() override {
        if (!useKernelLevel(GetParam())) GTEST_SKIP() << "not on this processor";
    }
    void TearDown() override { (void)useKernelLevel(bestKernelLevel()); }

    uint32_t word() { return static_cast<uint32_t>(random_()); }
    uint32_t premultipliedPixel() {
        const uint32_t alpha = word() % 3 == 0 ? 255 : word() % 256;
        uint32_t pixel = alpha << 24;
        for (const int shift : {0, 8, 16}) pixel |= word() % (alpha + 1) << shift;
        return pixel;
    }
    std::vector<uint32_t> pixels(int32_t count) {
        std::vector<uint32_t> result(static_cast<size_t>(count) + 1);  // one behind stays as it is
        for (uint32_t& pixel : result) pixel = premultipliedPixel();
        return result;
    }

    std::mt19937 random_{7};
};

INSTANTIATE_TEST_SUITE_P(All, KernelLevels, ::testing::ValuesIn(kKernelLevels),
                         [](const auto& level) { return nameOf(level.param); });

uint32_t overPixel(uint32_t s, uint32_t d) {
    uint32_t result = 0;
    for (const int shift : {0, 8, 16, 24}) {
        const uint32_t x = (d >> shift & 0xFF) * (255 - (s >> 24)) + 0x80;
        result |= ((s >> shift & 0xFF) + ((x + (x >> 8)) >> 8)) << shift;
    }
    return result;
}

TEST_P(KernelLevels, PixelsAndColoursOverPixels) {
    for (const int32_t count : kCounts) {
        const std::vector<uint32_t> s = pixels(count), d = pixels(count);
        std::vector<uint32_t> over = d, colored = d, set = d;
        kernels().sourceOver(s.data(), over.data(), count);
        kernels().runSourceOver(colored.data(), count, s[0]);
        kernels().runSource(set.data(), count, s[0]);
        for (size_t i = 0; i < s.size(); ++i) {
            const bool isInside = i < static_cast<size_t>(count);
            EXPECT_EQ(over[i], isInside ? overPixel(s[i], d[i]) : d[i]) << i << " of " << count;
            EXPECT_EQ(colored[i], isInside ? overPixel(s[0], d[i]) : d[i]) << i << " of " << count;
            EXPECT_EQ(set[i], isInside ? s[0] : d[i]) << i << " of " << count;
        }
    }
}

/// d + ((s - d) coverage >> 8) in every channel.
uint32_t mixedPixel(uint32_t s, uint32_t d, uint32_t coverage) {
    uint32_t result = 0;
    for (const int shift : {0, 8, 16, 24}) {
        const auto from = static_cast<int32_t>(d >> shift & 0xFF);
        const auto to = static_cast<int32_t>(s >> shift & 0xFF);
        const int32_t mixed = from + ((to - from) * static_cast<int32_t>(coverage) >> 8);
        result |= static_cast<uint32_t>(mixed) << shift;
    }
    return result;
}

TEST_P(KernelLevels, PixelsMixedByCoverage) {
    for (const int32_t count : kCounts) {
        const std::vector<uint32_t> s = pixels(count), d = pixels(count);
        std::vector<uint32_t> coverage(s.size());
        for (uint32_t& c : coverage) c = word() % 4 == 0 ? 256 : word() % 257;
        std::vector<uint32_t> source = d, over = d;
        kernels().mixSource(s.data(), coverage.data(), source.data(), count);
        kernels().mixSourceOver(s.data(), coverage.data(), over.data(), count);
        for (size_t i = 0; i < s.size(); ++i) {
            const uint32_t c = i < static_cast<size_t>(count) ? coverage[i] : 0;
            EXPECT_EQ(source[i], mixedPixel(s[i], d[i], c)) << i << " of " << count;
            EXPECT_EQ(over[i], mixedPixel(overPixel(s[i], d[i]), d[i], c)) << i << " of " << count;
        }
    }
}

TEST_P(KernelLevels, CellsBecomeCoverage) {
    for (int32_t count = 0; count <= 64; count += 8) {
        std::vector<uint32_t> cells(static_cast<size_t>(count) + 1, 7), coverage(cells.size(), 7);
        std::vector<uint32_t> expected = coverage;
        const uint32_t start = word();
        uint32_t sum = start;
        for (size_t i = 0; i < static_cast<size_t>(count); ++i) {
            const uint32_t next = word() % 2 == 0 ? sum : word() % 3 == 0 ? word() : word() >> 2;
            cells[i] = next - sum;
            sum = next;
            const int64_t level = static_cast<int32_t>(sum);
            expected[i] = static_cast<uint32_t>(std::clamp<int64_t>(level, 0, 1 << 30) >> 22);
        }
        EXPECT_EQ(kernels().takeCoverage(cells.data(), count, start, coverage.data()), sum);
        EXPECT_EQ(coverage, expected);
        std::vector<uint32_t> clean(cells.size(), 0);
        clean.back() = 7;
        EXPECT_EQ(cells, clean);
    }
}

TEST_P(KernelLevels, LinearGradients) {
    for (int round = 0; round < 600; ++round) {
        const int32_t count = kCounts[static_cast<size_t>(round) % std::size(kCounts)];
        LinearRun run = {countingRamp().data(), kSpreads[round % 3], 0, 0};
        // Of pictures, at the borders of 32 bits, and far outside.
        const int64_t scale = round % 5 == 0 ? int64_t{1} << 20 : round % 5 == 1 ? 0x7FFF : 1;
        run.first = (int64_t{static_cast<int32_t>(word())} >> (word() % 16)) * scale;
        run.step = (int64_t{static_cast<int32_t>(word())} >> (8 + word() % 24)) * scale;
        std::vector<uint32_t> drawn(64, ~0U);
        kernels().linearPixels(run, count, drawn.data());
        for (int32_t i = 0; i < 64; ++i) {
            const uint32_t expected =
                i < count ? entryOf(run.first + i * run.step, run.spread, 16) : ~0U;
            ASSERT_EQ(drawn[static_cast<size_t>(i)], expected)
                << i << " of " << count << ", round " << round;
        }
    }
}

int64_t fixedOf(float value) {
    return static_cast<int64_t>(std::clamp(value, -2147483520.0F, 2147483520.0F));
}

TEST_P(KernelLevels, RadialGradients) {
    std::uniform_real_distribution<float> unit(-1.0F, 1.0F);
    for (int round = 0; round < 600; ++round) {
        const int32_t count = kCounts[static_cast<size_t>(round) % std::size(kCounts)];
        const float scale = round % 7 == 0 ? 1e15F : round % 7 == 1 ? 1e-20F : 2.0F;
        const bool isCentred = round % 4 == 0;
        const auto line = [&] {
            const float start = unit(random_) * scale;
            return RowLine{start, unit(random_) * 0.01F * scale};
        };
        RadialRun run = {countingRamp().data(),
                         kSpreads[round % 3],
                         static_cast<int32_t>(word() % 64),
                         line(),
                         line(),
                         isCentred ? RowLine() : line(),
                         isCentred ? RowLine() : line(),
                         0x1p20F * (1.0F + std::fabs(unit(random_)))};
        std::vector<uint32_t> drawn(64, ~0U);
        kernels().radialPixels(run, count, drawn.data());
        for (int32_t i = 0; i < count; ++i) {
            const auto k = static_cast<float>(run.first + i);
            const float u = run.u.start + k * run.u.step, v = run.v.start + k * run.v.step;
            const float cross = run.cross.start + k * run.cross.step;
            const float dot = run.dot.start + k * run.dot.step;
            const float radicand = u * u + v * v - cross * cross;
            const float g = (dot + std::sqrt(std::max(radicand, 0.0F))) * run.scale;
            ASSERT_EQ(drawn[static_cast<size_t>(i)], entryOf(fixedOf(g), run.spread, 20))
                << i << " of " << count << ", round " << round;
        }
    }
}

TEST_P(KernelLevels, ColourRamps) {
    std::uniform_real_distribution<float> wide(-0.2F, 1.2F);
    for (int round = 0; round < 200; ++round) {
        std::vector<ColorStop> stops(2 + word() % 9);
        for (ColorStop& stop : stops) {
            stop.offset = std::clamp(wide(random_), 0.0F, 1.0F);
            for (float& channel : stop.color) channel = wide(random_);
        }
        std::sort(stops.begin(), stops.end(),
                  [](const ColorStop& a, const ColorStop& b) { return a.offset < b.offset; });
        stops.front().offset = 0.0F;
        stops.back().offset = 1.0F;
        float transform[8];
        for (float& value : transform) value = wide(random_);
        const RampOptions options = {round % 2 == 0, round % 3 == 0,
                                     round % 5 == 0, round % 16 == 0,
                                     round % 7 != 0, round % 4 == 0 ? transform : nullptr};
        const auto count = static_cast<int32_t>(stops.size());
        ColorRamp ramp, plain;
        ASSERT_TRUE(buildColorRamp(stops.data(), count, options, ramp));
        (void)useKernelLevel(KernelLevel::kPortable);
        ASSERT_TRUE(buildColorRamp(stops.data(), count, options, plain));
        (void)useKernelLevel(GetParam());
        ASSERT_TRUE(std::equal(ramp.pixels, std::end(ramp.pixels), plain.pixels)) << round;
        ASSERT_EQ(ramp.lastColor, plain.lastColor);
    }
}

}  // namespace
}  // namespace vg::raster
