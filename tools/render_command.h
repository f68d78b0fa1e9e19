#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "color_option.h"
#include "picture_size.h"
#include "quor/quor.h"

namespace tool {

struct RenderOptions {
    std::vector<std::string> inputs;  // file names; "-" is standard input
    std::string output;               // file, folder or "-"; empty: beside each input
    SizeRequest size;
    std::uint32_t quality = QUOR_RENDERING_QUALITY_BETTER;
    Color background;                    // transparent
    float dpi = 96;                      // pixels per inch of the document's absolute units
    float rotation = 0;                  // degrees clockwise about the picture's centre
    std::optional<std::uint32_t> align;  // QUOR_ALIGN_*; the document's own when absent
    bool isSlice = false;                // cover the picture; else as the document says
};

/// Renders every input to a PNG file and goes on after a bad one, each with its message on
/// standard error. True when all succeeded.
bool renderFiles(const RenderOptions& options);

}  // namespace tool
