#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace tool {

/// One drawing or element on a sheet. Pixels.
struct AtlasFrame {
    std::string name;  ///< unique in the atlas
    std::uint32_t x, y, width, height;
    std::int32_t offsetX, offsetY;            ///< of its top left corner in the untrimmed drawing
    std::uint32_t sourceWidth, sourceHeight;  ///< of the untrimmed drawing
    std::int32_t originX = 0, originY = 0;    ///< of an element: where its document has it

    bool isTrimmed() const { return width != sourceWidth || height != sourceHeight; }
};

/// One picture.
struct AtlasSheet {
    std::string image;  ///< its file name, without folder
    std::uint32_t width, height;
    std::vector<AtlasFrame> frames;
};

struct Atlas {
    double scale;  ///< pixels of a unit of the drawings
    std::vector<AtlasSheet> sheets;
};

/// A file that describes an atlas.
struct AtlasDescription {
    std::string suffix;  ///< of its name, behind that of the atlas: ".json"
    std::string text;
};

/// JSON with the frames as an object by name. A file names one picture, so the first sheet's is
/// ".json", the others' "-1.json" and so on; each names the others as "related_multi_packs".
std::vector<AtlasDescription> describeAsJsonHash(const Atlas& atlas, const std::string& baseName);

/// JSON with the frames as an array; several sheets become an array "textures" of such.
std::vector<AtlasDescription> describeAsJsonArray(const Atlas& atlas, const std::string& baseName);

/// The text format .atlas: a page a sheet, a region a frame. Names that its readers would lose are
/// replaced; each replacement is told on standard error.
std::vector<AtlasDescription> describeAsText(const Atlas& atlas, const std::string& baseName);

/// A class a frame, at the size of the drawing: high-resolution sheets are scaled down.
std::vector<AtlasDescription> describeAsCss(const Atlas& atlas, const std::string& baseName);

/// A page that shows every frame of the atlas, cut out of its sheets, which it holds: `pictures`
/// are PNG files.
std::string describeAsPage(const Atlas& atlas, const std::string& title,
                           const std::vector<std::string>& pictures);

/// The names of the files that a description lists, when it is one of this tool's; else none.
std::vector<std::string> filesListedIn(const std::string& description);

/// Puts such a list into every description of an atlas.
void listFiles(std::vector<AtlasDescription>& descriptions, const std::vector<std::string>& files);

}  // namespace tool
