#include "vg/raster/span/span_selection.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "vg/raster/clear_rect.h"
#include "vg/raster/paint_setup.h"
#include "vg/raster/pixels/pixel_io.h"
#include "vg/raster/raster_fixture.h"

namespace vg::raster {
namespace {

constexpr int32_t kSrc = 0x2000;
constexpr int32_t kSrcOver = 0x2001;

/// The definition, channel by channel: blend, then mix with the old pixel by coverage.
uint32_t referencePixel(int32_t mode, uint32_t color, uint32_t pixel, int32_t sum) {
    const int32_t coverage = std::clamp(sum, 0, 1 << 30) >> 22;
    uint32_t result = 0;
    for (int shift = 0; shift < 32; shift += 8) {
        const auto s = static_cast<int32_t>(color >> shift & 0xFF);
        const auto d = static_cast<int32_t>(pixel >> shift & 0xFF);
        const auto inverse = static_cast<int32_t>(255 - (color >> 24));
        const int32_t x = d * inverse + 0x80;
        const int32_t blended = mode == kSrc ? s : s + ((x + (x >> 8)) >> 8);
        // >> of a negative number rounds down, as the formula wants.
        const int32_t mixed = d + ((blended - d) * coverage >> 8);
        result |= static_cast<uint32_t>(mixed & 0xFF) << shift;
    }
    return result;
}

TEST(SpanFunction, MatchesTheDefinitionOnRandomCoverage) {
    std::mt19937 random(99);
    std::uniform_int_distribution<uint32_t> word;
    constexpr int kWidth = 67;
    for (int round = 0; round < 500; ++round) {
        const int32_t mode = round % 2 == 0 ? kSrc : kSrcOver;
        const uint32_t alpha = round % 7 == 0 ? 255 : word(random) % 256;
        uint32_t color = alpha << 24;
        for (int shift = 0; shift < 24; shift += 8) {
            color |= word(random) % (alpha + 1) << shift;
        }
        Picture picture(kWidth, 1);
        for (uint32_t& pixel : picture.pixels) {
            const uint32_t a = word(random) % 256;
            pixel = a << 24;
            for (int shift = 0; shift < 24; shift += 8) pixel |= word(random) % (a + 1) << shift;
        }
        // Sums that often repeat, are often full or nothing, and now and then just out of range.
        CoverageRow row;
        ASSERT_TRUE(row.reserve(kWidth));
        std::vector<int32_t> sums(kWidth, 0);
        const int first = static_cast<int>(word(random) % 20);
        const int last =
            first + static_cast<int>(word(random) % static_cast<uint32_t>(kWidth - first));
        int32_t sum = 0;
        for (int x = first; x <= last; ++x) {
            int32_t next = sum;
            switch (word(random) % 9) {
                case 0:
                    next = 1 << 30;
                    break;
                case 1:
                    next = 0;
                    break;
                case 2:
                    next = static_cast<int32_t>(word(random) % (1U << 30));
                    break;
                case 3:
                    next = -5;
                    break;
                case 4:
                    next = (1 << 30) + 9;
                    break;
                default:
                    break;
            }
            addChange(row, x, static_cast<uint32_t>(next) - static_cast<uint32_t>(sum));
            sums[static_cast<size_t>(x)] = sum = next;
        }
        addChange(row, last + 1, 0U - static_cast<uint32_t>(sum));

        std::vector<uint32_t> expected = picture.pixels;
        for (int x = first; x <= last; ++x) {
            const auto i = static_cast<size_t>(x);
            expected[i] = referencePixel(mode, color, expected[i], sums[i]);
        }
        const SpanFunctions functions = selectSpanFunctions(mode, color);
        if (functions.span != nullptr) {
            SpanContext span;
            span.color = color;
            functions.span(picture.surface(), span, 0, row.view());
            EXPECT_TRUE(isClean(row)) << "cells and map are left clean";
        }
        ASSERT_EQ(picture.pixels, expected) << "round " << round;
    }
}

TEST(SpanFunction, TransparentSourceOverIsNoDraw) {
    EXPECT_EQ(selectSpanFunctions(kSrcOver, 0).span, nullptr);
    EXPECT_NE(selectSpanFunctions(kSrc, 0).span, nullptr);
}

TEST(PaintColor, IsClampedPremultipliedAndRounded) {
    struct Case {
        float rgba[4];
        uint32_t pixel;
    };
    const Case cases[] = {
        {{1, 0, 0, 0.5F}, 0x80800000},
        {{2, -1, 0.5F, 1}, 0xFFFF0080},
        {{1, 1, 1, -3}, 0x00000000},
        {{0.2F, 0.4F, 0.6F, 1}, 0xFF336699},
    };
    for (const Case& c : cases) EXPECT_EQ(packPremultiplied(c.rgba), c.pixel);

    PaintParams paint;
    std::copy_n(cases[3].rgba, 4, paint.color);
    paint.colorTransform[3] = 0.5F;
    EXPECT_EQ(packPaintColor(paint, false, true), 0xFF336699)
        << "a disabled transform does nothing";
    paint.colorTransformEnabled = true;
    EXPECT_EQ(packPaintColor(paint, false, true), 0x801A334D);
}

TEST(ClearRect, StaysOnTheSurface) {
    Picture picture(4, 3, 7);
    clearRect(picture.surface(), {-5, 1, 2, 100}, 0xAABBCCDD);
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 4; ++x) {
            EXPECT_EQ(picture.at(x, y), x < 2 && y >= 1 ? 0xAABBCCDD : 7U);
        }
    }
    clearRect(picture.surface(), {3, 2, 1, 0}, 1);
    EXPECT_EQ(picture.at(3, 2), 7U);
}

}  // namespace
}  // namespace vg::raster
