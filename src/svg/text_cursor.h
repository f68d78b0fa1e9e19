#pragma once

#include <string_view>

namespace quor {

/// White space of attribute values: tab, line feed, form feed, carriage return, space.
constexpr bool isSvgSpace(char c) noexcept {
    return c == ' ' || c == '\t' || c == '\n' || c == '\f' || c == '\r';
}
constexpr bool isAsciiDigit(char c) noexcept { return c >= '0' && c <= '9'; }
constexpr bool isAsciiLetter(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Whether the text begins with the keyword: "visiblex" begins with "visible". A loop, because most
/// comparisons end at the first character.
inline bool beginsWith(const char* text, std::string_view keyword) noexcept {
    for (const char c : keyword) {
        if (*text++ != c) return false;
    }
    return true;
}

/// A read position in NUL-terminated attribute text. Nothing reads past the NUL.
struct TextCursor {
    const char* at;

    explicit constexpr TextCursor(const char* text) noexcept : at(text) {}

    bool atEnd() const noexcept { return *at == '\0'; }
    void skipSpaces() noexcept {
        while (isSvgSpace(*at)) ++at;
    }
    void skipCommasAndSpaces() noexcept {
        while (isSvgSpace(*at) || *at == ',') ++at;
    }
    bool beginsWith(std::string_view keyword) const noexcept {
        return quor::beginsWith(at, keyword);
    }
    bool take(std::string_view keyword) noexcept {
        if (!beginsWith(keyword)) return false;
        at += keyword.size();
        return true;
    }
};

}  // namespace quor
