// Cuts the text of a `style` attribute into names and values, in place.

#include "svg/style_declarations.h"

#include "svg/text_cursor.h"

namespace quor {
namespace {

constexpr size_t kMaxNameLength = 31;

constexpr bool isNameCharacter(char c) noexcept { return isAsciiLetter(c) || c == '-'; }

}  // namespace

bool StyleDeclarations::next() noexcept {
    while (*at_ != '\0') {
        skipSpaces();
        const char* first = at_;
        while (isNameCharacter(*at_)) ++at_;
        name_ = {first, static_cast<size_t>(at_ - first)};
        skipSpaces();
        if (name_.size() > kMaxNameLength || *at_ == '\0') return false;
        const bool hasColon = *at_ == ':';
        if (hasColon) ++at_;
        skipSpaces();
        value_ = cutAtSemicolon();
        if (hasColon && !name_.empty() && *value_ != '\0') return true;
    }
    return false;
}

void StyleDeclarations::skipSpaces() noexcept {
    while (isSvgSpace(*at_)) ++at_;
}

/// The text up to the next ';', which becomes its end and is passed.
char* StyleDeclarations::cutAtSemicolon() noexcept {
    char* first = at_;
    while (*at_ != '\0' && *at_ != ';') ++at_;
    if (*at_ == ';') *at_++ = '\0';
    return first;
}

}  // namespace quor
