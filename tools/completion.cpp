#include <CLI/CLI.hpp>
#include <cstdio>
#include <memory>

#include "command_list.h"
#include "manual.h"
#include "option_parsing.h"

namespace tool {

namespace {

std::vector<std::string> allFlags(const CLI::App& command) {
    std::vector<std::string> all;
    for (const CLI::Option* option : command.get_options())
        for (const std::string& flag : flagsOf(*option)) all.push_back(flag);
    return all;
}

std::string joinedNames(const CLI::App& app) {
    std::string names;
    for (const CLI::App* command : commandsOf(app))
        names += (names.empty() ? "" : " ") + command->get_name();
    return names;
}

/// What follows the first line break only tells more, and quotes would end the shell's string.
std::string shortHelp(const std::string& description) {
    std::string text = description.substr(0, description.find('\n'));
    for (char& c : text)
        if (c == '\'' || c == '[' || c == ']' || c == ':') c = ' ';
    return text;
}

std::string bashScript(const CLI::App& app) {
    std::string script =
        "_quor() {\n"
        "    local word=${COMP_WORDS[COMP_CWORD]} words\n"
        "    case ${COMP_CWORD}:${COMP_WORDS[1]} in\n"
        "        1:*) COMPREPLY=($(compgen -W '" +
        joinedNames(app) + " " + CLI::detail::join(allFlags(app), " ") +
        "' -- \"$word\")); return ;;\n";
    for (const CLI::App* command : commandsOf(app)) {
        script += "        *:" + command->get_name() + ") words='" +
                  CLI::detail::join(allFlags(*command), " ") + "' ;;\n";
    }
    return script +
           "    esac\n"
           "    if [[ $word == -* ]]; then COMPREPLY=($(compgen -W \"$words\" -- \"$word\")); fi\n"
           "}\n"
           "complete -o default -F _quor quor\n";
}

std::string zshScript(const CLI::App& app) {
    std::string script =
        "#compdef quor\n"
        "if (( CURRENT == 2 )); then\n"
        "    _values command";
    for (const CLI::App* command : commandsOf(app))
        script += " '" + command->get_name() + "[" + shortHelp(command->get_description()) + "]'";
    script += "\n    return\nfi\ncase $words[2] in\n";
    for (const CLI::App* command : commandsOf(app)) {
        script += "    " + command->get_name() + ") _arguments";
        for (const CLI::Option* option : command->get_options()) {
            const std::string value = takesValue(*option) ? ":value:_files" : "";
            const std::string help = "[" + shortHelp(option->get_description()) + "]" + value + "'";
            for (const std::string& flag : flagsOf(*option)) {
                script.append(" '").append(flag).append(help);
            }
        }
        script += " '*:file:_files' ;;\n";
    }
    return script + "esac\n";
}

std::string fishScript(const CLI::App& app) {
    std::string script;
    for (const CLI::App* command : commandsOf(app)) {
        script += "complete -c quor -n __fish_use_subcommand -a " + command->get_name() + " -d '" +
                  shortHelp(command->get_description()) + "'\n";
        for (const CLI::Option* option : command->get_options()) {
            std::string flags;
            for (const std::string& name : option->get_snames()) flags += " -s " + name;
            for (const std::string& name : option->get_lnames()) flags += " -l " + name;
            if (flags.empty()) continue;
            script += "complete -c quor -n '__fish_seen_subcommand_from " + command->get_name() +
                      "'" + flags + (takesValue(*option) ? " -r" : "") + " -d '" +
                      shortHelp(option->get_description()) + "'\n";
        }
    }
    return script;
}

const std::vector<std::string> kShells = {"bash", "zsh", "fish"};

void print(const std::string& text) { std::fputs(text.c_str(), stdout); }

}  // namespace

std::string completionScript(const CLI::App& app, const std::string& shell) {
    if (shell == "bash") return bashScript(app);
    return shell == "zsh" ? zshScript(app) : fishScript(app);
}

void addManualCommands(CLI::App& app) {
    const auto name = std::make_shared<std::string>();
    CLI::App& manual = *app.add_subcommand("manual", "Print the manual page of a command");
    manual.add_option("COMMAND", *name, "A command; without it the page of quor itself")
        ->type_name("")
        ->check([&app](const std::string& text) {
            for (const CLI::App* command : commandsOf(app))
                if (command->get_name() == text) return std::string();
            return "there is no command '" + text + "'";
        });
    manual.footer("To read it: quor manual render | man -l -");
    manual.callback(
        [name, &app] { print(manualPage(name->empty() ? app : *app.get_subcommand(*name))); });

    const auto shell = std::make_shared<std::string>();
    CLI::App& completion =
        *app.add_subcommand("completion", "Print a script that completes options in a shell");
    completion.add_option("SHELL", *shell, "bash, zsh or fish")
        ->required()
        ->type_name("")
        ->check(CLI::IsMember(kShells));
    completion.footer("For bash: eval \"$(quor completion bash)\" in ~/.bashrc");
    completion.callback([shell, &app] { print(completionScript(app, *shell)); });
}

}  // namespace tool
