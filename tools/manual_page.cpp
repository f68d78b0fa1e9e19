#include <CLI/CLI.hpp>
#include <algorithm>

#include "command_list.h"
#include "manual.h"

namespace tool {

namespace {

/// Text for troff: hyphens that can be copied, and no line that begins as a request.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        const bool beginsLine = result.empty() || result.back() == '\n';
        if (beginsLine && (c == '.' || c == '\'')) result += "\\&";
        if (c == '\\')
            result += "\\e";
        else if (c == '-')
            result += "\\-";
        else
            result += c;
    }
    return result;
}

std::string onOneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

std::string upperCase(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

std::string section(const std::string& title, const std::string& body) {
    return body.empty() ? "" : ".SH " + title + "\n" + body;
}

std::string item(const std::string& term, const std::string& explanation) {
    return ".TP\n.B " + escaped(term) + "\n" + escaped(onOneLine(explanation)) + "\n";
}

std::string optionItems(const CLI::App& app) {
    std::string items;
    for (const CLI::Option* option : app.get_options()) {
        const std::string type = option->get_type_name();
        const std::string value = takesValue(*option) && !type.empty() ? " " + type : "";
        items += item(namesOf(*option) + value, option->get_description());
    }
    return items;
}

std::string commandItems(const CLI::App& app) {
    std::string items;
    for (const CLI::App* command : commandsOf(app))
        items += item(command->get_name(), command->get_description());
    return items;
}

/// Lines stay lines: footers are laid out by hand.
std::string notes(const CLI::App& app) {
    const std::string footer = app.get_footer();
    return footer.empty() ? "" : ".nf\n" + escaped(footer) + "\n.fi\n";
}

}  // namespace

std::string manualPage(const CLI::App& app) {
    const bool isCommand = app.get_parent() != nullptr;
    const std::string name = isCommand ? "quor-" + app.get_name() : "quor";
    const std::string call = isCommand ? "quor " + app.get_name() : "quor";
    const std::string arguments = isCommand ? " [options] IN.svg..." : " COMMAND [options]";
    return ".TH " + upperCase(escaped(name)) + " 1\n" +
           section("NAME", escaped(name) + " \\- " + escaped(app.get_description()) + "\n") +
           section("SYNOPSIS", ".B " + escaped(call) + "\n" + escaped(arguments.substr(1)) + "\n") +
           section("OPTIONS", optionItems(app)) + section("COMMANDS", commandItems(app)) +
           section("NOTES", notes(app));
}

}  // namespace tool
