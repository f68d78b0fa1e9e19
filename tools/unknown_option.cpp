#include "unknown_option.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <numeric>

#include "command_list.h"

namespace tool {

namespace {

/// The least number of characters to insert, delete or replace (Levenshtein).
std::size_t editDistance(const std::string& from, const std::string& to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const char letter : from) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (letter != to[j]);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

std::vector<std::string> knownNames(const CLI::App& command) {
    std::vector<std::string> names;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& flag : flagsOf(*option)) names.push_back(flag);
    for (const CLI::App* below : commandsOf(command)) names.push_back(below->get_name());
    return names;
}

}  // namespace

std::string explainUnknown(const CLI::App& command, const std::vector<std::string>& arguments) {
    const auto isOption = [](const std::string& text) { return text.compare(0, 1, "-") == 0; };
    const auto option = std::find_if(arguments.begin(), arguments.end(), isOption);
    const std::string& given = option == arguments.end() ? arguments.front() : *option;
    const std::string name = given.substr(0, given.find('='));
    std::string nearest;
    std::size_t distance = name.size() / 3;  // farther ones resemble it by chance
    for (const std::string& known : knownNames(command)) {
        // Who leaves out the end of a name means it.
        const bool isBeginning = name.size() > 3 && known.compare(0, name.size(), name) == 0;
        const std::size_t edits = isBeginning ? 1 : editDistance(name, known);
        if (edits <= distance && (nearest.empty() || edits < distance)) {
            nearest = known;
            distance = edits;
        }
    }
    const std::string hint = nearest.empty() ? "" : " Did you mean " + nearest + "?";
    return "quor" + (command.get_parent() == nullptr ? "" : " " + command.get_name()) + ": " +
           (isOption(given) ? "there is no option " : "there is no command ") + given + "." + hint;
}

}  // namespace tool
