#pragma once

#include <string_view>

namespace quor {

/// Reads the declarations of a `style` text, which it cuts into pieces in place. Malformed
/// declarations are passed over; a name of more than 31 letters, or a text that ends before the
/// colon, ends the reading.
class StyleDeclarations {
public:
    /// The text is zero-terminated and outlives what is read from it.
    explicit StyleDeclarations(char* text) noexcept : at_(text) {}

    /// Moves to the next declaration with a name and a value. False when there is none.
    bool next() noexcept;

    std::string_view name() const noexcept { return name_; }
    /// Zero-terminated, never empty.
    const char* value() const noexcept { return value_; }

private:
    void skipSpaces() noexcept;
    char* cutAtSemicolon() noexcept;

    char* at_;
    std::string_view name_;
    const char* value_ = nullptr;
};

}  // namespace quor
