#include "pack_options.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <string>
#include <vector>

#include "option_parsing.h"
#include "pack_command.h"

namespace tool {

namespace {

const std::vector<std::string> kFormats = {"json-hash", "json-array", "atlas", "css"};

constexpr const char* kFooter =
    "Each child of a document's <svg> element becomes a frame; with --explode each shape and "
    "<use>.\n"
    "Frames are named after file and id: gear.svg for the only one of a file, else "
    "gear.svg/wheel.\n"
    "Writes SHEET-0.png, SHEET-1.png ... and SHEET.json (.atlas, .css); with several --scale\n"
    "SHEET@1x-0.png, SHEET@2x-0.png ... Drawings may overlap by a pixel when --border is 0.\n\n"
    "Exit status: 0 all packed, 1 a file failed or an element is too large, 2 a wrong command "
    "line.";

void addWhole(CLI::App& app, const std::string& name, const std::string& help, std::uint32_t& value,
              std::uint32_t least, std::uint32_t most) {
    addOption(
        app, name, "PIXELS", help,
        "a whole number of pixels from " + std::to_string(least) + " to " + std::to_string(most),
        [&value, least, most](const std::string& text) {
            std::uint32_t pixels = 0;
            if (!parseWhole(text, pixels) || pixels < least || pixels > most) return false;
            value = pixels;
            return true;
        });
}

void addScales(CLI::App& app, std::vector<float>& scales) {
    app.add_option_function<std::vector<std::string>>(
           "--scale",
           [&scales](const std::vector<std::string>& texts) {
               for (const std::string& text : texts) {
                   float scale = 0;
                   if (!parseWhole(text, scale) || !(scale > 0.0f && scale <= 1e6f)) {
                       throw CLI::ValidationError("--scale",
                                                  "'" + text + "' is not a number above 0");
                   }
                   scales.push_back(scale);
               }
           },
           "Pixels of a document unit; several give one atlas each. Default 1")
        ->type_name("S")
        ->allow_extra_args(false);
}

void checkSizes(const PackOptions& options) {
    if (2 * options.border >= options.maxSize) {
        throw CLI::ValidationError("--border", "two borders leave nothing of --max-size " +
                                                   std::to_string(options.maxSize));
    }
    if (options.isPowerOfTwo && (options.maxSize & (options.maxSize - 1)) != 0) {
        throw CLI::ValidationError(
            "--pow2", "--max-size " + std::to_string(options.maxSize) + " is no power of two");
    }
}

}  // namespace

void addPackCommand(CLI::App& app, bool& isSuccess) {
    const auto options = std::make_shared<PackOptions>();
    CLI::App& command =
        *app.add_subcommand("pack", "Pack the elements of SVG files into texture atlases");
    command.add_option("IN.svg", options->inputs, "Documents; - is standard input")
        ->required()
        ->type_name("");
    command.add_option("-o", options->output, "Where the sheets go: DIR/NAME for DIR/NAME-0.png")
        ->required()
        ->type_name("SHEET");
    const std::uint32_t largest = quorSurfaceMaxDimension();
    addWhole(command, "--max-size", "Largest side of a sheet; default " + std::to_string(largest),
             options->maxSize, 1, largest);
    addWhole(command, "--border", "Free pixels between frames and along the edges; default 1",
             options->border, 0, largest);
    command.add_flag("--pow2", options->isPowerOfTwo, "Sides of sheets are powers of two");
    addScales(command, options->scales);
    command.add_flag("--explode", options->explodesGroups, "Open groups: a frame for each shape");
    command.add_flag("--dilate", options->dilates,
                     "Colour transparent pixels like their neighbours, against dark fringes");
    addKeyword(command, "--quality", "Edges: best (default), faster, or none (not smoothed)",
               options->quality, kQualities);
    addKeyword(
        command, "--format",
        "Description of the frames: " + CLI::detail::join(kFormats, ", ") + "; default json-hash",
        options->format, kFormats);
    command.add_flag("--trim-names", options->trimsNames, "Leave .svg out of the frames' names");
    addNumber(command, "--dpi", "DPI", "Pixels per inch, for lengths such as 2cm; default 96",
              options->dpi, 0.0f, 1e6f);
    command.footer(kFooter);
    command.callback([options, &isSuccess] {
        checkSizes(*options);
        isSuccess = packFiles(*options);
    });
}

}  // namespace tool
