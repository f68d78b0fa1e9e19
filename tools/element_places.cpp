#include "element_places.h"

#include <tinyxml2.h>

namespace tool {

namespace {

// Trees are no deeper than the XML library lets elements nest.
void nameChildren(tinyxml2::XMLElement& parent, const std::string& parentPlace) {
    int index = 0;
    for (tinyxml2::XMLElement* child = parent.FirstChildElement(); child != nullptr;
         child = child->NextSiblingElement(), ++index) {
        const std::string place = parentPlace + std::to_string(index);
        const bool hasId =
            child->Attribute("id") != nullptr || child->Attribute("xml:id") != nullptr;
        if (!hasId) child->SetAttribute("id", (kPlacePrefix + place).c_str());
        nameChildren(*child, place + '.');
    }
}

}  // namespace

std::string withPlaces(const std::string& text) {
    tinyxml2::XMLDocument document;
    if (document.Parse(text.c_str()) != tinyxml2::XML_SUCCESS || document.RootElement() == nullptr)
        return text;
    nameChildren(*document.RootElement(), "");
    tinyxml2::XMLPrinter printer(nullptr, true);
    document.Print(&printer);
    return printer.CStr();
}

}  // namespace tool
