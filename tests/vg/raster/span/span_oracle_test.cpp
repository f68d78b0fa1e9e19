// Every paint under every blend mode, with and without a mask, on every surface format, beside the
// formulas in real numbers.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "vg/raster/blend_oracle.h"
#include "vg/raster/paint/color_ramp.h"
#include "vg/raster/paint_setup.h"
#include "vg/raster/raster_fixture.h"

namespace vg::raster {
namespace {

using oracle::RealColor;

constexpr int kWidth = 96;
constexpr uint32_t kSurfaceFormats[] = {0x41, 0x42, 0x48, 0x49};
constexpr uint32_t kPlainImage = 0x41;  // VG_sARGB_8888

bool isLinear(uint32_t format) { return format >= 0x48; }
bool isPremultiplied(uint32_t format) { return format == 0x42 || format == 0x49; }

/// Colours from the middle of the range in either space, where dodging and burning are not steep.
struct PlainColor {
    double rgba[4];
};
constexpr PlainColor kFirst = {{0.68, 0.74, 0.78, 0.9}};
constexpr PlainColor kSecond = {{0.78, 0.70, 0.68, 0.6}};

PlainColor between(const PlainColor& a, const PlainColor& b, double t) {
    PlainColor color;
    for (int i = 0; i < 4; ++i) color.rgba[i] = a.rgba[i] + (b.rgba[i] - a.rgba[i]) * t;
    return color;
}

RealColor onSurface(const PlainColor& color, uint32_t format) {
    RealColor result;
    const double alpha = color.rgba[3];
    for (int i = 0; i < 3; ++i) {
        const double c = color.rgba[i];
        const double inSpace = isLinear(format) ? std::pow((c + 0.0556) / 1.0556, 2.4) : c;
        result.channel[i] = inSpace * alpha;
    }
    result.channel[3] = alpha;
    return result;
}

uint32_t wordOf(const PlainColor& color) {
    uint32_t word = 0;
    for (const int i : {3, 0, 1, 2}) {
        word = word << 8 | static_cast<uint32_t>(std::lround(color.rgba[i] * 255));
    }
    return word;
}

/// A small image of plain colours, repeated over the surface.
struct ColorImage {
    static constexpr int kSide = 4;
    uint32_t texels[kSide * kSide];

    ColorImage() {
        for (int i = 0; i < kSide * kSide; ++i) {
            texels[i] = wordOf(between(kFirst, kSecond, i / 15.0));
        }
    }
    SampledImage sampled() const {
        SampledImage image;
        image.pixels = reinterpret_cast<const uint8_t*>(texels);
        image.stride = kSide * 4;
        image.width = image.height = kSide;
        image.format = kPlainImage;
        image.widthLog2 = image.heightLog2 = 2;
        return image;
    }
    /// Texel (x + 1, y), which is what shows under the translation below.
    PlainColor at(int x, int y) const {
        const uint32_t word = texels[(y & 3) * kSide + ((x + 1) & 3)];
        return {{(word >> 16 & 255) / 255.0, (word >> 8 & 255) / 255.0, (word & 255) / 255.0,
                 (word >> 24) / 255.0}};
    }
    TextureParams texture() const {
        TextureParams params;
        params.image = sampled();
        params.surfaceToTexture.m[0][2] = 1;
        params.quality = TextureQuality::kNearest;
        params.tiling = TilingMode::kRepeat;
        return params;
    }
};
const ColorImage kImage;

/// A paint, and what it is worth at a pixel.
struct PaintCase {
    const char* name;
    PaintKind kind;
    std::function<PlainColor(int x, int y)> at;
};

const PaintCase kPaints[] = {
    {"colour", PaintKind::kColor, [](int, int) { return kFirst; }},
    {"linear", PaintKind::kLinearGradient,
     [](int x, int) { return between(kFirst, kSecond, (x + 0.5) / kWidth); }},
    {"radial", PaintKind::kRadialGradient,
     [](int x, int y) { return between(kFirst, kSecond, std::hypot(x + 0.5, y + 0.5) / kWidth); }},
    // Of one colour: the angles have a table of their own, and tests of their own.
    {"conical", PaintKind::kConicalGradient, [](int, int) { return kSecond; }},
    {"pattern", PaintKind::kPattern, [](int x, int y) { return kImage.at(x, y); }},
};

ColorStop stopOf(float offset, const PlainColor& color) {
    ColorStop stop = {offset, {}};
    for (int i = 0; i < 4; ++i) stop.color[i] = static_cast<float>(color.rgba[i]);
    return stop;
}

ColorRamp rampFor(const PaintCase& paint, uint32_t format, ImageMode imageMode) {
    const PlainColor& start = paint.kind == PaintKind::kConicalGradient ? kSecond : kFirst;
    const ColorStop stops[] = {stopOf(0, start), stopOf(1, kSecond)};
    ColorRamp ramp;
    EXPECT_TRUE(buildColorRamp(stops, 2,
                               {.isLinearSpace = isLinear(format),
                                .isPremultiplied = takesPremultipliedPaint(format, imageMode)},
                               ramp));
    return ramp;
}

/// One row of pixels, coverage and mask, all random, and a draw over it.
class Row {
public:
    Row(uint32_t format, uint32_t seed) : format_(format), random_(seed) {
        for (uint32_t& pixel : pixels_) pixel = randomPixel();
        EXPECT_TRUE(row_.reserve(kWidth));
        int32_t sum = 0;
        for (int x = 0; x < kWidth; ++x) {
            sums_[x] = nextSum(x > 0 ? sums_[x - 1] : 0);
            addChange(row_, x, static_cast<uint32_t>(sums_[x] - sum));
            sum = sums_[x];
            mask_[x] = static_cast<uint8_t>(x % 7 == 0 ? 255 : x % 11 == 0 ? 0 : below(256));
        }
        addChange(row_, kWidth, static_cast<uint32_t>(-sum));
        before_ = pixels_;
    }

