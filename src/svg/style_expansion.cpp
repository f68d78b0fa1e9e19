#include <tinyxml2.h>

#include <cstring>
#include <new>

#include "svg/style_attribute.h"
#include "svg/text_cursor.h"

namespace quor {
namespace {

constexpr int kMaxNameLength = 31;
constexpr size_t kMaxStyleLength = 0x7FFFFFFE;

/// The XML library looks for an attribute's name along the whole list: without a limit a text of
/// many names would take time by its square.
constexpr int kMaxDeclarations = 1024;

constexpr bool isNameCharacter(char c) noexcept { return isAsciiLetter(c) || c == '-'; }

/// A declaration of a style text; both parts are terminated in place, in the text's own memory.
struct Declaration {
    char* name;
    char* value;
};

/// Reads the declarations of a text of its own, which it cuts into pieces.
class DeclarationReader {
public:
    explicit DeclarationReader(char* text) noexcept : at_(text) {}

    /// The next declaration with a name and a value; false at the end of the readable ones.
    bool next(Declaration& declaration) noexcept {
        while (*at_ != '\0') {
            skipSpaces();
            declaration.name = at_;
            while (isNameCharacter(*at_)) ++at_;
            char* nameEnd = at_;
            skipSpaces();
            if (nameEnd - declaration.name > kMaxNameLength || *at_ == '\0') return false;
            const bool hasColon = *at_ == ':';
            if (hasColon) ++at_;
            skipSpaces();
            declaration.value = cutAtSemicolon();
            *nameEnd = '\0';
            if (hasColon && *declaration.name != '\0' && *declaration.value != '\0') return true;
        }
        return false;
    }

private:
    void skipSpaces() noexcept {
        while (isSvgSpace(*at_)) ++at_;
    }

    /// The text up to the next ';', which becomes its end and is passed.
    char* cutAtSemicolon() noexcept {
        char* first = at_;
        while (*at_ != '\0' && *at_ != ';') ++at_;
        if (*at_ == ';') *at_++ = '\0';
        return first;
    }

    char* at_;
};

/// The copy is needed because a declaration may replace the very attribute that `style` points to.
bool copyText(const char* text, base::Array<char>& copy) noexcept {
    const size_t length = std::strlen(text);
    copy.clear();
    if (length > kMaxStyleLength || !copy.resize(static_cast<int>(length) + 1)) {
        copy.clearFailure();
        return false;
    }
    std::memcpy(copy.data(), text, length + 1);
    return true;
}

}  // namespace

Status expandStyleAttribute(tinyxml2::XMLElement& element, const char* style,
                            base::Array<char>& scratch) noexcept {
    if (!copyText(style, scratch)) return Status::kOutOfMemory;
    DeclarationReader reader(scratch.data());
    Declaration declaration{};
    try {
        for (int i = 0; i < kMaxDeclarations && reader.next(declaration); ++i) {
            element.SetAttribute(declaration.name, declaration.value);
        }
    } catch (const std::bad_alloc&) {
        return Status::kOutOfMemory;
    }
    return Status::kOk;
}

}  // namespace quor
