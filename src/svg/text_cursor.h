#pragma once

#include <cstddef>
#include <cstring>

namespace quor {

/// White space of attribute values: tab, line feed, form feed, carriage return, space.
constexpr bool isSvgSpace(char c) noexcept {
    return c == ' ' || c == '\t' || c == '\n' || c == '\f' || c == '\r';
}
constexpr bool isAsciiDigit(char c) noexcept { return c >= '0' && c <= '9'; }
constexpr bool isAsciiLetter(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
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
    /// Keyword tests compare a prefix: "visiblex" begins with "visible".
    template <size_t N>
    bool beginsWith(const char (&keyword)[N]) const noexcept {
        return std::strncmp(at, keyword, N - 1) == 0;
    }
    template <size_t N>
    bool take(const char (&keyword)[N]) noexcept {
        if (!beginsWith(keyword)) return false;
        at += N - 1;
        return true;
    }
};

}  // namespace quor
