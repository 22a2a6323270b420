// Prints what a shell needs to complete the program's command line, made from its table of options:
// completion-script bash|zsh
#include <algorithm>
#include <iostream>
#include <string>
#include <string_view>

#include "trainer/commands/CommandLine.h"

namespace {

using dravik::trainer::CommandEntry;
using dravik::trainer::kProgram;
using dravik::trainer::OptionEntry;

constexpr char kThemes[] = "light dark system";
// Prints the fonts of the usual jobs folder.
constexpr char kFonts[] = "dravik-trainer fonts 2>/dev/null | tail -n +2 | cut -f1";

std::string words(const CommandEntry& command) {
    std::string all;
    for (const OptionEntry& option : command.options) all += (all.empty() ? "" : " ") + option.name;
    return all;
}

// What bash completes behind an option.
std::string bashValue(const OptionEntry& option) {
    if (option.value == "THEME") return "_dravik_trainer_words '" + std::string(kThemes) + "'";
    if (option.value == "NAME") return "_dravik_trainer_words \"$(" + std::string(kFonts) + ")\"";
    if (option.value == "DIR") return "_dravik_trainer_files -d";
    if (option.value.find('.') != std::string::npos) return "_dravik_trainer_files -f";
    return ":";
}

constexpr char kBashFunctions[] = R"(# Completion of dravik-trainer for bash.
_dravik_trainer_words() {
    local IFS=$' \n'
    COMPREPLY+=($(compgen -W "$1" -- "$word"))
}
_dravik_trainer_files() {
    local IFS=$'\n'
    compopt -o filenames 2>/dev/null
    COMPREPLY+=($(compgen "$1" -- "$word"))
}
_dravik_trainer() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]}
    COMPREPLY=()
    case $before in
)";
constexpr char kBashEnd[] = R"(    [[ $word == -* ]] || _dravik_trainer_files -f
}
complete -F _dravik_trainer dravik-trainer
)";

void printBash(const std::vector<CommandEntry>& commands) {
    std::cout << kBashFunctions;
    std::vector<std::string> told;
    std::string names;
    for (const CommandEntry& command : commands) {
        names += (names.empty() ? "" : " ") + command.name;
        for (const OptionEntry& option : command.options) {
            if (option.value.empty() || std::count(told.begin(), told.end(), option.name)) continue;
            told.push_back(option.name);
            std::cout << "        " << option.name << ") " << bashValue(option) << "; return ;;\n";
        }
    }
    std::cout << "    esac\n    [[ $COMP_CWORD -gt 1 ]] && case ${COMP_WORDS[1]} in\n";
    for (const CommandEntry& command : commands) {
        if (command.name.empty()) continue;
        std::cout << "        " << command.name << ")\n            _dravik_trainer_words '" << words(command)
                  << "'\n";
        if (!command.operand.empty())
            std::cout << "            [[ $word == -* ]] || _dravik_trainer_files -f\n";
        std::cout << "            return ;;\n";
    }
    std::cout << "    esac\n    _dravik_trainer_words '" << words(commands.front())
              << "'\n    [[ $COMP_CWORD -eq 1 ]] && _dravik_trainer_words '" << names << "'\n"
              << kBashEnd;
}

// Between single quotes, inside brackets or between colons.
std::string zshText(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':' || c == '\\') result += '\\';
        if (c == '\'')
            result += "'\\''";
        else
            result += c;
    }
    return result;
}

std::string zshValue(const OptionEntry& option) {
    if (option.value == "THEME") return "(" + std::string(kThemes) + ")";
    if (option.value == "NAME") return "_dravik_trainer_fonts";
    if (option.value == "DIR") return "_files -/";
    if (option.value.find('.') != std::string::npos) return "_files";
    return " ";
}

void printArguments(const CommandEntry& command, std::string_view indent) {
    std::cout << indent << "_arguments -s";
    for (const OptionEntry& option : command.options) {
        std::cout << " \\\n" << indent << "    '" << option.name << '[' << zshText(option.about) << ']';
        if (!option.value.empty()) std::cout << ':' << zshText(option.value) << ":" << zshValue(option);
        std::cout << '\'';
    }
    if (!command.operand.empty())
        std::cout << " \\\n" << indent << "    '*:" << zshText(command.operand) << ":_files'";
    std::cout << '\n';
}

void printZsh(const std::vector<CommandEntry>& commands) {
    std::cout << "#compdef " << kProgram
              << "\n\n_dravik_trainer_fonts() {\n    local -a fonts\n    fonts=(${(f)\"$(" << kFonts
              << ")\"})\n    compadd -a fonts\n}\n\nlocal -a commands\ncommands=(\n";
    for (const CommandEntry& command : commands)
        if (!command.name.empty())
            std::cout << "    '" << command.name << ':' << zshText(command.about) << "'\n";
    std::cout
        << ")\nif (( CURRENT == 2 )) && [[ $words[2] != -* ]]; then\n    _describe command commands\nfi\n"
        << "case $words[2] in\n";
    for (const CommandEntry& command : commands) {
        if (command.name.empty()) continue;
        std::cout << "    " << command.name << ")\n        if (( CURRENT > 2 )); then\n"
                  << "            shift words; (( CURRENT-- ))\n";
        printArguments(command, "            ");
        std::cout << "            return\n        fi ;;\n";
    }
    std::cout << "esac\n";
    printArguments(commands.front(), "");
}

}  // namespace

int main(int argc, char** argv) {
    const std::string_view shell = argc == 2 ? argv[1] : "";
    const std::vector<CommandEntry> commands = dravik::trainer::commandTable();
    if (shell == "bash")
        printBash(commands);
    else if (shell == "zsh")
        printZsh(commands);
    else
        return 2;
    return std::cout.flush() ? 0 : 1;
}
