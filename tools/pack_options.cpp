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
    "Each drawing becomes a frame, trimmed to what shows, named by its path in the folder given;\n"
    "with --elements each child of its <svg> element, with --explode each shape and <use>, named\n"
    "gear.svg/ID or, without an id, by its place: gear.svg/2.\n"
    "Writes SHEET-0.png, SHEET-1.png ... and SHEET.json (.atlas, .css); with several --scale\n"
    "SHEET@1x-0.png, SHEET@2x-0.png ... What an earlier run wrote and this one does not is "
    "removed.\n\n"
    "Exit status: 0 all packed, 1 a file failed, something is too large or nothing shows, 2 a "
    "wrong "
    "command line.";

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

/// An option that may come several times.
template <class Number>
void addList(CLI::App& app, const std::string& name, const std::string& placeholder,
             const std::string& help, std::vector<Number>& values, Number upTo) {
    app.add_option_function<std::vector<std::string>>(
           name,
           [name, &values, upTo](const std::vector<std::string>& texts) {
               for (const std::string& text : texts) {
                   Number value = 0;
                   if (!parseWhole(text, value) || !(value > 0 && value <= upTo)) {
                       throw CLI::ValidationError(name, "'" + text + "' is not a number above 0");
                   }
                   values.push_back(value);
               }
           },
           help)
        ->type_name(placeholder)
        ->allow_extra_args(false);
}

void addSide(CLI::App& app, const std::string& name, std::optional<std::uint32_t>& side) {
    const std::uint32_t largest = quorSurfaceMaxDimension();
    addOption(app, name, "PIXELS", "Largest size of a drawing; its aspect stays",
              "a whole number of pixels from 1 to " + std::to_string(largest),
              [&side, largest](const std::string& text) {
                  std::uint32_t pixels = 0;
                  if (!parseWhole(text, pixels) || pixels < 1 || pixels > largest) return false;
                  side = pixels;
                  return true;
              });
}

void checkSizes(const PackOptions& options) {
    const std::uint32_t margins = options.border + 2 * (options.padding + options.extrude);
    if (2 * margins >= options.maxSize) {
        throw CLI::ValidationError("--border",
                                   "with --padding and --extrude nothing is left of --max-size " +
                                       std::to_string(options.maxSize));
    }
    const bool isSized = !options.sizes.empty() || options.width || options.height;
    if (isSized && !options.scales.empty())
        throw CLI::ValidationError("--scale", "goes with neither --size, --width nor --height");
    if (!options.sizes.empty() && (options.width || options.height))
        throw CLI::ValidationError("--size", "goes with neither --width nor --height");
    if (isSized && options.unit != FrameUnit::kFile)
        throw CLI::ValidationError("--size", "is for whole drawings; elements take --scale");
    if (options.isPowerOfTwo && (options.maxSize & (options.maxSize - 1)) != 0) {
        throw CLI::ValidationError(
            "--pow2", "--max-size " + std::to_string(options.maxSize) + " is no power of two");
    }
}

}  // namespace

void addPackCommand(CLI::App& app, bool& isSuccess) {
    const auto options = std::make_shared<PackOptions>();
    CLI::App& command = *app.add_subcommand("pack", "Pack SVG files into texture atlases");
    command.add_option("IN.svg", options->inputs, "Files, folders; - is standard input")
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
    addWhole(command, "--padding", "Transparent pixels inside frames, on every side; default 0",
             options->padding, 0, largest);
    addWhole(command, "--extrude",
             "Pixels around frames that repeat their outermost ones; default 0", options->extrude,
             0, largest);
    addList(command, "--scale", "S",
            "Times the size of the drawings; several give one atlas each. Default 1",
            options->scales, 1e6f);
    addList(command, "--size", "PIXELS",
            "Longest side of all drawings; several give one atlas each", options->sizes, largest);
    addSide(command, "--width", options->width);
    addSide(command, "--height", options->height);
    command.add_flag_callback(
        "--no-trim", [options] { options->trimsFrames = false; },
        "Keep the transparent edges of drawings");
    command.add_flag_callback(
        "--elements", [options] { options->unit = FrameUnit::kElement; },
        "A frame for each child of the svg element");
    command.add_flag_callback(
        "--explode", [options] { options->unit = FrameUnit::kShape; }, "A frame for each shape");
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
    command.add_flag("--preview", options->writesPreview,
                     "Also write SHEET.html, a page that shows every frame");
    command.add_flag("--watch", options->watches, "Go on and pack again when a file changes");
    command.footer(kFooter);
    command.callback([options, &isSuccess] {
        checkSizes(*options);
        // Boxes of a page have the drawing's size: a trimmed frame would lie wrong in them.
        if (static_cast<AtlasFormat>(options->format) == AtlasFormat::kCss)
            options->trimsFrames = false;
        isSuccess = packFiles(*options);
    });
}

}  // namespace tool
