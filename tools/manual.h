#pragma once

#include <string>

namespace CLI {
class App;
}

namespace tool {

/// The manual page of a command, or of the tool itself, as troff: made of the same texts as --help.
std::string manualPage(const CLI::App& app);

/// A script that completes commands and options. `shell` is "bash", "zsh" or "fish".
std::string completionScript(const CLI::App& app, const std::string& shell);

/// Adds the commands `manual` and `completion`, which print these. Parsing the line runs them.
void addManualCommands(CLI::App& app);

}  // namespace tool
