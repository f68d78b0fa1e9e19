#include <sstream>

#include "atlas.h"

namespace tool {

namespace {

/// A region's name is a line.
std::string lineOf(std::string name) {
    for (char& c : name)
        if (static_cast<unsigned char>(c) < 0x20) c = '_';
    return name;
}

void writeRegion(std::ostream& text, const AtlasFrame& frame) {
    text << lineOf(frame.name) << "\n  rotate: false\n"
         << "  xy: " << frame.x << ", " << frame.y << '\n'
         << "  size: " << frame.width << ", " << frame.height << '\n'
         << "  orig: " << frame.width << ", " << frame.height << '\n'
         << "  offset: 0, 0\n  index: -1\n";
}

}  // namespace

std::vector<AtlasDescription> describeAsText(const Atlas& atlas, const std::string& /*baseName*/) {
    std::ostringstream text;
    for (const AtlasSheet& sheet : atlas.sheets) {
        text << '\n'
             << lineOf(sheet.image) << '\n'
             << "size: " << sheet.width << ", " << sheet.height << '\n'
             << "format: RGBA8888\nfilter: Linear, Linear\nrepeat: none\n";
        for (const AtlasFrame& frame : sheet.frames) writeRegion(text, frame);
    }
    return {{".atlas", text.str()}};
}

}  // namespace tool
