#include "svg/attribute_table.h"

#include <gtest/gtest.h>
#include <tinyxml2.h>

#include <set>
#include <string>

#include "hostile_text.h"
#include "svg/presentation_table.h"
#include "svg/style_attribute.h"

namespace quor {
namespace {

constexpr const char* kNames[] = {"display",
                                  "visibility",
                                  "transform",
                                  "fill",
                                  "fill-opacity",
                                  "fill-rule",
                                  "stroke",
                                  "stroke-opacity",
                                  "stroke-width",
                                  "stroke-linecap",
                                  "stroke-linejoin",
                                  "stroke-miterlimit",
                                  "stroke-dashoffset",
                                  "stroke-dasharray",
                                  "vector-effect",
                                  "style",
                                  "id",
                                  "xml:id",
                                  "xlink:href",
                                  "x",
                                  "y",
                                  "width",
                                  "height",
                                  "viewBox",
                                  "preserveAspectRatio",
                                  "x1",
                                  "y1",
                                  "x2",
                                  "y2",
                                  "cx",
                                  "cy",
                                  "fx",
                                  "fy",
                                  "r",
                                  "gradientTransform",
                                  "gradientUnits",
                                  "spreadMethod",
                                  "offset"};
static_assert(std::size(kNames) == static_cast<size_t>(AttributeId::kCount));

TEST(AttributeTable, FindsEachNameAndNoneThatIsAlmostOne) {
    for (size_t i = 0; i < std::size(kNames); ++i) {
        SCOPED_TRACE(kNames[i]);
        tinyxml2::XMLDocument document;
        tinyxml2::XMLElement* element = document.NewElement("g");
        document.InsertEndChild(element);
        const std::string name = kNames[i];
        for (const std::string& other : {name + "x", "x-" + name, name.substr(1) + "-", "X" + name,
                                         static_cast<char>(name[0] ^ 0x20) + name.substr(1)}) {
            element->SetAttribute(other.c_str(), "wrong");
        }
        AttributeTable table;
        table.read(*element);
        for (size_t id = 0; id < std::size(kNames); ++id) {
            EXPECT_EQ(table[static_cast<AttributeId>(id)], nullptr);
        }
        element->SetAttribute(kNames[i], "right");
        table.read(*element);
        EXPECT_STREQ(table[static_cast<AttributeId>(i)], "right");
    }
}

TEST(PropertyTable, KnowsInitialValuesByExactName) {
    EXPECT_STREQ(initialPropertyValue("audio-level"), "1");
    EXPECT_STREQ(initialPropertyValue("color"), "#000");
    EXPECT_STREQ(initialPropertyValue("fill-rule"), "nonzero");
    EXPECT_STREQ(initialPropertyValue("stop-color"), "#000");
    EXPECT_STREQ(initialPropertyValue("stroke-miterlimit"), "4");
    EXPECT_STREQ(initialPropertyValue("visibility"), "visible");
    for (const char* unknown : {"", "colo", "colors", "Color", "a", "zoom"}) {
        EXPECT_EQ(initialPropertyValue(unknown), nullptr) << unknown;
    }
}

/// The attributes of an element as `name=value|`, after its style was expanded.
std::string expanded(const char* style) {
    tinyxml2::XMLDocument document;
    tinyxml2::XMLElement* element = document.NewElement("g");
    document.InsertEndChild(element);
    element->SetAttribute("style", style);
    base::Array<char> scratch;
    EXPECT_EQ(expandStyleAttribute(*element, element->Attribute("style"), scratch), Status::kOk);
    std::string all;
    for (const auto* a = element->FirstAttribute()->Next(); a != nullptr; a = a->Next()) {
        all += std::string(a->Name()) + "=" + a->Value() + "|";
    }
    return all;
}

TEST(StyleExpansion, WritesDeclarationsAsAttributes) {
    const std::string longest(31, 'n');
    const struct {
        std::string style, attributes;
    } cases[] = {
        {"fill:red;fill:blue", "fill=blue|"},
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
        {"style:none;x:1", "x=1|"},  // replaces the text that is being read
    };
    for (const auto& c : cases) EXPECT_EQ(expanded(c.style.c_str()), c.attributes) << c.style;
}

TEST(StyleExpansion, AnyTextEnds) {
    const std::string_view words[] = {"fill", ":", ";", "-", " ", "red", "x", "\n", "1"};
    forHostileTexts(words, [](const ExactText& text) { (void)expanded(text); });
}

}  // namespace
}  // namespace quor
