#include "vg/raster/pixels/pixel_io.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "vg/raster/color_oracle.h"
#include "vg/raster/pixels/color_space_tables.h"

namespace vg::raster {
namespace {

TEST(PixelFormats, FortyCodesOutOfAllExist) {
    EXPECT_EQ(oracle::allFormats().size(), 40U);
    for (const uint32_t code : {0x0FU, 0x43U, 0x46U, 0x4CU, 0x86U, 0xC3U, 0x10U, 0x20U, 0x101U,
                                0x80000002U, 0xFFFFFFFFU}) {
        EXPECT_EQ(findPixelFormat(code), nullptr) << std::hex << code;
    }
}

TEST(PixelFormats, FieldsLieWhereTheNamesSay) {
    // An orange of few bits: red all ones, green half, blue none, alpha all ones.
    const struct {
        const char* name;
        uint32_t code, packed, color;
    } cases[] = {
        {"sRGBX: the X byte is not read", 0x00, 0xFF800012, 0xFFFF8000},
        {"sRGBA", 0x01, 0xFF800012, 0x12FF8000},
        {"sRGB_565", 0x03, 0xFC00, 0xFFFF8200},
        {"sRGBA_5551", 0x04, 0xFC00, 0x00FF8400},
        {"sRGBA_4444", 0x05, 0xF80F, 0xFFFF8800},
        {"sL_8", 0x06, 0x7F, 0xFF7F7F7F},
        {"A_8", 0x0B, 0x7F, 0x7FFFFFFF},
        {"BW_1", 0x0C, 1, 0xFFFFFFFF},
        {"A_1", 0x0D, 0, 0x00FFFFFF},
        {"A_4", 0x0E, 0x9, 0x99FFFFFF},
        {"sARGB_PRE", 0x42, 0x80402010, 0x80402010},
        {"sARGB_1555", 0x44, 0xFE00, 0xFFFF8400},
        {"sARGB_4444", 0x45, 0xFF80, 0xFFFF8800},
        {"lXRGB", 0x47, 0x01020304, 0xFF020304},
        {"sBGRA", 0x81, 0x01020304, 0x04030201},
        {"sBGR_565", 0x83, 0x041F, 0xFFFF8200},
        {"sBGRA_5551", 0x84, 0x043F, 0xFFFF8400},
        {"sXBGR", 0xC0, 0x01020304, 0xFF040302},
        {"sABGR", 0xC1, 0x01020304, 0x01040302},
        {"sABGR_1555: the alpha bit lies in blue", 0xC4, 0x0800, 0xFF000010},
        {"sABGR_1555: the top bit is no alpha", 0xC4, 0x8000, 0x00000000},
        {"sABGR_4444", 0xC5, 0xF08F, 0xFFFF8800},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(unpackColor(c.packed, *findPixelFormat(c.code)), c.color) << c.name;
    }
}

TEST(ColorSpaces, TablesAreTheRoundedCurves) {
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(kLinearToStandard[i], static_cast<uint32_t>(oracle::toStandard(i))) << i;
        EXPECT_EQ(kStandardToLinear[i], static_cast<uint32_t>(oracle::toLinear(i))) << i;
    }
}

TEST(PixelConversion, EveryPairOfFormatsAgreesWithTheSlowWay) {
    std::mt19937 random(5);
    for (const uint32_t fromCode : oracle::allFormats()) {
        const PixelFormatDescriptor& from = *findPixelFormat(fromCode);
        const uint32_t mask = static_cast<uint32_t>((uint64_t{1} << from.bitsPerPixel) - 1);
        for (const uint32_t toCode : oracle::allFormats()) {
            const PixelFormatDescriptor& to = *findPixelFormat(toCode);
            for (int i = 0; i < 50; ++i) {
                const uint32_t packed = static_cast<uint32_t>(random()) & mask;
                const uint32_t color = unpackColor(packed, from);
                const uint32_t actual = packColor(convertColor(color, from.flags, to.flags), to);
                const uint32_t expected = oracle::pack(
                    oracle::convert(oracle::unpack(packed, from), from.flags, to.flags), to);
                ASSERT_EQ(actual, expected)
                    << std::hex << fromCode << " -> " << toCode << " of " << packed;
            }
        }
    }
}

TEST(PixelConversion, PackingUndoesUnpacking) {
    std::mt19937 random(6);
    for (const uint32_t code : oracle::allFormats()) {
        if (code == 0xC4) continue;  // two of its fields overlap
        const PixelFormatDescriptor& format = *findPixelFormat(code);
        const bool hasX = format.bitsPerPixel == 32 && (format.flags & kHasAlpha) == 0;
        for (int i = 0; i < 1000; ++i) {
            uint32_t packed = static_cast<uint32_t>(random());
            packed &= static_cast<uint32_t>((uint64_t{1} << format.bitsPerPixel) - 1);
            if (hasX) packed |= 0xFFU << format.alphaShift;
            ASSERT_EQ(packColor(unpackColor(packed, format), format), packed) << std::hex << code;
        }
    }
}

TEST(PixelConversion, PremultiplyingStaysWithinAlphaAndComesBack) {
    for (uint32_t a = 0; a < 256; ++a) {
        for (uint32_t c = 0; c < 256; ++c) {
            const uint32_t premultiplied = premultiply(a << 24 | c << 16 | c << 8 | c);
            const uint32_t channel = premultiplied & 0xFF;
            ASSERT_LE(channel, a);
            ASSERT_NEAR(channel, c * a / 255.0, 1.0);
            const uint32_t again = premultiply(unpremultiply(a << 24 | channel));
            ASSERT_NEAR(again & 0xFF, channel, 1.0) << a << " " << c;
        }
    }
    EXPECT_EQ(unpremultiply(0x10FF8001), 0x10FFFF10U) << "channels above alpha are cut";
    EXPECT_EQ(unpremultiply(0x00123456), 0U);
}

TEST(PixelRows, ConvertFromAndToAnyColumn) {
    std::mt19937 random(7);
    for (const uint32_t fromCode : {0x0CU, 0x0EU, 0x06U, 0x03U, 0x42U}) {
        for (const uint32_t toCode : {0x0CU, 0x0EU, 0x06U, 0x03U, 0x42U, 0xC1U}) {
            const PixelFormatDescriptor& from = *findPixelFormat(fromCode);
            const PixelFormatDescriptor& to = *findPixelFormat(toCode);
            for (const int32_t count : {0, 1, 7, 128, 300}) {
                const auto fromX = static_cast<int32_t>(random() % 9);
                const auto toX = static_cast<int32_t>(random() % 9);
                std::vector<uint8_t> source(1300), target(1300), before;
                for (uint8_t& byte : source) byte = static_cast<uint8_t>(random());
                for (uint8_t& byte : target) byte = static_cast<uint8_t>(random());
                before = target;
                convertPixels(source.data(), fromX, from, target.data(), toX, to, count);
                // The low bits of a byte are the left pixel: a row is one long little-endian
                // number.
                const auto bitsAt = [](const std::vector<uint8_t>& row, int32_t x, int32_t bits) {
                    uint32_t packed = 0;
                    for (int32_t i = bits - 1; i >= 0; --i) {
                        const auto bit = static_cast<size_t>(x * bits + i);
                        packed = packed << 1 | (row[bit / 8] >> bit % 8 & 1);
                    }
                    return packed;
                };
                for (int32_t x = 0; x < 320; ++x) {
                    uint32_t expected = bitsAt(before, x, to.bitsPerPixel);
                    if (x >= toX && x < toX + count) {
                        const uint32_t packed = bitsAt(source, x - toX + fromX, from.bitsPerPixel);
                        expected = fromCode == toCode
                                       ? packed
                                       : oracle::pack(oracle::convert(oracle::unpack(packed, from),
                                                                      from.flags, to.flags),
                                                      to);
                    }
                    ASSERT_EQ(bitsAt(target, x, to.bitsPerPixel), expected)
                        << std::hex << fromCode << " -> " << toCode << std::dec << ", column " << x;
                }
            }
        }
    }
}

TEST(PixelColors, FloatsAreRoundedInTheFormat) {
    const float halfRed[] = {1.0F, 0.0F, 0.0F, 0.5F};
    const struct {
        uint32_t code, packed;
    } cases[] = {{0x42, 0x80800000}, {0x41, 0x80FF0000}, {0x02, 0x80000080}, {0x00, 0xFF0000FF},
                 {0x03, 0xF800},     {0x06, 0x36},       {0x0B, 0x80},       {0x0D, 1},
                 {0x0E, 8},          {0x0C, 0},          {0x48, 0x80FF0000}, {0x49, 0x807F0000}};
    for (const auto& c : cases) {
        EXPECT_EQ(packFloatColor(halfRed, *findPixelFormat(c.code)), c.packed)
            << std::hex << c.code;
    }
    const float grey[] = {0.5F, 0.5F, 0.5F, 7.0F};
    EXPECT_EQ(packFloatColor(grey, *findPixelFormat(0x48)), 0xFF373737U);
}

}  // namespace
}  // namespace vg::raster
