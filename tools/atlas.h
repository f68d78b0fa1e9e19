#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tool {

/// One element on a sheet.
struct AtlasFrame {
    std::string name;  ///< unique in the atlas
    std::uint32_t x, y, width, height;
    std::int32_t originX, originY;  ///< of its top left corner in its scaled document
};

/// One picture.
struct AtlasSheet {
    std::string image;  ///< its file name, without folder
    std::uint32_t width, height;
    std::vector<AtlasFrame> frames;
};

struct Atlas {
    double scale;  ///< document units to pixels
    std::vector<AtlasSheet> sheets;
};

/// A file that describes an atlas.
struct AtlasDescription {
    std::string suffix;  ///< of its name, behind that of the atlas: "-0.json"
    std::string text;
};

/// JSON with the frames as an object by name. One file a sheet, for a file names one picture; with
/// several sheets each names the others as "related_multi_packs".
std::vector<AtlasDescription> describeAsJsonHash(const Atlas& atlas, const std::string& baseName);

/// JSON with the frames as an array; several sheets become an array "textures" of such.
std::vector<AtlasDescription> describeAsJsonArray(const Atlas& atlas, const std::string& baseName);

/// The text format .atlas: a page a sheet, a region a frame.
std::vector<AtlasDescription> describeAsText(const Atlas& atlas, const std::string& baseName);

/// A class a frame, at the size of the drawing: high-resolution sheets are scaled down.
std::vector<AtlasDescription> describeAsCss(const Atlas& atlas, const std::string& baseName);

}  // namespace tool
