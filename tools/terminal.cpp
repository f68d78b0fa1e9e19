#include "terminal.h"

#include <unistd.h>

#include <cstdlib>

namespace tool {

namespace {

bool showsStyles(std::FILE* stream) {
    const char* noColor = std::getenv("NO_COLOR");
    const bool isForbidden = noColor != nullptr && *noColor != '\0';
    return !isForbidden && isatty(fileno(stream)) != 0;
}

const char* codeOf(Style style) {
    switch (style) {
        case Style::kDim:
            return "2";
        case Style::kGreen:
            return "32";
        case Style::kYellow:
            return "33";
        case Style::kBold:
            break;
    }
    return "1";
}

}  // namespace

std::string styled(std::FILE* stream, Style style, const std::string& text) {
    if (!showsStyles(stream)) return text;
    return std::string("\x1b[") + codeOf(style) + "m" + text + "\x1b[0m";
}

}  // namespace tool