    FillParams params(const PaintCase& paint, int32_t mode, bool isMasked, const ColorRamp& ramp) {
        FillParams fill;
        fill.surface = {pixels_.data(), kWidth, 1, format_};
        fill.blendMode = mode;
        fill.mask = isMasked ? mask_ : nullptr;
        fill.paint.kind = paint.kind;
        for (int i = 0; i < 4; ++i) fill.paint.color[i] = static_cast<float>(kFirst.rgba[i]);
        fill.paint.gradient.ramp = &ramp;
        fill.paint.gradient.geometry = {{{0, 0}, {0, 0}}, kWidth, 1};
        if (paint.kind == PaintKind::kLinearGradient) {
            fill.paint.gradient.geometry.points[1][0] = kWidth;
        }
        fill.paint.pattern = kImage.texture();
        return fill;
    }

    void draw(const FillParams& fill) {
        SpanContext span;
        const SpanFunctions functions = setupPaint(fill, span);
        if (functions.span == nullptr) return;
        functions.span(fill.surface, span, 0, row_.view());
        EXPECT_TRUE(isClean(row_)) << "cells and map are left clean";
    }

    /// Checks every pixel against expected(x, old pixel, coverage 0..1).
    template <class Expected>
    void check(bool isMasked, double tolerance, const Expected& expected) const {
        for (int x = 0; x < kWidth; ++x) {
            const auto i = static_cast<size_t>(x);
            const int coverage256 = sums_[x] >> 22;
            const int covered = isMasked ? coverage256 * mask_[x] / 256 : coverage256;
            const RealColor old = oracle::realOf(before_[i], isPremultiplied(format_));
            const RealColor drawn = oracle::realOf(pixels_[i], isPremultiplied(format_));
            const RealColor target = expected(x, old, covered / 256.0);
            ASSERT_LE(oracle::distance(drawn, target), tolerance)
                << "column " << x << " coverage " << covered << std::hex << " from " << before_[i]
                << " to " << pixels_[i];
        }
    }

private:
    uint32_t below(uint32_t bound) { return static_cast<uint32_t>(random_()) % bound; }

    uint32_t randomPixel() {
        const uint32_t alpha = below(4) == 0 ? 255 : below(4) == 0 ? 0 : below(256);
        uint32_t pixel = alpha << 24;
        const uint32_t most = isPremultiplied(format_) ? alpha : 255;
        for (const int shift : {0, 8, 16}) pixel |= below(most + 1) << shift;
        return pixel;
    }
    /// Runs of one coverage, full ones and none among them, some long, and changes at every column.
    int32_t nextSum(int32_t sum) {
        if (keep_ > 0) return --keep_, sum;
        if (below(16) == 0) keep_ = below(40);
        switch (below(8)) {
            case 0:
                return 1 << 30;
            case 1:
                return 0;
            case 2:
            case 3:
                return static_cast<int32_t>(below(1U << 30));
            default:
                return sum;
        }
    }

