#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "quor/quor.h"

namespace tool {

/// The positions of the keywords of --format.
enum class AtlasFormat : std::uint32_t { kJsonHash = 0, kJsonArray = 1, kText = 2, kCss = 3 };

/// What becomes a frame.
enum class FrameUnit : std::uint8_t { kFile, kElement, kShape };

/// How large drawings become: `scale` times what they are, then into a box of the given sides.
struct FrameScale {
    float scale = 1;
    std::optional<std::uint32_t> longestSide;  // pixels
    std::optional<std::uint32_t> width;        // pixels, with the other one as the aspect has it
    std::optional<std::uint32_t> height;

    bool isFitted() const { return longestSide || width || height; }
};

struct PackOptions {
    std::vector<std::string> inputs;  // files, folders; "-" is standard input
    std::string output;               // where the sheets go: folder and the beginning of the names
    FrameUnit unit = FrameUnit::kFile;
    std::uint32_t maxSize = 2048;  // pixels a side of a sheet
    std::uint32_t border = 1;      // pixels between frames
    std::uint32_t padding = 0;     // pixels added to frames on every side
    std::uint32_t extrude = 0;     // pixels around frames that repeat their outermost ones
    bool isPowerOfTwo = false;
    bool trimsFrames = true;
    std::vector<float> scales;         // one atlas each
    std::vector<std::uint32_t> sizes;  // longest sides, one atlas each
    std::optional<std::uint32_t> width;
    std::optional<std::uint32_t> height;
    bool dilates = false;  // gives transparent pixels the colour of their neighbours
    std::uint32_t quality = QUOR_RENDERING_QUALITY_BETTER;
    std::uint32_t format = 0;  // an AtlasFormat
    bool trimsNames = false;
    float dpi = 96;
    bool watches = false;
    bool writesPreview = false;
};

/// Packs the drawings into sheets and writes them with their description. Bad files and what is
/// too large are reported on standard error and left out. True when nothing had to be and there is
/// a frame. With `watches` it goes on for ever.
bool packFiles(const PackOptions& options);

}  // namespace tool
