#include "render_options.h"

#include <CLI/CLI.hpp>
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

constexpr const char* kFooter =
    "Size: --width and --height; with one of them the other follows from the document's aspect. "
    "Without\nthem the document's own width and height; else the aspect of its viewBox at 512 "
    "pixels. --scale\nmultiplies whichever it is. A side can have 2048 pixels.\n\n"
    "Each bad file is reported as FILE:LINE: MESSAGE or FILE: MESSAGE and the others are still "
    "rendered.\nExit status: 0 all rendered, 1 a file failed, 2 a wrong command line.";

void addSide(CLI::App& app, const std::string& name, std::optional<std::uint32_t>& side) {
    const std::uint32_t largest = quorSurfaceMaxDimension();
    addOption(app, name, "PIXELS", "Picture " + name.substr(2) + " before --scale",
              "a whole number of pixels from 1 to " + std::to_string(largest),
              [&side, largest](const std::string& text) {
                  std::uint32_t pixels = 0;
                  if (!parseWhole(text, pixels) || pixels < 1 || pixels > largest) return false;
                  side = pixels;
                  return true;
              });
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
               options.align, kAlignments);
    app.add_flag("--slice", options.isSlice, "Cover the whole picture and cut off what exceeds it");
    addNumber(app, "--rotate", "DEGREES", "Rotate clockwise about the picture's centre",
              options.rotation, -1e6f, 1e6f);
}

}  // namespace

void addRenderCommand(CLI::App& app, bool& isSuccess) {
    const auto options = std::make_shared<RenderOptions>();
    CLI::App& command = *app.add_subcommand("render", "Render SVG files as PNG pictures");
    command.add_option("IN.svg", options->inputs, "Documents; - is standard input")
        ->required()
        ->type_name("");
    command
        .add_option("-o", options->output,
                    "The picture, or the folder for NAME.png of each NAME.svg, or - for\n"
                    "standard output. Default: NAME.png beside NAME.svg; standard output\n"
                    "for standard input")
        ->type_name("OUT.png|DIR/");
    addSide(command, "--width", options->size.width);
    addSide(command, "--height", options->size.height);
    addNumber(command, "--scale", "FACTOR", "Multiplies the size", options->size.scale, 0.0, 1e6);
    addKeyword(command, "--quality", "Edges: best (default), faster, or none (not smoothed)",
               options->quality, kQualities);
    addBackground(command, options->background);
    addNumber(command, "--dpi", "DPI", "Pixels per inch, for lengths such as 2cm; default 96",
              options->dpi, 0.0f, 1e6f);
    addPlacement(command, *options);
    command.footer(kFooter);
    command.callback([options, &isSuccess] { isSuccess = renderFiles(*options); });
}

}  // namespace tool
