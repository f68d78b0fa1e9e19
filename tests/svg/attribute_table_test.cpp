#include "svg/attribute_table.h"

#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <string>

#include "hostile_text.h"
#include "svg/style_declarations.h"

namespace quor {
namespace {

TEST(AttributeId, OnlyExactNamesAreFound) {
    for (const std::string name :
         {"fill", "stroke-dashoffset", "xml:id", "d", "r", "y2", "offset"}) {
        SCOPED_TRACE(name);
        EXPECT_NE(findAttributeId(name), AttributeId::kCount);
        for (const std::string& other : {name + "-", "-" + name, name.substr(1) + "-", "X" + name,
                                         static_cast<char>(name[0] ^ 0x20) + name.substr(1)}) {
            EXPECT_EQ(findAttributeId(other), AttributeId::kCount) << other;
        }
    }
    EXPECT_EQ(findAttributeId(""), AttributeId::kCount);
}

/// Some known attributes of a `g` element as `name=value|`.
std::string attributesOf(const std::string& written) {
    tinyxml2::XMLDocument document;
    EXPECT_EQ(document.Parse(("<g " + written + "/>").c_str()), tinyxml2::XML_SUCCESS) << written;
    base::Arena arena;
    AttributeTable table;
    EXPECT_TRUE(table.read(*document.RootElement(), arena));
    std::string all;
    for (const char* name : {"fill", "style", "xlink:href", "x", "y", "d"}) {
        const char* value = table[findAttributeId(name)];
        if (value != nullptr) all += std::string(name) + "=" + value + "|";
    }
    return all;
}

TEST(AttributeTable, HoldsTheKnownAttributesInAnyOrder) {
    EXPECT_EQ(attributesOf(""), "");
    EXPECT_EQ(attributesOf("unknown='1' fillx='2'"), "");
    EXPECT_EQ(attributesOf("d='M0 0' class='c' y='' xlink:href='#&amp;' x='1' "),
              "xlink:href=#&|x=1|y=|d=M0 0|");
}

TEST(AttributeTable, DeclarationsReplaceAttributes) {
    EXPECT_EQ(attributesOf("style='fill:red;d:M1 1;what:ever' fill='blue' x='2'"),
              "fill=red|style=fill:red;d:M1 1;what:ever|x=2|d=M1 1|");
    EXPECT_EQ(attributesOf("style='style:none;x:1'"), "style=none|x=1|");
}

/// The declarations of a text, which it cuts up, as `name=value|`.
std::string declarationsOf(const ExactText& text) {
    StyleDeclarations declarations(const_cast<char*>(static_cast<const char*>(text)));
    std::string all;
    while (declarations.next()) {
        all += std::string(declarations.name()) + "=" + declarations.value() + "|";
    }
    return all;
}

TEST(StyleDeclarations, AreReadUntilTheTextMakesNoSense) {
    const std::string longest(31, 'n');
    const struct {
        std::string style, declarations;
    } cases[] = {
        {"fill:red;fill:blue", "fill=red|fill=blue|"},
        {" fill : red ;\n\tstroke:url(#a) none;", "fill=red |stroke=url(#a) none|"},
        {"fill red; stroke:blue", "stroke=blue|"},
        {"fill;stroke:blue", "stroke=blue|"},
        {":red;1x:2;;x:3", "x=3|"},
        {"fill:;stroke:  ;x:1", "x=1|"},
        {"-a-B:c:d", "-a-B=c:d|"},
        {"x:1;y", "x=1|"},
        {"x:1;y ", "x=1|"},
        {"x:1;y:", "x=1|"},
        {"x:\xC3\xA9;\xC3:1;y:2", "x=\xC3\xA9|y=2|"},
        {longest + ":1;x:1", longest + "=1|x=1|"},
        {"x:1;" + longest + "n:1;y:1", "x=1|"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(declarationsOf(ExactText(c.style)), c.declarations) << c.style;
}

TEST(StyleDeclarations, AnyTextEnds) {
    const std::string_view words[] = {"fill", ":", ";", "-", " ", "red", "x", "\n", "1"};
    forHostileTexts(words, [](const ExactText& text) { (void)declarationsOf(text); });
}

}  // namespace
}  // namespace quor
