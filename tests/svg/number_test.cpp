#include "svg/number.h"

#include <gtest/gtest.h>

#include <bit>
#include <cfloat>
#include <cmath>
#include <random>

#include "hostile_text.h"
#include "svg/length.h"

namespace quor {
namespace {

TEST(Number, ReadsWhatBelongsToItAndNoMore) {
    const struct {
        std::string text;
        float value;
        const char* rest;
    } cases[] = {
        {"1e3", 1000.0F, ""},
        {"2E3,4", 2000.0F, ",4"},
        {"+.5", 0.5F, ""},
        {" \t\n\f\r-12.75px", -12.75F, "px"},
        {"\v7", 0.0F, "\v7"},
        {"1e-3", 0.0F, ""},
        {"-1.2e-5,3", -0.0F, ",3"},
        {"1e-3.5", 0.0F, ".5"},
        {"1e-x", 0.0F, "-x"},
        {"1e", 0.0F, ""},
        {"1.5.5", 1.5F, ""},
        {"1e2e-5", 100.0F, ""},
        {"-", -0.0F, ""},
        {"--5", 0.0F, "-5"},
        {"", 0.0F, ""},
        {"abc", 0.0F, "abc"},
        {"\xE9", 0.0F, "\xE9"},
        {"1e99999999999999999999 1", FLT_MAX, " 1"},
        {"-1e39", -FLT_MAX, ""},
        {"0e999", 0.0F, ""},
        // 63 characters count; the rest of the run is passed over.
        {"0." + std::string(60, '0') + "9e70;", 0.0F, ";"},
        {std::string(62, '0') + "123 4", 1.0F, " 4"},
        {std::string(100000, '9'), FLT_MAX, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text.substr(0, 80));
        const ExactText text(c.text);
        TextCursor cursor(text);
        EXPECT_EQ(readNumber(cursor), c.value);
        EXPECT_STREQ(cursor.at, c.rest);
    }
}

TEST(Number, ConvertsWithItsOwnRounding) {
    // Not always the nearest double: 0.1 is multiplied up, digit by digit and power by power.
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"0.3", 0x1.3333333333334p-2},
        {"0.123456789", 0x1.f9add37396360p-4},
        {"5e-3", 0x1.47ae147ae147cp-8},
        {"1.5e-7", 0x1.421f5f40d837ap-23},
        {"123456789012345678901", 0x1.ac53a7e04bcdap+66},
        {"0.00000000000000000000000000000000000001", 0x1.b38fb9daa78f4p-127},
        {" \v\x0E 7e22", 0x1.da56a4b0835c0p+75},
        {"2e+", 2.0},
        {"2e", 0.0},
        {"-", 0.0},
        {"", 0.0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(decimalValue(c.text, c.text + std::strlen(c.text)), c.value) << c.text;
    }
    const char cut[] = {'-', '2', 'e'};
    EXPECT_TRUE(std::signbit(decimalValue(std::begin(cut), std::end(cut))));
}

/// Digits, a point, digits, sometimes an exponent: what documents hold, and longer.
std::string randomNumber(std::mt19937& random) {
    const auto digits = [&random](size_t most) {
        std::string text;
        for (size_t i = random() % (most + 1); i > 0; --i) {
            text += static_cast<char>('0' + random() % 10);
        }
        return text;
    };
    const size_t most = random() % 4 == 0 ? 24 : 5;
    std::string text = random() % 3 == 0 ? "-" : "";
    text += digits(most);
    if (random() % 2 == 0) text += "." + digits(most);
    if (random() % 16 == 0) text += "e" + digits(2);
    return text;
}

TEST(Number, EveryReaderRoundsLikeTheConversion) {
    std::mt19937 random(20261123);
    for (int i = 0; i < 20000; ++i) {
        const std::string number = randomNumber(random);
        SCOPED_TRACE(number);
        const float expected =
            saturateToFloat(decimalValue(number.data(), number.data() + number.size()));
        const auto bitsOf = [](float value) { return std::bit_cast<uint32_t>(value); };
        const ExactText text(number);
        if (number.find_first_of("0123456789.e") != std::string::npos) {
            TextCursor cursor(text);
            EXPECT_EQ(bitsOf(readNumber(cursor)), bitsOf(expected));
            EXPECT_TRUE(cursor.atEnd());
        }
        const char* at = text;
        EXPECT_EQ(bitsOf(scanFloat(at, 62)), bitsOf(expected));
        EXPECT_EQ(*at, '\0');
    }
}

TEST(Number, ListEndsWhereNoNumberBegins) {
    const std::string_view words[] = {"1", "-", "+", ".", "e", "E5", " ", "99", "x", "1e-5"};
    forHostileTexts(words, [](const ExactText& text) {
        TextCursor cursor(text);
        float number = 0.0F;
        while (readListNumber(cursor, number)) ASSERT_TRUE(std::isfinite(number));
        EXPECT_EQ(std::strchr("+-.0123456789eE", *cursor.at) != nullptr, cursor.atEnd());
    });
}

TEST(Length, HasTheUnitThatFollows) {
    const struct {
        const char* text;
        float value;
        LengthUnit unit;
    } cases[] = {
        {"  7px", 7.0F, LengthUnit::kUser},
        {"7 px", 7.0F, LengthUnit::kUser},
        {"7", 7.0F, LengthUnit::kUser},
        {"7q", 7.0F, LengthUnit::kUser},
        {"7PX", 7.0F, LengthUnit::kUser},
        {"50%", 50.0F, LengthUnit::kPercent},
        {"2 em", 2.0F, LengthUnit::kEm},
        {"2 ex", 2.0F, LengthUnit::kEx},
        {"2pt", 2.0F, LengthUnit::kPoint},
        {"2pc", 2.0F, LengthUnit::kPica},
        {"2mm", 2.0F, LengthUnit::kMillimetre},
        {"2cm", 2.0F, LengthUnit::kCentimetre},
        {"2in", 2.0F, LengthUnit::kInch},
        {"", 0.0F, LengthUnit::kUser},
        // Begins like a unit: a fresh length stays as it is. The 'e' of "2em" is an exponent.
        {"2p", 0.0F, LengthUnit::kNone},
        {"2cx", 0.0F, LengthUnit::kNone},
        {"2em", 0.0F, LengthUnit::kNone},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const SvgLength length = parseLength(ExactText(c.text));
        EXPECT_EQ(length.value, c.value);
        EXPECT_EQ(length.unit, c.unit);
    }
}

TEST(Length, ResolvesAgainstResolutionAndViewport) {
    Rect viewport;
    viewport.set(5.0F, 6.0F, 300.0F, 400.0F);
    const auto resolve = [&](const char* text, LengthAxis axis) {
        return resolveLength(parseLength(text), 96.0F, &viewport, axis);
    };
    EXPECT_FLOAT_EQ(resolve("50%", LengthAxis::kHorizontal), 150.0F);
    EXPECT_FLOAT_EQ(resolve("50%", LengthAxis::kVertical), 200.0F);
    EXPECT_NEAR(resolve("50%", LengthAxis::kDiagonal), 176.78F, 0.005F);
    for (const char* inch : {"72pt", "6pc", "25.4mm", "2.54cm", "1in", "96px"}) {
        EXPECT_NEAR(resolve(inch, LengthAxis::kDiagonal), 96.0F, 1e-4F) << inch;
    }
    EXPECT_EQ(resolve("3 ex", LengthAxis::kDiagonal), 0.0F);
    EXPECT_EQ(resolve("1e38in", LengthAxis::kDiagonal), FLT_MAX);

    const Rect unset;
    EXPECT_FLOAT_EQ(resolveLength(parseLength("50%"), 96.0F, &unset, LengthAxis::kVertical), 0.5F);
    EXPECT_FLOAT_EQ(resolveLength(parseLength("50%"), 96.0F, nullptr, LengthAxis::kVertical), 0.5F);
}

TEST(Rect, KeepsSizesAndDiagonalSane) {
    const struct {
        float width, height, diagonal;
    } cases[] = {
        {300.0F, 400.0F, 353.55339F}, {0.0F, 400.0F, 282.84271F}, {-5.0F, -5.0F, 0.0F},
        {NAN, 8.0F, 5.6568542F},      {1e30F, 1e30F, FLT_MAX},
    };
    for (const auto& c : cases) {
        Rect rect;
        EXPECT_FALSE(rect.isSet());
        rect.set(1.0F, 2.0F, c.width, c.height);
        EXPECT_FLOAT_EQ(rect.diagonal, c.diagonal);
        EXPECT_TRUE(rect.isSet() && rect.width >= 0.0F && rect.height >= 0.0F);
    }
}

TEST(Box, UnionLeavesEmptyOnesOut) {
    Box box;
    box.unite(Box{});
    EXPECT_TRUE(box.isEmpty());
    box.unite({5.0F, 6.0F, 7.0F, 6.0F});  // a line has a box
    box.unite(Box{});
    box.unite({-1.0F, 7.0F, 6.0F, 9.0F});
    EXPECT_EQ(box.minX, -1.0F);
    EXPECT_EQ(box.minY, 6.0F);
    EXPECT_EQ(box.maxX, 7.0F);
    EXPECT_EQ(box.maxY, 9.0F);
}

}  // namespace
}  // namespace quor
