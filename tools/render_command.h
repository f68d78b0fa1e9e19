#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "color_option.h"
#include "drawing.h"
#include "picture_size.h"
#include "picture_writer.h"

namespace tool {

struct RenderOptions {
    std::vector<std::string> inputs;  // files and folders; "-" is standard input
    std::string output;               // file, folder or "-"; empty: beside each input
    SizeRequest size;
    Placement placement;
    Color background;                     // transparent
    float dpi = 96;                       // pixels per inch of the document's absolute units
    std::optional<PictureFormat> format;  // else as the output's name says
    int compression = kDefaultCompression;
    std::string color;    // "#rrggbb" for what has no colour of its own; empty: black, as ever
    std::string element;  // id of the only element to draw; empty: all
    bool isTrimmed = false;
    bool warns = false;      // of what is passed over
    std::uint32_t jobs = 0;  // processes; 0: as many as make sense
    bool watches = false;
};

/// Renders every input to a picture and goes on after a bad one, each with its message on standard
/// error. True when all succeeded.
bool renderFiles(const RenderOptions& options);

}  // namespace tool
