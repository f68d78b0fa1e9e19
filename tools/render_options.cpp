#include "render_options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "option_parsing.h"
#include "render_command.h"

namespace tool {

namespace {

// The position of a keyword is its value in the library.
const std::vector<std::string> kAlignments = {
    "none",     "xMinYMin", "xMidYMin", "xMaxYMin", "xMinYMid",
    "xMidYMid", "xMaxYMid", "xMinYMax", "xMidYMax", "xMaxYMax",
};

const std::vector<std::string> kFormats = {"png", "webp", "raw"};  // as PictureFormat

constexpr const char* kFooter =
    "Size: --width and --height; with one of them the other follows from the document's aspect. "
    "Without\nthem the document's own width and height; else the aspect of its viewBox at 512 "
    "pixels. --scale\nmultiplies whichever it is. A side can have 32768 pixels; large pictures are "
    "drawn and written in\nparts.\n\n"
    "Each bad file is reported as FILE:LINE: MESSAGE or FILE: MESSAGE and the others are still "
    "rendered.\nExit status: 0 all rendered, 1 a file failed, 2 a wrong command line.";

void addSide(CLI::App& app, const std::string& names, const std::string& what,
             std::optional<std::uint32_t>& side) {
    addOption(app, names, "PIXELS", "Picture " + what + " before --scale",
              "a whole number of pixels from 1 to " + std::to_string(kLargestSide),
              [&side](const std::string& text) {
                  std::uint32_t pixels = 0;
                  if (!parseWhole(text, pixels) || pixels < 1 || pixels > kLargestSide)
                      return false;
                  side = pixels;
                  return true;
              });
}

/// "x,y,width,height"; false for anything else.
bool parseRegion(const std::string& text, Region& region) {
    std::string_view rest = text;
    for (float* value : {&region.x, &region.y, &region.width, &region.height}) {
        const std::size_t end = std::min(rest.find(','), rest.size());
        const bool isLast = value == &region.height;
        if (!parseWhole(rest.substr(0, end), *value) || !std::isfinite(*value)) return false;
        if (isLast != (end == rest.size())) return false;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return region.width > 1e-6f && region.height > 1e-6f;
}

void addRegion(CLI::App& app, std::optional<Region>& region) {
    addOption(app, "--region", "X,Y,W,H", "Only this part of the document, in its units",
              "four numbers x,y,width,height in document units, the last two above 0",
              [&region](const std::string& text) {
                  Region parsed{};
                  if (!parseRegion(text, parsed)) return false;
                  region = parsed;
                  return true;
              });
}

void addColor(CLI::App& app, std::string& chosen) {
    addOption(app, "--color", "COLOUR",
              "Colour of what has none of its own: currentColor, and the fill of a\n"
              "drawing without any colour, as icons are",
              "an opaque colour: #rgb, #rrggbb, or a basic name such as white, navy",
              [&chosen](const std::string& text) {
                  const std::optional<Color> color = parseColor(text);
                  if (!color || color->alpha != 1) return false;
                  chosen = hexDigits(*color);
                  return true;
              });
}

void addFormat(CLI::App& app, RenderOptions& options) {
    addKeyword(app, "--format",
               "png, webp (lossless), or raw (bytes red, green, blue, alpha); default:\n"
               "what the ending of OUT says, else png",
               options.format, kFormats);
    addOption(app, "--compression", "LEVEL",
              "0 (none) to 9 (smallest file); default: nearly the smallest, in a tenth\n"
              "of the time",
              "a level from 0 to 9", [&options](const std::string& text) {
                  int level = 0;
                  if (!parseWhole(text, level) || level < 0 || level > 9) return false;
                  options.compression = level;
                  return true;
              });
}

void addRunning(CLI::App& app, RenderOptions& options) {
    addOption(app, "--jobs,-j", "N", "Processes; default: one a processor, fewer for few files",
              "a whole number from 1 to 1024", [&options](const std::string& text) {
                  return parseWhole(text, options.jobs) && options.jobs >= 1 &&
                         options.jobs <= 1024;
              });
    app.add_flag("--warn", options.warns, "Tell in a line what each drawing has that is not drawn");
    app.add_flag("--watch", options.watches, "Go on rendering files when they change");
}

void addBackground(CLI::App& app, Color& background) {
    addOption(app, "--background", "COLOUR",
              std::string("Colour below the drawing:\n") + kColorSyntax,
              std::string("a colour: ") + kColorSyntax, [&background](const std::string& text) {
                  const std::optional<Color> color = parseColor(text);
                  if (color) background = *color;
                  return color.has_value();
              });
}

void addPlacement(CLI::App& app, RenderOptions& options) {
    addKeyword(app, "--align",
               "Place in the picture, instead of the document's own:\n" +
                   CLI::detail::join(kAlignments, ", "),
               options.placement.align, kAlignments);
    app.add_flag("--slice", options.placement.isSlice,
                 "Cover the whole picture and cut off what exceeds it");
    addNumber(app, "--rotate", "DEGREES", "Rotate clockwise about the picture's centre",
              options.placement.rotation, -1e6f, 1e6f);
}

}  // namespace

void addRenderCommand(CLI::App& app, bool& isSuccess) {
    const auto options = std::make_shared<RenderOptions>();
    CLI::App& command = *app.add_subcommand("render", "Render SVG files as pictures");
    command.set_help_flag("--help", "Print this help message and exit");  // -h is the height
    command
        .add_option("IN.svg", options->inputs,
                    "Documents, .svgz too; folders stand for those in them; - is standard input")
        ->required()
        ->type_name("");
    command
        .add_option("-o,--output", options->output,
                    "The picture, or the folder for NAME.png of each NAME.svg, or - for\n"
                    "standard output. Default: NAME.png beside NAME.svg; standard output\n"
                    "for standard input")
        ->type_name("OUT.png|DIR/");
    addSide(command, "--width,-w", "width", options->size.width);
    addSide(command, "--height,-h", "height", options->size.height);
    addNumber(command, "--scale,--zoom", "FACTOR", "Multiplies the size", options->size.scale, 0.0,
              1e6);
    addKeyword(command, "--quality", "Edges: best (default), faster, or none (not smoothed)",
               options->placement.quality, kQualities);
    addBackground(command, options->background);
    addColor(command, options->color);
    addRegion(command, options->placement.region);
    command.add_option("--element", options->element, "Only the element with this id, fitted")
        ->type_name("ID");
    command.add_flag("--trim", options->isTrimmed, "Cut off borders in which nothing is drawn");
    addPlacement(command, *options);
    addNumber(command, "--dpi", "DPI", "Pixels per inch, for lengths such as 2cm; default 96",
              options->dpi, 0.0f, 1e6f);
    addFormat(command, *options);
    addRunning(command, *options);
    command.footer(kFooter);
    command.callback([options, &isSuccess] {
        const auto& inputs = options->inputs;
        if (options->watches && std::find(inputs.begin(), inputs.end(), "-") != inputs.end())
            throw CLI::ValidationError("--watch", "standard input cannot be watched");
        isSuccess = renderFiles(*options);
    });
}

}  // namespace tool
