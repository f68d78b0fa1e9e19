#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "quor/quor.h"

namespace tool {

/// The positions of the keywords of --format.
enum class AtlasFormat : std::uint32_t { kJsonHash = 0, kJsonArray = 1, kText = 2, kCss = 3 };

struct PackOptions {
    std::vector<std::string> inputs;  // file names; "-" is standard input
    std::string output;               // where the sheets go: folder and the beginning of the names
    std::uint32_t maxSize = 2048;     // pixels a side of a sheet
    std::uint32_t border = 1;         // pixels
    bool isPowerOfTwo = false;
    std::vector<float> scales;  // one atlas each; none: scale 1
    bool explodesGroups = false;
    bool dilates = false;  // gives transparent pixels the colour of their neighbours
    std::uint32_t quality = QUOR_RENDERING_QUALITY_BETTER;
    std::uint32_t format = 0;  // an AtlasFormat
    bool trimsNames = false;
    float dpi = 96;
};

/// Packs the elements of all inputs into sheets and writes them with their description. Bad files
/// and elements that are too large are reported on standard error and left out. True when nothing
/// had to be.
bool packFiles(const PackOptions& options);

}  // namespace tool
