#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <string>
#include <vector>

#include "look_options.h"
#include "manual.h"
#include "pack_options.h"
#include "quor/quor.h"
#include "render_options.h"
#include "unknown_option.h"

namespace {

enum ExitStatus { kAllDone = 0, kSomethingFailed = 1, kWrongCommandLine = 2 };

std::string versionText() {
    return std::string("quor ") + quorGetString(QUOR_VERSION) + ", " + quorGetString(QUOR_VENDOR);
}

/// Reports the arguments that the command, or the tool, does not know.
int refuseUnknown(const CLI::App& app) {
    const std::vector<CLI::App*> given = app.get_subcommands();
    const CLI::App& command = given.empty() ? app : *given.front();
    const std::string help = "\nRun with --help for more information.";
    std::fprintf(stderr, "%s%s\n", tool::explainUnknown(command, app.remaining(true)).c_str(),
                 help.c_str());
    return kWrongCommandLine;
}

int runCommandLine(int argc, char** argv) {
    CLI::App app{"Render, show and pack SVG drawings", "quor"};
    app.set_version_flag("--version", versionText());
    app.require_subcommand(1);
    bool isSuccess = true;
    tool::addRenderCommand(app, isSuccess);
    tool::addPackCommand(app, isSuccess);
    tool::addLookCommands(app, isSuccess);
    tool::addManualCommands(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ExtrasError&) {
        return refuseUnknown(app);
    } catch (const CLI::ParseError& error) {
        if (app.get_subcommands().empty() && !app.remaining().empty()) return refuseUnknown(app);
        return app.exit(error) == 0 ? kAllDone : kWrongCommandLine;
    }
    return isSuccess ? kAllDone : kSomethingFailed;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return runCommandLine(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "quor: %s\n", error.what());
        return kSomethingFailed;
    }
}
