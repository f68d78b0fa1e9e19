#include "document_edit.h"

#include <tinyxml2.h>

#include <cstring>
#include <string_view>

#include "element_walk.h"
#include "file_error.h"

namespace tool {

namespace {

using tinyxml2::XMLDocument;
using tinyxml2::XMLElement;
using tinyxml2::XMLNode;

std::string printed(const XMLDocument& xml) {
    tinyxml2::XMLPrinter printer(nullptr, true);
    xml.Print(&printer);
    return {printer.CStr(), static_cast<std::size_t>(printer.CStrSize() - 1)};
}

bool namesColor(std::string_view property, std::string_view value) {
    const bool isPaint = property == "fill" || property == "stroke";
    return isPaint && !value.empty() && value != "none" && value != "inherit";
}

bool hasColor(const XMLElement& element) {
    bool found = false;
    forEachProperty(element, [&found](std::string_view property, std::string_view value) {
        found |= namesColor(property, value);
    });
    return found;
}

bool drawingHasColor(const XMLElement* root) {
    for (const XMLElement* element = root; element != nullptr; element = nextElement(element, root))
        if (hasColor(*element)) return true;
    return false;
}

/// Sets a property at the root. Declarations of its style attribute weigh more than attributes, and
/// the last one of a property counts.
void setProperty(XMLElement& root, const char* property, const std::string& value) {
    root.SetAttribute(property, value.c_str());
    const char* style = root.Attribute("style");
    if (style == nullptr) return;
    const std::string longer = std::string(style) + ";" + property + ":" + value;
    root.SetAttribute("style", longer.c_str());
}

XMLElement* findById(XMLElement* root, const std::string& id) {
    for (XMLElement* element = root; element != nullptr; element = nextElement(element, root)) {
        for (const char* name : {"id", "xml:id"}) {
            const char* value = element->Attribute(name);
            if (value != nullptr && id == value) return element;
        }
    }
    return nullptr;
}

/// Moves the element's siblings into a `defs` element: they are drawn no more, but found.
void hideSiblings(XMLDocument& xml, XMLElement* element) {
    XMLNode* parent = element->Parent();
    XMLElement* hidden = xml.NewElement("defs");
    for (XMLNode* child = parent->FirstChild(); child != nullptr;) {
        XMLNode* next = child->NextSibling();
        if (child != element) hidden->InsertEndChild(child);
        child = next;
    }
    parent->InsertFirstChild(hidden);
}

/// Elements whose content shows only where something refers to it.
bool isNeverDrawn(const XMLElement& element) {
    for (const char* name : {"defs", "symbol", "clipPath", "mask", "pattern", "marker",
                             "linearGradient", "radialGradient", "solidColor", "filter"})
        if (std::strcmp(element.Name(), name) == 0) return true;
    return false;
}

}  // namespace

std::string recolored(const std::string& text, const std::string& color) {
    XMLDocument xml(true, tinyxml2::PRESERVE_WHITESPACE);
    if (xml.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS) return text;
    XMLElement* root = xml.RootElement();
    if (root == nullptr) return text;
    if (!drawingHasColor(root)) setProperty(*root, "fill", color);
    setProperty(*root, "color", color);
    return printed(xml);
}

std::string isolated(const std::string& text, const std::string& id) {
    XMLDocument xml(true, tinyxml2::PRESERVE_WHITESPACE);
    if (xml.Parse(text.data(), text.size()) != tinyxml2::XML_SUCCESS) return text;
    XMLElement* root = xml.RootElement();
    XMLElement* element = root == nullptr ? nullptr : findById(root, id);
    if (element == nullptr)
        throw FileError("there is no element with the id '" + id + "'; quor info lists them");
    for (XMLElement* level = element; level != root; level = level->Parent()->ToElement()) {
        if (isNeverDrawn(*level)) {
            throw FileError("the element '" + id + "' is in <" + level->Name() +
                                ">, which is not drawn by itself; name a <use> of it",
                            level->GetLineNum());
        }
        hideSiblings(xml, level);
    }
    return printed(xml);
}

}  // namespace tool
