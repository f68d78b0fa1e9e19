#include <gtest/gtest.h>

#include "svg/gradient.h"
#include "tree_fixture.h"

namespace quor {
namespace {

TEST(GradientAttributes, OffsetsAreNumbersOrPercentagesClampedToOne) {
    struct Case {
        const char* text;
        float offset;
    };
    const Case cases[] = {
        {"offset='0.25'", 0.25F},    {"offset='25%'", 0.25F},
        {"offset='150%'", 1.0F},     {"offset='-0.5'", 0.0F},
        {"offset='2'", 1.0F},        {"offset='1e30%'", 1.0F},
        {"offset='1e300'", 1.0F},    {"offset='x'", 0.0F},
        {"offset=''", 0.0F},         {"", 0.0F},
        {"style='offset:.5'", 0.5F},
    };
    for (const Case& c : cases) {
        const SvgTree tree(inSvg(std::string("<stop id='s' ") + c.text + "/>"));
        EXPECT_FLOAT_EQ(tree.find<SvgStop>("s")->offset, c.offset) << c.text;
    }
}

TEST(GradientAttributes, UnitsAndSpreadKeepTheirValueWhenUnreadable) {
    const SvgTree tree(inSvg(
        "<linearGradient id='none'/>"
        "<radialGradient id='set' gradientUnits='userSpaceOnUse' spreadMethod='reflect'/>"
        "<linearGradient id='prefix' gradientUnits='userSpaceOnUsers' spreadMethod='repeats'/>"
        "<linearGradient id='bad' gradientUnits='userspaceonuse' spreadMethod='mirror'/>"));
    struct Case {
        const char* id;
        GradientUnits units;
        SpreadMethod spread;
        bool has;
    };
    const Case cases[] = {
        {"none", GradientUnits::kObjectBoundingBox, SpreadMethod::kPad, false},
        {"set", GradientUnits::kUserSpaceOnUse, SpreadMethod::kReflect, true},
        {"prefix", GradientUnits::kUserSpaceOnUse, SpreadMethod::kRepeat, true},
        {"bad", GradientUnits::kObjectBoundingBox, SpreadMethod::kPad, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.id);
        const auto* gradient = tree.find<SvgGradient>(c.id);
        EXPECT_EQ(gradient->gradientUnits, c.units);
        EXPECT_EQ(gradient->spreadMethod, c.spread);
        EXPECT_EQ(gradient->hasUnits, c.has);
        EXPECT_EQ(gradient->hasSpreadMethod, c.has);
    }
}

TEST(GradientAttributes, GeometryIsKeptAsWritten) {
    const SvgTree tree(
        inSvg("<linearGradient id='l' x1='1' y1='50%' x2='3mm' xlink:href='#r'"
              " gradientTransform='translate(4 5)' fill='red'/>"
              "<radialGradient id='r' cx='1' cy='2' fx='3' fy='4' r='5cx'/>"));
    const auto* linear = tree.find<SvgLinearGradient>("l");
    EXPECT_EQ(linear->x1.unit, LengthUnit::kUser);
    EXPECT_EQ(linear->y1.unit, LengthUnit::kPercent);
    EXPECT_EQ(linear->y1.value, 50.0F);
    EXPECT_EQ(linear->x2.unit, LengthUnit::kMillimetre);
    EXPECT_EQ(linear->y2.unit, LengthUnit::kNone);
    EXPECT_STREQ(linear->href, "#r");
    EXPECT_TRUE(linear->hasTransform);
    EXPECT_EQ(linear->gradientTransform.m02, 4.0F);
    EXPECT_EQ(linear->style().setMask, StyleBit::kDisplay | StyleBit::kFill);

    const auto* radial = tree.find<SvgRadialGradient>("r");
    EXPECT_EQ(radial->fx.value, 3.0F);
    EXPECT_EQ(radial->fy.value, 4.0F);
    EXPECT_EQ(radial->r.unit, LengthUnit::kNone);
    EXPECT_EQ(radial->href, nullptr);
    EXPECT_FALSE(radial->hasTransform);
    EXPECT_TRUE(radial->gradientTransform.isIdentity());
}

struct ColorCase {
    const char* attributes;  ///< with P for the property's first word
    float red, green, alpha;
    bool isFinal;
};

// Inside a group with color green, P-color red and P-opacity 0.25.
constexpr ColorCase kColorCases[] = {
    {"", 0, 0, 1, true},
    {"P-color='lime'", 0, 1, 1, true},
    {"P-color='yellow' P-opacity='0.5'", 1, 1, 0.5F, true},
    {"style='P-color:lime;P-opacity:.75'", 0, 1, 0.75F, true},
    {"P-color='nonsense' P-opacity='-3'", 0, 0, 0, true},
    {"P-opacity='1e30'", 0, 0, 1, true},
    {"P-color='inherit'", 1, 0, 1, false},
    {"P-color='currentColor'", 0, 1, 1, false},
    {"P-color='currentColor' color='red'", 1, 0, 1, false},
    {"P-color='lime' P-opacity='inherit'", 0, 1, 0.25F, false},
};

std::string withProperty(std::string text, const std::string& property) {
    for (size_t at; (at = text.find("P-")) != std::string::npos;) text.replace(at, 1, property);
    return text;
}

template <class Node>
void expectResolvedColors(const std::string& element, const std::string& property) {
    for (const ColorCase& c : kColorCases) {
        const std::string text =
            withProperty(std::string("<g color='lime' P-color='red' P-opacity='0.25'><") + element +
                             " id='n' " + c.attributes + "/></g>",
                         property);
        SCOPED_TRACE(text);
        const SvgTree tree(inSvg(text));
        for (int query = 0; query < 2; ++query) {  // cached or not, the answer stays
            const ResolvedColor& resolved = tree.find<Node>("n")->resolvedColor();
            EXPECT_EQ(resolved.color.red, c.red);
            EXPECT_EQ(resolved.color.green, c.green);
            EXPECT_EQ(resolved.color.blue, 0.0F);
            EXPECT_EQ(resolved.color.alpha, c.alpha);
            EXPECT_EQ(resolved.isFinal, c.isFinal);
        }
    }
}

TEST(GradientAttributes, StopColorsResolve) { expectResolvedColors<SvgStop>("stop", "stop"); }

TEST(GradientAttributes, SolidColorsResolve) {
    expectResolvedColors<SvgSolidColor>("solidColor", "solid");
}

TEST(GradientAttributes, InheritWithoutAnAncestorIsTheInitialValue) {
    const SvgTree tree("<stop id='s' stop-color='inherit' stop-opacity='inherit'/>");
    const ResolvedColor& resolved = tree.find<SvgStop>("s")->resolvedColor();
    EXPECT_EQ(resolved.color.red, 0.0F);
    EXPECT_EQ(resolved.color.alpha, 1.0F);
}

TEST(GradientAttributes, BorrowedColorsFollowANewParent) {
    const SvgTree tree(
        inSvg("<stop id='s' stop-color='currentColor'/><g id='g' color='red'><rect/></g>"));
    auto* stop = tree.find<SvgStop>("s");
    EXPECT_EQ(stop->resolvedColor().color.red, 0.0F);
    stop->setParent(tree.find("g"));
    EXPECT_EQ(stop->resolvedColor().color.red, 1.0F);
}

}  // namespace
}  // namespace quor
