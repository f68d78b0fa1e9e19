#include <sstream>

#include "atlas.h"

namespace tool {

namespace {

/// What a class name can hold without escapes stays, letters of any script among it; the rest
/// becomes '_' and two hexadecimal digits, '_' itself "__", so that no two names become one.
std::string classNameOf(const std::string& name) {
    constexpr const char* kDigits = "0123456789abcdef";
    std::string text;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                             (c >= '0' && c <= '9') || c == '-' || byte >= 0x80;
        if (isPlain) {
            text += c;
        } else if (c == '_') {
            text += "__";
        } else {
            text += {'_', kDigits[byte >> 4], kDigits[byte & 15]};
        }
    }
    return text;
}

std::string quoted(const std::string& text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') result += '\\';
        result += c;
    }
    return result + '"';
}

}  // namespace

std::vector<AtlasDescription> describeAsCss(const Atlas& atlas, const std::string& baseName) {
    std::ostringstream text;
    const auto pixels = [&](double count) {
        std::ostringstream length;
        length << count / atlas.scale << "px";
        return length.str();
    };
    for (const AtlasSheet& sheet : atlas.sheets) {
        for (const AtlasFrame& frame : sheet.frames) {
            text << '.' << classNameOf("sprite-" + baseName + '-' + frame.name) << " {\n"
                 << "  width: " << pixels(frame.width) << ";\n"
                 << "  height: " << pixels(frame.height) << ";\n"
                 << "  background: url(" << quoted(sheet.image) << ") "
                 << pixels(-static_cast<double>(frame.x)) << ' '
                 << pixels(-static_cast<double>(frame.y)) << " / " << pixels(sheet.width) << ' '
                 << pixels(sheet.height) << " no-repeat;\n}\n";
        }
    }
    return {{".css", text.str()}};
}

}  // namespace tool