    uint32_t format_;
    std::mt19937 random_;
    std::vector<uint32_t> pixels_ = std::vector<uint32_t>(kWidth);
    std::vector<uint32_t> before_;
    CoverageRow row_;
    int32_t sums_[kWidth] = {};
    uint8_t mask_[kWidth] = {};
    uint32_t keep_ = 0;  ///< columns that the coverage stays the same for
};

/// All modes with a function, and some of the numbers between them.
std::vector<int32_t> allModes() {
    std::vector<int32_t> modes = {0x200A, 0x2050, 0x208F};
    for (int32_t mode = 0x2000; mode <= 0x2009; ++mode) modes.push_back(mode);
    for (int32_t mode = 0x2090; mode <= 0x209D; ++mode) modes.push_back(mode);
    return modes;
}

/// In levels: rounding of paint, blend and mixing; the modes from overlay on multiply what is
/// rounded, or divide by it.
double toleranceOf(int32_t mode) { return mode >= 0x2097 ? 6.0 : 4.0; }

TEST(SpanOracle, EveryPaintModeMaskAndFormat) {
    uint32_t seed = 1;
    for (const uint32_t format : kSurfaceFormats) {
        for (const PaintCase& paint : kPaints) {
            const ColorRamp ramp = rampFor(paint, format, ImageMode::kNone);
            for (const int32_t mode : allModes()) {
                for (const bool isMasked : {false, true}) {
                    SCOPED_TRACE(testing::Message()
                                 << paint.name << std::hex << " mode " << mode << " format "
                                 << format << " masked " << isMasked);
                    Row row(format, seed++);
                    row.draw(row.params(paint, mode, isMasked, ramp));
                    row.check(isMasked, toleranceOf(mode),
                              [&](int x, const RealColor& old, double coverage) {
                                  return oracle::composite(mode, onSurface(paint.at(x, 0), format),
                                                           old, coverage);
                              });
                    if (testing::Test::HasFatalFailure()) return;
                }
            }
        }
    }
}

TEST(SpanOracle, ImageModes) {
    uint32_t seed = 5000;
    for (const uint32_t format : kSurfaceFormats) {
        for (const PaintCase& paint : kPaints) {
            for (const ImageMode imageMode :
                 {ImageMode::kNormal, ImageMode::kMultiply, ImageMode::kStencil}) {
                const ColorRamp ramp = rampFor(paint, format, imageMode);
                for (const int32_t mode : {0x2000, 0x2001, 0x2005, 0x2090, 0x209A}) {
                    SCOPED_TRACE(testing::Message()
                                 << paint.name << std::hex << " mode " << mode << " format "
                                 << format << " image mode " << static_cast<int>(imageMode));
                    const bool isMasked = mode == 0x2005;
                    Row row(format, seed++);
                    FillParams fill = row.params(paint, mode, isMasked, ramp);
                    fill.imageMode = imageMode;
                    fill.image = kImage.texture();
                    row.draw(fill);
                    row.check(isMasked, 4.0, [&](int x, const RealColor& old, double coverage) {
                        const RealColor image = onSurface(kImage.at(x, 0), format);
                        const RealColor color = onSurface(paint.at(x, 0), format);
                        if (imageMode == ImageMode::kStencil) {
                            return oracle::compositeStencil(mode, color, image, old, coverage);
                        }
                        RealColor source = image;
                        if (imageMode == ImageMode::kMultiply) {
                            for (int i = 0; i < 4; ++i) source.channel[i] *= color.channel[i];
                        }
                        return oracle::composite(mode, source, old, coverage);
                    });
                    if (testing::Test::HasFatalFailure()) return;
                }
            }
        }
    }
}

TEST(SpanOracle, FullMaskTakesAHundredthLess) {
    Picture picture(3, 1, 0xFF000000);
    const uint8_t mask[] = {255, 128, 0};
    const Shape shape = rectangle(0, 0, 3, 1);
    FillParams params = paramsFor(shape, picture);
    params.blendMode = 0x2000;
    params.mask = mask;
    Rasterizer rasterizer;
    ASSERT_TRUE(rasterizer.fill(params));
    EXPECT_EQ(picture.at(0, 0), 0xFFFEFEFE) << "coverage 255 of 256";
    EXPECT_EQ(picture.at(1, 0), 0xFF7F7F7F);
    EXPECT_EQ(picture.at(2, 0), 0xFF000000);
}

TEST(SpanOracle, ColoursThatChangeNothing) {
    struct Case {
        int32_t mode;
        float alpha;
        bool draws;
    };
    for (const Case& c : {Case{0x2004, 1, false}, Case{0x2004, 0, true}, Case{0x2004, 0.5F, true},
                          Case{0x2001, 0, false}, Case{0x2000, 0, true}, Case{0x2091, 1, false}}) {
        Picture picture(4, 4, 0x80402010);
        const Shape shape = rectangle(0, 0, 4, 4);
        FillParams params = paramsFor(shape, picture);
        params.blendMode = c.mode;
        params.paint.color[3] = c.alpha;
        SpanContext span;
        EXPECT_EQ(setupPaint(params, span).span != nullptr, c.draws)
            << std::hex << c.mode << ' ' << c.alpha;
    }
}

/// A plain pixel that nothing is drawn on keeps the colour that its alpha hides.
TEST(SpanOracle, PlainPixelsKeepTheirHiddenColour) {
    for (const uint32_t old : {0x00123456U, 0x01FF8001U, 0x03A0B0C0U}) {
        for (const int32_t mode : {0x2001, 0x2002, 0x2009, 0x209B}) {
            Picture picture(2, 1, old);
            const Shape shape = rectangle(0, 0, 2, 1);
            FillParams params = paramsFor(shape, picture);
            params.surface.format = 0x41;
            params.blendMode = mode;
            params.paint.color[3] = 0;
            Rasterizer rasterizer;
            ASSERT_TRUE(rasterizer.fill(params));
            EXPECT_EQ(picture.at(0, 0), old) << std::hex << mode;
        }
    }
}

}  // namespace
}  // namespace vg::raster
