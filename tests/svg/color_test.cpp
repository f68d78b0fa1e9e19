#include "svg/color.h"

#include <gtest/gtest.h>

#include <cmath>

#include "hostile_text.h"
#include "svg/color_keywords.h"
#include "svg/paint_value.h"

namespace quor {
namespace {

void expectColor(const SvgColor& color, float red, float green, float blue) {
    constexpr float kTolerance = 0.0005F;
    EXPECT_NEAR(color.red, red, kTolerance);
    EXPECT_NEAR(color.green, green, kTolerance);
    EXPECT_NEAR(color.blue, blue, kTolerance);
    EXPECT_EQ(color.alpha, 1.0F);
}

TEST(Color, ReadsEveryForm) {
    const struct {
        const char* text;
        float red, green, blue;
    } cases[] = {
        {"#F0A", 1, 0, 0.667F},
        {" #f0a;", 1, 0, 0.667F},
        {"#F0A7", 1, 0, 0.667F},
        {"#F0A7CG", 1, 0, 0.667F},
        {"#FF8000", 1, 0.502F, 0},
        {"#FF800011", 1, 0.502F, 0},
        {"#GG0000", 0, 0, 0},
        {"#FF", 0, 0, 0},
        {"#", 0, 0, 0},
        {"rgb(100%, 50%, 0%)", 1, 0.498F, 0},
        {"rgb( 255 128,,51)", 1, 0.502F, 0.2F},
        {"rgb(255,128,51", 1, 0.502F, 0.2F},
        {"rgb(1.9e2,0,0)", 0.745F, 0, 0},
        {"rgb(256,0,0)", 0, 0, 0},
        {"rgb(0,256,0)", 0.004F, 0, 0},
        {"rgb(0,-1,0)", 1, 1, 0},
        {"rgb(1e30,0,-1e30)", 1, 0, 0},
        {"rgb(255,128,", 0, 0, 0},
        {"rgb(255", 0, 0, 0},
        {"rgb(", 0, 0, 0},
        {"rgb(x,y,z)", 0, 0, 0},
        {"RGB(255,0,0)", 0, 0, 0},
        {"RED", 1, 0, 0},
        {"Red blue", 1, 0, 0},
        {"red;", 1, 0, 0},
        {"reds", 0, 0, 0},
        {"lightgoldenrodyellow", 0.980F, 0.980F, 0.824F},
        {"lightgoldenrodyellowandmore", 0, 0, 0},
        {"", 0, 0, 0},
        {"\xC3\xA9", 0, 0, 0},
        {"inherit", 0, 0, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        expectColor(parseColor(ExactText(c.text)), c.red, c.green, c.blue);
    }
}

TEST(Color, EveryKeywordIsFoundWithItsRoundedComponents) {
    for (const NamedColor& named : kNamedColors) {
        EXPECT_EQ(findNamedColor(named.name, static_cast<int>(std::strlen(named.name))), &named);
        for (const float component : {named.red, named.green, named.blue}) {
            const float byte = std::round(component * 255.0F);
            EXPECT_EQ(component, std::round(byte / 255.0F * 1000.0F) / 1000.0F) << named.name;
        }
    }
    EXPECT_EQ(parseColor("aliceblue").green, 0.973F);  // not 248/255
    EXPECT_EQ(parseColor("grey").red, parseColor("gray").red);
    EXPECT_EQ(parseColor("yellowgreen").blue, 0.196F);
    EXPECT_EQ(findNamedColor("", 0), nullptr);
    EXPECT_EQ(findNamedColor("zzz", 3), nullptr);
}

TEST(Paint, TellsTypeReferenceAndFallback) {
    const struct {
        const char* text;
        PaintType type, fallback;
        float red;
        const char* reference;
    } cases[] = {
        {" none", PaintType::kNone, PaintType::kNone, 0, nullptr},
        {"currentColorful", PaintType::kCurrentColor, PaintType::kNone, 0, nullptr},
        {"red", PaintType::kColor, PaintType::kNone, 1, nullptr},
        {"inherit", PaintType::kColor, PaintType::kNone, 0, nullptr},
        {"url(#a)", PaintType::kServer, PaintType::kNone, 0, "#a)"},
        {"url(#a) none", PaintType::kServer, PaintType::kNone, 0, "#a) none"},
        {"url(#a)  currentColor", PaintType::kServer, PaintType::kCurrentColor, 0,
         "#a)  currentColor"},
        {"url(#a)red", PaintType::kServer, PaintType::kColor, 1, "#a)red"},
        {"url(  #a )red", PaintType::kServer, PaintType::kColor, 1, "#a )red"},
        {"url( '#a' )", PaintType::kServer, PaintType::kNone, 0, "#a' )"},
        {"url(#a) rubbish", PaintType::kServer, PaintType::kColor, 0, "#a) rubbish"},
        {"url(#a", PaintType::kServer, PaintType::kNone, 0, "#a"},
        {"url(", PaintType::kServer, PaintType::kNone, 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const ExactText text(c.text);
        const SvgPaint paint = parsePaint(text);
        EXPECT_EQ(paint.type, c.type);
        EXPECT_EQ(paint.fallback, c.fallback);
        expectColor(paint.color, c.red, 0, 0);
        EXPECT_STREQ(paint.reference, c.reference);
    }
}

TEST(Paint, AnyTextGivesComponentsInRange) {
    const std::string_view words[] = {"#",   "F0", "abc",  "rgb(", "-1e9", "%",    ",",
                                      "256", ")",  "url(", "red",  " ",    "none", "currentColor"};
    forHostileTexts(words, [](const ExactText& text) {
        const SvgColor color = parsePaint(text).color;
        for (const float component : {color.red, color.green, color.blue}) {
            ASSERT_TRUE(component >= 0.0F && component <= 1.0F) << text;
        }
    });
}

}  // namespace
}  // namespace quor
