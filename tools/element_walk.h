#pragma once

#include <tinyxml2.h>

#include <algorithm>
#include <string_view>

namespace tool {

/// The element after this one in document order, inside `root`; null after the last.
template <class Element>
Element* nextElement(Element* element, const tinyxml2::XMLElement* root) {
    if (Element* child = element->FirstChildElement()) return child;
    while (element != root) {
        if (Element* sibling = element->NextSiblingElement()) return sibling;
        element = element->Parent()->ToElement();
    }
    return nullptr;
}

inline std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kSpaces = " \t\r\n";
    const std::size_t begin = text.find_first_not_of(kSpaces);
    if (begin == text.npos) return {};
    return text.substr(begin, text.find_last_not_of(kSpaces) - begin + 1);
}

/// Calls take(name, value) for each attribute, and each declaration of a style attribute.
template <class Take>
void forEachProperty(const tinyxml2::XMLElement& element, Take take) {
    for (const auto* attribute = element.FirstAttribute(); attribute != nullptr;
         attribute = attribute->Next()) {
        const std::string_view name = attribute->Name();
        std::string_view value = attribute->Value();
        take(name, trimmed(value));
        while (name == "style" && !value.empty()) {
            const std::size_t end = std::min(value.find(';'), value.size());
            const std::string_view declaration = value.substr(0, end);
            const std::size_t colon = declaration.find(':');
            if (colon != declaration.npos)
                take(trimmed(declaration.substr(0, colon)), trimmed(declaration.substr(colon + 1)));
            value.remove_prefix(std::min(end + 1, value.size()));
        }
    }
}

}  // namespace tool
