#include "svg/node_factory.h"

#include <gtest/gtest.h>

#include <optional>

#include "svg/shapes.h"
#include "tree_fixture.h"

namespace quor {
namespace {

using Kind = SvgNodeKind;

TEST(NodeFactory, TheFirstKeywordThatANameBeginsWithDecides) {
    struct Case {
        const char* name;
        std::optional<Kind> kind;  ///< none: dropped
    };
    const Case cases[] = {
        {"circle", Kind::kCircle},     {"clipPath", std::nullopt},
        {"defs", Kind::kDefs},         {"defsx", Kind::kDefs},
        {"ellipse", Kind::kEllipse},   {"font", std::nullopt},
        {"font-face", std::nullopt},   {"g", Kind::kGroup},
        {"glyph", Kind::kGroup},       {"line", Kind::kLine},
        {"lines", Kind::kLine},        {"linearGradient", Kind::kLinearGradient},
        {"linear", Kind::kLine},       {"marker", std::nullopt},
        {"mask", std::nullopt},        {"path", Kind::kPath},
        {"pattern", std::nullopt},     {"polygon", Kind::kPolygon},
        {"polyline", Kind::kPolyline}, {"radialGradient", Kind::kRadialGradient},
        {"rect", Kind::kRect},         {"solidColor", Kind::kSolidColor},
        {"stop", Kind::kStop},         {"stopper", Kind::kStop},
        {"svg", Kind::kSvg},           {"symbol", std::nullopt},
        {"use", Kind::kUse},           {"G", Kind::kGeneric},
        {"text", Kind::kGeneric},      {"a", Kind::kGeneric},
        {"lin", Kind::kGeneric},       {"radialgradient", Kind::kGeneric},
        {"zebra", Kind::kGeneric},     {"\xC3\xA9t\xC3\xA9", Kind::kGeneric},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string name = c.name;
        const SvgTree tree("<" + name + " viewBox='0'><rect id='inside'/></" + name + ">");
        EXPECT_EQ(tree.status, Status::kOk);
        ASSERT_EQ(tree.root != nullptr, c.kind.has_value());
        EXPECT_EQ(tree.find("inside") != nullptr, c.kind.has_value());
        if (c.kind.has_value()) {
            EXPECT_EQ(tree.root->kind(), *c.kind);
            const auto children = childrenOf(*tree.root);
            ASSERT_EQ(children.size(), 1U);
            EXPECT_EQ(children[0]->parent(), tree.root.get());
        }
    }
}

TEST(NodeFactory, ChildrenStandInDocumentOrderWithoutTheDropped) {
    const SvgTree tree(inSvg("text<g/><!-- no --><mask><g id='masked'/></mask><rect/><use/>"));
    const auto children = childrenOf(*tree.root);
    ASSERT_EQ(children.size(), 3U);
    EXPECT_EQ(children[0]->kind(), Kind::kGroup);
    EXPECT_EQ(children[1]->kind(), Kind::kRect);
    EXPECT_EQ(children[2]->kind(), Kind::kUse);
    EXPECT_EQ(tree.root->parent(), nullptr);
    EXPECT_EQ(tree.find("masked"), nullptr);
}

TEST(NodeFactory, StyleDeclarationsWinOverAttributes) {
    const SvgTree tree(
        inSvg("<rect id='plain' stroke-width='2' style='stroke-width:5; id:named; x:7'/>"));
    const SvgNode* rect = tree.find("named");  // `style` may set anything, the id too
    ASSERT_NE(rect, nullptr);
    EXPECT_EQ(tree.find("plain"), nullptr);
    EXPECT_STREQ(rect->id(), "named");
    EXPECT_STREQ(rect->attribute(AttributeId::kX), "7");
    EXPECT_EQ(rect->attribute(AttributeId::kY), nullptr);
    EXPECT_EQ(rect->style().strokeWidth, 5.0F);
}

TEST(NodeFactory, TheElementThatEndsLastOwnsAnId) {
    const SvgTree tree(
        inSvg("<g id='a'><rect id='a'/></g><g id='b'/><rect id='b'/>"
              "<circle xml:id='c'/><line id='d' xml:id='e'/>"));
    EXPECT_EQ(tree.find("a")->kind(), Kind::kGroup);
    EXPECT_EQ(tree.find("b")->kind(), Kind::kRect);
    EXPECT_EQ(tree.find("c")->kind(), Kind::kCircle);
    EXPECT_STREQ(tree.find("c")->id(), "c");
    EXPECT_NE(tree.find("d"), nullptr);
    EXPECT_EQ(tree.find("e"), nullptr);
}

TEST(NodeFactory, AReferenceLosesOneHashAndEndsAtAParenthesis) {
    const SvgTree tree(inSvg("<rect id='a'/><rect id='#b'/>"));
    const SvgNode* a = tree.find("a");
    ASSERT_NE(a, nullptr);
    for (const char* reference : {"#a", "a", "#a)", "#a) red", "a)#b", "#a \t)", "#a' )"}) {
        EXPECT_EQ(tree.resources.findReference(reference), a) << reference;
    }
    EXPECT_EQ(tree.resources.findReference("##b"), tree.find("#b"));
    for (const char* reference : {"", "#", ")", "#)a", "##a", "#A", "#aa", "# a"}) {
        EXPECT_EQ(tree.resources.findReference(reference), nullptr) << reference;
    }
}

TEST(InheritedLookup, ClimbsPastInheritToTheInitialValue) {
    const SvgTree tree(
        inSvg("<g color='red'><g color='inherit'><rect id='a'/></g></g>"
              "<rect id='b' color='inheritance'/><rect id='c' style='color:blue'/>"
              "<g stop-opacity='0.5'><stop id='d' stop-opacity='inherit'/></g>"));
    EXPECT_STREQ(lookupInherited(tree.find("a"), AttributeId::kColor), "red");
    EXPECT_STREQ(lookupInherited(tree.find("b"), AttributeId::kColor), "#000");
    EXPECT_STREQ(lookupInherited(tree.find("c"), AttributeId::kColor), "blue");
    EXPECT_STREQ(lookupInherited(tree.find("d"), AttributeId::kStopOpacity), "0.5");
    EXPECT_STREQ(lookupInherited(tree.find("a"), AttributeId::kStopOpacity), "1");
    EXPECT_STREQ(lookupInherited(nullptr, AttributeId::kSolidColor), "#000");
    EXPECT_EQ(lookupInherited(tree.find("a"), AttributeId::kPoints), nullptr);
}

}  // namespace
}  // namespace quor
