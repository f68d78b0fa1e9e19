#include "vg/raster/paint/color_ramp.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace vg::raster {
namespace {

using Stops = std::vector<ColorStop>;
using Color = std::array<double, 4>;

struct ReferenceStop {
    double offset;
    Color color;
};

std::vector<ReferenceStop> referenceStops(const Stops& stops, const RampOptions& options) {
    std::vector<ReferenceStop> result;
    for (const ColorStop& stop : stops) {
        ReferenceStop reference = {stop.offset, {}};
        for (size_t i = 0; i < 4; ++i) {
            const bool scales = options.interpolatesPremultiplied && i < 3;
            reference.color[i] =
                static_cast<double>(stop.color[i]) * (scales ? stop.color[3] : 1.0F);
        }
        result.push_back(reference);
    }
    if (options.isMirrored) {
        for (size_t i = stops.size() - 1; i-- > 0;) {
            result.push_back({2.0 - result[i].offset, result[i].color});
        }
    }
    return result;
}

/// The tangent of stop i towards the interval that ends or begins there, per unit of offset.
double tangent(const std::vector<ReferenceStop>& stops, size_t i, size_t channel) {
    const bool before = i > 0 && stops[i - 1].offset < stops[i].offset;
    const bool after = i + 1 < stops.size() && stops[i].offset < stops[i + 1].offset;
    const ReferenceStop& from = stops[before ? i - 1 : i];
    const ReferenceStop& to = stops[after ? i + 1 : i];
    if (!before && !after) return 0.0;
    return (to.color[channel] - from.color[channel]) / (to.offset - from.offset);
}

double interpolate(const std::vector<ReferenceStop>& stops, size_t next, size_t channel, double at,
                   bool isSmooth) {
    const ReferenceStop& a = stops[next - 1];
    const ReferenceStop& b = stops[next];
    const double length = b.offset - a.offset;
    const double t = (at - a.offset) / length;
    const double p = a.color[channel];
    const double q = b.color[channel];
    if (!isSmooth) return p + (q - p) * t;
    const double m = tangent(stops, next - 1, channel) * length;
    const double n = tangent(stops, next, channel) * length;
    // Bernstein form of the same cubic.
    const double s = 1.0 - t;
    return s * s * s * p + 3 * s * s * t * (p + m / 3) + 3 * s * t * t * (q - n / 3) +
           t * t * t * q;
}

double unit(double value) { return std::clamp(value, 0.0, 1.0); }

/// Entry by entry, as told: searched, interpolated, transformed, converted, premultiplied.
Color referenceEntry(const Stops& stops, const RampOptions& options, int entry) {
    const auto reference = referenceStops(stops, options);
    const double at = entry * (options.isMirrored ? 2.0 : 1.0) / 1023.0;
    size_t next = 0;
    while (next < reference.size() && reference[next].offset <= at) ++next;
    Color color = reference.back().color;
    for (size_t i = 0; i < 4 && next < reference.size(); ++i) {
        color[i] = unit(interpolate(reference, next, i, at, options.isSmooth));
    }
    for (size_t i = 0; i < 3 && options.interpolatesPremultiplied && color[3] > 0; ++i) {
        color[i] = unit(color[i] / color[3]);
    }
    for (size_t i = 0; i < 4; ++i) {
        if (options.colorTransform != nullptr) {
            color[i] = unit(color[i] * static_cast<double>(options.colorTransform[i]) +
                            static_cast<double>(options.colorTransform[4 + i]));
        }
        if (options.isLinearSpace && i < 3) {
            color[i] = color[i] <= 0.003928 ? color[i] / 12.92
                                            : std::pow((color[i] + 0.0556) * 0.9473285, 2.4);
        }
    }
    for (size_t i = 0; i < 3; ++i) color[i] *= color[3];
    return color;
}

/// Rounding may go either way where the exact value lies between two levels.
void expectEntries(const Stops& stops, const RampOptions& options) {
    ColorRamp ramp;
    ASSERT_TRUE(buildColorRamp(stops.data(), static_cast<int32_t>(stops.size()), options, ramp));
    for (int entry = 0; entry < ColorRamp::kSize; ++entry) {
        const Color expected = referenceEntry(stops, options, entry);
        const uint32_t pixel = ramp.pixels[entry];
        for (size_t i = 0; i < 4; ++i) {
            const uint32_t level = pixel >> (i == 3 ? 24 : 16 - 8 * i) & 0xFF;
            ASSERT_NEAR(level, expected[i] * 255.0, 0.51) << "entry " << entry << " channel " << i;
        }
    }
}

const Stops kTwo = {{0, {1, 0.2F, 0, 1}}, {1, {0, 0.4F, 1, 0.25F}}};
const Stops kJumps = {{0, {1, 0, 0, 1}},       {0.3F, {0, 1, 0, 1}}, {0.3F, {0, 0, 1, 0.5F}},
                      {0.8F, {1, 1, 0, 0.1F}}, {1, {0.2F, 0, 1, 1}}, {1, {0, 0, 0, 0}}};

TEST(ColorRamp, MatchesTheReferenceEntryByEntry) {
    const float transform[8] = {0.5F, 1, 2, 0.7F, 0.1F, 0, -0.5F, 0.1F};
    for (int bits = 0; bits < 32; ++bits) {
        RampOptions options;
        options.isMirrored = (bits & 1) != 0;
        options.isSmooth = (bits & 2) != 0;
        options.interpolatesPremultiplied = (bits & 4) != 0;
        options.isLinearSpace = (bits & 8) != 0;
        options.colorTransform = (bits & 16) != 0 ? transform : nullptr;
        SCOPED_TRACE(bits);
        expectEntries(kTwo, options);
        expectEntries(kJumps, options);
    }
}

TEST(ColorRamp, MatchesTheReferenceForRandomStops) {
    std::mt19937 random(4);
    std::uniform_real_distribution<float> value(0.0F, 1.0F);
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        Stops stops(2 + random() % 30);
        for (ColorStop& stop : stops) stop.offset = value(random);
        for (ColorStop& stop : stops) {
            for (float& c : stop.color) c = value(random);
        }
        std::sort(stops.begin(), stops.end(),
                  [](const ColorStop& a, const ColorStop& b) { return a.offset < b.offset; });
        stops.front().offset = 0.0F;
        stops.back().offset = 1.0F;
        // Smooth ramps through stops this close are too steep for a comparison in floats.
        expectEntries(stops, {.isMirrored = round % 2 == 0});
    }
}

