#include "look_options.h"

#include <CLI/CLI.hpp>
#include <memory>

#include "bench_command.h"
#include "info_command.h"
#include "option_parsing.h"
#include "view_command.h"

namespace tool {

namespace {

constexpr const char* kViewFooter =
    "Keys and mouse:\n"
    "  wheel, + -       enlarge and shrink about the pointer\n"
    "  drag, arrows     move\n"
    "  r R              rotate clockwise, counter-clockwise by 15 degrees\n"
    "  0 f              fit into the window again\n"
    "  1                a document unit is a pixel\n"
    "  q b n            quality: quick (faster), best, none\n"
    "  g                ground: checker, white, black\n"
    "  space, backspace next and previous file (also page down, page up)\n"
    "  c                copy what is seen to FILE-view.png, or FILE-view-2.png ...\n"
    "  escape           end\n"
    "The file is read again when it changes. The title tells the milliseconds of the last draw.";

void addInputs(CLI::App& command, std::vector<std::string>& inputs) {
    command
        .add_option("IN.svg", inputs,
                    "Documents, .svgz too; folders stand for those in them; - is standard input")
        ->required()
        ->type_name("");
}

void addInfo(CLI::App& app, bool& isSuccess) {
    const auto inputs = std::make_shared<std::vector<std::string>>();
    CLI::App& command =
        *app.add_subcommand("info", "Tell what documents hold and what of it is not drawn");
    addInputs(command, *inputs);
    command.footer("Exit status: 0, 1 when a file failed, 2 a wrong command line.");
    command.callback([inputs, &isSuccess] { isSuccess = printInfo(*inputs); });
}

void addBench(CLI::App& app, bool& isSuccess) {
    const auto options = std::make_shared<BenchOptions>();
    CLI::App& command = *app.add_subcommand("bench", "Time loading and drawing of documents");
    addInputs(command, options->inputs);
    addOption(command, "--size", "PIXELS", "Longer side of the picture; default 512",
              "a whole number of pixels from 1 to 2047", [options](const std::string& text) {
                  return parseWhole(text, options->side) && options->side >= 1 &&
                         options->side <= 2047;
              });
    addKeyword(command, "--quality", "Edges: best (default), faster, or none (not smoothed)",
               options->quality, kQualities);
    addNumber(command, "--seconds", "S", "Time spent on each figure; default 0.3", options->seconds,
              0.0, 60.0);
    command.footer(
        "Figures are medians. Exit status: 0, 1 when a file failed, 2 a wrong command "
        "line.");
    command.callback([options, &isSuccess] { isSuccess = benchFiles(*options); });
}

void addView(CLI::App& app, bool& isSuccess) {
    const auto inputs = std::make_shared<std::vector<std::string>>();
    CLI::App& command = *app.add_subcommand("view", "Show documents in a window");
    addInputs(command, *inputs);
    command.footer(kViewFooter);
    command.callback([inputs, &isSuccess] { isSuccess = viewFiles(*inputs); });
}

}  // namespace

void addLookCommands(CLI::App& app, bool& isSuccess) {
    addView(app, isSuccess);
    addInfo(app, isSuccess);
    addBench(app, isSuccess);
}

}  // namespace tool
