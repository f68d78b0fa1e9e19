#include "svg/style.h"

#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <string>
#include <vector>

#include "svg/presentation_attributes.h"
#include "svg/style_keywords.h"

namespace quor {
namespace {

/// A style read from attributes over a fresh one, with what it points to.
struct ReadStyle {
    tinyxml2::XMLDocument document;
    base::Arena arena;
    base::Array<float> dashes;
    SvgStyle style;
    SvgMatrix transform;

    explicit ReadStyle(const std::string& attributes) {
        document.Parse(("<g " + attributes + "/>").c_str());
        EXPECT_FALSE(document.Error()) << attributes;
        Rect viewport;
        viewport.set(0.0F, 0.0F, 300.0F, 400.0F);
        AttributeTable table;
        EXPECT_TRUE(table.read(*document.RootElement(), arena));
        EXPECT_EQ(readPresentationAttributes(table, {96.0F, &viewport}, style, dashes, transform),
                  Status::kOk);
    }
    bool isSet(uint32_t bit) const { return (style.setMask & bit) != 0; }
};

TEST(Style, NumbersKeepTheirRangesAndBits) {
    const struct {
        const char* attribute;
        float SvgStyle::*field;
        float value;
        uint32_t bit;
        bool isSet;
    } cases[] = {
        {"fill-opacity='1.5'", &SvgStyle::fillOpacity, 1, StyleBit::kFillOpacity, true},
        {"fill-opacity=' .25'", &SvgStyle::fillOpacity, 0.25F, StyleBit::kFillOpacity, true},
        {"fill-opacity='-2'", &SvgStyle::fillOpacity, 0, StyleBit::kFillOpacity, true},
        {"fill-opacity=''", &SvgStyle::fillOpacity, -1, StyleBit::kFillOpacity, false},
        {"fill-opacity='x'", &SvgStyle::fillOpacity, -1, StyleBit::kFillOpacity, false},
        {"stroke-opacity='0'", &SvgStyle::strokeOpacity, 0, StyleBit::kStrokeOpacity, true},
        {"stroke-opacity='inherit'", &SvgStyle::strokeOpacity, -1, StyleBit::kStrokeOpacity, false},
        {"stroke-width='1in'", &SvgStyle::strokeWidth, 96, StyleBit::kStrokeWidth, true},
        {"stroke-width='10%'", &SvgStyle::strokeWidth, 35.355339F, StyleBit::kStrokeWidth, true},
        {"stroke-width='inherit'", &SvgStyle::strokeWidth, -1, StyleBit::kStrokeWidth, false},
        {"stroke-width='2cx'", &SvgStyle::strokeWidth, -1, StyleBit::kStrokeWidth, false},
        {"stroke-width='thin'", &SvgStyle::strokeWidth, -1, StyleBit::kStrokeWidth, false},
        {"stroke-miterlimit='1'", &SvgStyle::strokeMiterLimit, 1, StyleBit::kStrokeMiterLimit,
         true},
        {"stroke-miterlimit='0.5'", &SvgStyle::strokeMiterLimit, -1, StyleBit::kStrokeMiterLimit,
         false},
        {"stroke-dashoffset='-3'", &SvgStyle::strokeDashOffset, -3, StyleBit::kStrokeDashOffset,
         true},
        {"stroke-dashoffset='inherit'", &SvgStyle::strokeDashOffset, 0, StyleBit::kStrokeDashOffset,
         false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.attribute);
        const ReadStyle read(c.attribute);
        EXPECT_FLOAT_EQ(read.style.*c.field, c.value);
        EXPECT_EQ(read.style.setMask, StyleBit::kDisplay | (c.isSet ? c.bit : 0));
    }
}

TEST(Style, DashListsAreEvenAndInUserUnits) {
    const struct {
        const char* value;
        bool isSet;
        int count;
        std::vector<float> dashes;
    } cases[] = {
        {"5", true, 2, {5, 5}},
        {"5,3,2", true, 6, {5, 3, 2, 5, 3, 2}},
        {" 1in , 5", true, 2, {96, 5}},
        {"5 3 x 2", true, 2, {5, 3}},
        {"5 3 2cx", true, 2, {5, 3}},
        {" none", true, 0, {}},
        {"inherit", false, -1, {}},
        {"", false, 0, {}},
        {"x", false, 0, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.value);
        const ReadStyle read("stroke-dasharray='" + std::string(c.value) + "'");
        const DashList& list = read.style.strokeDashArray;
        EXPECT_EQ(read.isSet(StyleBit::kStrokeDashArray), c.isSet);
        ASSERT_EQ(list.count, c.count);
        for (size_t i = 0; i < c.dashes.size(); ++i) EXPECT_FLOAT_EQ(list.values[i], c.dashes[i]);
    }
    std::string many;
    for (int i = 0; i < 999; ++i) many += "7 ";
    EXPECT_EQ(ReadStyle("stroke-dasharray='" + many + "'").style.strokeDashArray.count, 1998);
}

template <class Enum>
int keywordCode(const char* text) {
    Enum value = static_cast<Enum>(77);
    return parseKeyword(text, value) ? static_cast<int>(value) : -1;
}

TEST(Style, KeywordsArePrefixesOfTheText) {
    struct Keyword {
        const char* text;
        int code;
    };
    const auto code = [](auto value) { return static_cast<int>(value); };
    const int shown = code(SvgDisplay::kShown);
    const struct {
        int (*code)(const char*);
        std::vector<Keyword> keywords;
    } enumerations[] = {
        {keywordCode<SvgDisplay>,
         {{"inline", shown},
          {"inline-table", shown},
          {"block", shown},
          {"list-item", shown},
          {"run-in", shown},
          {"compact", shown},
          {"marker", shown},
          {"table", shown},
          {"table-row-group", shown},
          {"none", code(SvgDisplay::kNone)},
          {"inherit", code(SvgDisplay::kInherit)}}},
        {keywordCode<SvgVisibility>,
         {{"visible", code(SvgVisibility::kVisible)},
          {"visibly", code(SvgVisibility::kVisible)},
          {"hidden", code(SvgVisibility::kHidden)},
          {"collapse", code(SvgVisibility::kHidden)},
          {"inherit", code(SvgVisibility::kInherit)}}},
        {keywordCode<SvgFillRule>, {{"inherit", 0}, {"evenodd", 1}, {"nonzero", 2}}},
        {keywordCode<SvgLineCap>, {{"inherit", 0}, {"butt", 1}, {"round", 2}, {"square", 3}}},
        {keywordCode<SvgLineJoin>, {{"inherit", 0}, {"miter", 1}, {"round", 2}, {"bevel", 3}}},
        {keywordCode<SvgVectorEffect>, {{"inherit", 0}, {"none", 1}, {"non-scaling-stroke", 2}}},
    };
    for (const auto& e : enumerations) {
        for (const Keyword& keyword : e.keywords) {
            EXPECT_EQ(e.code(keyword.text), keyword.code) << keyword.text;
            EXPECT_EQ(e.code((" \n" + std::string(keyword.text) + "x").c_str()), keyword.code);
        }
        for (const char* unknown : {"", "n", "INHERIT", "\xE9", "zzzz", "inheri"}) {
            EXPECT_EQ(e.code(unknown), -1) << unknown;
        }
    }
}

TEST(Style, KeywordAttributesSetAndInheritClears) {
    const char* const names[] = {"visibility", "fill-rule", "stroke-linecap", "stroke-linejoin",
                                 "vector-effect"};
    const char* const values[] = {"hidden", "evenodd", "round", "bevel", "none"};
    const uint32_t bits[] = {StyleBit::kVisibility, StyleBit::kFillRule, StyleBit::kStrokeLineCap,
                             StyleBit::kStrokeLineJoin, StyleBit::kVectorEffect};
    for (size_t i = 0; i < std::size(names); ++i) {
        const auto read = [&](const char* value) {
            return ReadStyle(names[i] + std::string("='") + value + "'").style.setMask;
        };
        EXPECT_EQ(read(values[i]), StyleBit::kDisplay | bits[i]) << names[i];
        EXPECT_EQ(read("inherit"), StyleBit::kDisplay) << names[i];
        EXPECT_EQ(read("rubbish"), StyleBit::kDisplay) << names[i];
    }
    EXPECT_FALSE(ReadStyle("display='inherit'").isSet(StyleBit::kDisplay));
    EXPECT_EQ(ReadStyle("display='rubbish'").style.display, SvgDisplay::kShown);
    EXPECT_EQ(ReadStyle("transform='translate(3)'").transform.m02, 3.0F);
}

TEST(Style, PaintsAreSetUnlessEmpty) {
    EXPECT_EQ(ReadStyle("fill='rubbish' stroke='none'").style.setMask,
              StyleBit::kDisplay | StyleBit::kFill | StyleBit::kStroke);
    EXPECT_EQ(ReadStyle("fill='rubbish'").style.fill.type, PaintType::kColor);
    EXPECT_EQ(ReadStyle("fill='' stroke=''").style.setMask, StyleBit::kDisplay);
}

TEST(Style, CombineTakesExactlyWhatIsSet) {
    const ReadStyle all(
        "display='none' visibility='hidden' fill='red' fill-opacity='.5' fill-rule='evenodd' "
        "stroke='blue' stroke-width='3' stroke-linecap='round' stroke-linejoin='bevel' "
        "stroke-miterlimit='7' stroke-dasharray='5' stroke-dashoffset='2' stroke-opacity='.25' "
        "vector-effect='non-scaling-stroke'");
    ASSERT_EQ(all.style.setMask, StyleBit::kAll);
    /// One value a property, in the order of the bits.
    const auto values = [](const SvgStyle& s) {
        return std::vector<float>{static_cast<float>(s.display),
                                  static_cast<float>(s.visibility),
                                  s.fill.color.red,
                                  s.fillOpacity,
                                  static_cast<float>(s.fillRule),
                                  s.stroke.color.blue,
                                  s.strokeWidth,
                                  static_cast<float>(s.strokeLineCap),
                                  static_cast<float>(s.strokeLineJoin),
                                  s.strokeMiterLimit,
                                  static_cast<float>(s.strokeDashArray.count),
                                  s.strokeDashOffset,
                                  s.strokeOpacity,
                                  static_cast<float>(s.vectorEffect)};
    };
    const std::vector<float> initial = values(SvgStyle::initial());
    EXPECT_EQ(initial, (std::vector<float>{0, 0, 0, 1, 2, 0, 1, 1, 1, 4, 0, 0, 1, 1}));
    for (size_t property = 0; property < initial.size(); ++property) {
        SvgStyle specified = all.style;
        specified.setMask = 1U << property;
        SvgStyle computed = SvgStyle::initial();
        EXPECT_EQ(combine(specified, computed), specified.setMask);
        EXPECT_EQ(computed.setMask, StyleBit::kAll);
        std::vector<float> expected = initial;
        expected[property] = values(all.style)[property];
        EXPECT_NE(expected[property], initial[property]) << property;
        EXPECT_EQ(values(computed), expected) << property;
    }
}

}  // namespace
}  // namespace quor
