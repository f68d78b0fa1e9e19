#include "rejected_document.h"

#include <tinyxml2.h>

#include <cstddef>
#include <string_view>

namespace tool {

namespace {

constexpr std::size_t kLongestName = 80;  // of an element, in a message

struct Explanation {
    tinyxml2::XMLError error;
    const char* text;
};

// clang-format off
constexpr Explanation kExplanations[] = {
    {tinyxml2::XML_ERROR_PARSING_ELEMENT,
     "an element is malformed: its name is missing or it does not end in '>'"},
    {tinyxml2::XML_ERROR_PARSING_ATTRIBUTE,
     "an attribute is malformed or given twice; write each one once, as name=\"value\""},
    {tinyxml2::XML_ERROR_PARSING_TEXT,
     "text runs to the end of the file: an element is not closed, or it follows the last one"},
    {tinyxml2::XML_ERROR_PARSING_CDATA,
     "a CDATA section does not end in ']]>'"},
    {tinyxml2::XML_ERROR_PARSING_COMMENT,
     "a comment does not end in '-->'"},
    {tinyxml2::XML_ERROR_PARSING_DECLARATION,
     "a declaration '<?' does not end in '?>' or does not stand at the start of the file"},
    {tinyxml2::XML_ERROR_PARSING_UNKNOWN,
     "a '<!' does not end in '>'"},
    {tinyxml2::XML_ERROR_EMPTY_DOCUMENT,
     "there is no element; the file must hold an <svg> element"},
    {tinyxml2::XML_ERROR_MISMATCHED_ELEMENT,
     "an element is not closed, or another one is closed before it"},
    {tinyxml2::XML_ERROR_PARSING,
     "this is no XML: no element, comment or text begins here; in text, write &lt; for '<'"},
    {tinyxml2::XML_ELEMENT_DEPTH_EXCEEDED,
     "elements nest too deep; flatten the groups of the document"},
};
// clang-format on

std::string explain(tinyxml2::XMLError error) {
    for (const Explanation& explanation : kExplanations)
        if (explanation.error == error) return explanation.text;
    return std::string("the XML is not well-formed (") +
           tinyxml2::XMLDocument::ErrorIDToName(error) + ")";
}

/// The element that the parser blames, as " (<name>)"; empty when it names none.
std::string blamedElement(const tinyxml2::XMLDocument& xml) {
    constexpr std::string_view kMark = "XMLElement name=";
    const std::string detail = xml.ErrorStr();
    const std::size_t mark = detail.find(kMark);
    if (mark == std::string::npos || mark + kMark.size() == detail.size()) return {};
    return " (<" + detail.substr(mark + kMark.size()) + ">)";
}

}  // namespace

FileError explainRejectedDocument(const std::string& text) {
    tinyxml2::XMLDocument xml;
    const tinyxml2::XMLError error = xml.Parse(text.data(), text.size());
    if (error != tinyxml2::XML_SUCCESS)
        return FileError(explain(error) + blamedElement(xml), xml.ErrorLineNum());
    const tinyxml2::XMLElement* root = xml.RootElement();
    if (root == nullptr) return FileError(explain(tinyxml2::XML_ERROR_EMPTY_DOCUMENT));
    const std::string_view name = std::string_view(root->Name()).substr(0, kLongestName);
    if (name.substr(0, 3) == "svg" && name.find(':') == name.npos)
        return FileError("the memory does not suffice to load it; close other programs");
    return FileError(
        "the root element is <" + std::string(name) + ">; it must be <svg>, without a prefix",
        root->GetLineNum());
}

}  // namespace tool