TEST(ColorRamp, IsBlackToWhiteWithoutStops) {
    ColorRamp ramp;
    ASSERT_TRUE(buildColorRamp(nullptr, 0, {}, ramp));
    EXPECT_EQ(ramp.pixels[0], 0xFF000000);
    EXPECT_EQ(ramp.pixels[512], 0xFF808080);
    EXPECT_EQ(ramp.pixels[1023], 0xFFFFFFFF);
    EXPECT_TRUE(ramp.isOpaque);
}

TEST(ColorRamp, KnowsItsLastColorAndWhetherItIsOpaque) {
    const struct {
        Stops stops;
        bool isOpaque;
        uint32_t lastColor;
    } cases[] = {
        {{{0, {1, 0, 0, 1}}, {1, {0, 0, 1, 1}}}, true, 0xFF0000FF},
        {{{0, {1, 0, 0, 0.99F}}, {1, {0, 0, 1, 1}}}, false, 0xFF0000FF},
        {{{0, {1, 0, 0, 1}}, {1, {0, 0, 1, 0.5F}}}, false, 0x80000080},
    };
    for (const auto& c : cases) {
        for (const bool isMirrored : {false, true}) {
            ColorRamp ramp;
            ASSERT_TRUE(buildColorRamp(c.stops.data(), 2, {.isMirrored = isMirrored}, ramp));
            EXPECT_EQ(ramp.isOpaque, c.isOpaque);
            EXPECT_EQ(ramp.lastColor, c.lastColor);
        }
    }
}

TEST(ColorRamp, TakesStopsThatAreNextToEachOther) {
    const float tiny = std::nextafter(0.0F, 1.0F);
    const float almost = std::nextafter(1.0F, 0.0F);
    const Stops stops = {
        {0, {0, 0, 0, 1}}, {tiny, {1, 1, 1, 1}}, {almost, {0, 0, 0, 1}}, {1, {1, 0, 0, 1}}};
    ColorRamp ramp;
    ASSERT_TRUE(buildColorRamp(stops.data(), 4, {.isMirrored = true, .isSmooth = true}, ramp));
    EXPECT_EQ(ramp.pixels[0], 0xFF000000);
    for (const uint32_t pixel : ramp.pixels) EXPECT_EQ(pixel >> 24, 255U);
}

}  // namespace
}  // namespace vg::raster
