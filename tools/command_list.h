#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace tool {

/// The commands that users are told of.
inline std::vector<const CLI::App*> commandsOf(const CLI::App& app) {
    std::vector<const CLI::App*> commands;
    for (const CLI::App* command : app.get_subcommands(nullptr))
        if (!command->get_name().empty()) commands.push_back(command);
    return commands;
}

/// "--width", "-w": all that an option answers to; none for a positional argument.
inline std::vector<std::string> flagsOf(const CLI::Option& option) {
    std::vector<std::string> flags;
    for (const std::string& name : option.get_snames()) flags.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) flags.push_back("--" + name);
    return flags;
}

/// False for flags.
inline bool takesValue(const CLI::Option& option) { return option.get_items_expected_max() > 0; }

/// "-w, --width", or the name of a positional argument.
inline std::string namesOf(const CLI::Option& option) {
    const std::vector<std::string> flags = flagsOf(option);
    return flags.empty() ? option.get_name(true) : CLI::detail::join(flags, ", ");
}

}  // namespace tool
