#include <cstdio>
#include <set>
#include <sstream>

#include "atlas.h"

namespace tool {

namespace {

/// A region's name is a line, ended by readers at spaces on either side; one with ':' is no name.
std::string lineOf(std::string name) {
    for (char& c : name)
        if (static_cast<unsigned char>(c) < 0x20 || c == ':') c = '_';
    if (name.starts_with(' ')) name.front() = '_';
    if (name.ends_with(' ')) name.back() = '_';
    return name;
}

/// The regions' names, by frame.
class RegionNames {
public:
    explicit RegionNames(const Atlas& atlas) {
        for (const AtlasSheet& sheet : atlas.sheets)
            for (const AtlasFrame& frame : sheet.frames) taken_.insert(frame.name);
    }

    std::string nameOf(const std::string& name) {
        const std::string line = lineOf(name);
        if (line == name) return name;
        std::string unique = line;
        for (int i = 2; !taken_.insert(unique).second; ++i) unique = line + '-' + std::to_string(i);
        std::fprintf(stderr, "%s: called %s, for .atlas files cannot hold its name\n", name.c_str(),
                     unique.c_str());
        return unique;
    }

private:
    std::set<std::string> taken_;
};

/// Offsets are from the left and from the bottom.
void writeRegion(std::ostream& text, const AtlasFrame& frame, const std::string& name) {
    const std::int64_t below =
        std::int64_t{frame.sourceHeight} - frame.offsetY - std::int64_t{frame.height};
    text << name << "\n  rotate: false\n"
         << "  xy: " << frame.x << ", " << frame.y << '\n'
         << "  size: " << frame.width << ", " << frame.height << '\n'
         << "  orig: " << frame.sourceWidth << ", " << frame.sourceHeight << '\n'
         << "  offset: " << frame.offsetX << ", " << below << "\n  index: -1\n";
}

}  // namespace

std::vector<AtlasDescription> describeAsText(const Atlas& atlas, const std::string& /*baseName*/) {
    std::ostringstream text;
    RegionNames names(atlas);
    for (const AtlasSheet& sheet : atlas.sheets) {
        text << '\n'
             << lineOf(sheet.image) << '\n'
             << "size: " << sheet.width << ", " << sheet.height << '\n'
             << "format: RGBA8888\nfilter: Linear, Linear\nrepeat: none\n";
        for (const AtlasFrame& frame : sheet.frames)
            writeRegion(text, frame, names.nameOf(frame.name));
    }
    return {{".atlas", text.str()}};
}

}  // namespace tool
