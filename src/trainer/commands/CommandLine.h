// What the program's arguments ask for: one of the commands, the window, or a line to tell. Both front ends
// parse here, before they need a display.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "trainer/commands/Commands.h"

namespace dravik::trainer {

// Help, the version, or what is wrong with the command line.
struct Notice {
    std::string text;
    int status = 0;  // 0: a result; 1: no path given exists; 2: the command line is wrong
};

struct WindowOptions {
    std::vector<std::string>
        paths;          // image files and folders to open; at least one exists when there are any
    std::string theme;  // "light", "dark", "system" or "" when none is asked for
    JobFolder folder;
};

using CommandLine = std::variant<Notice, LearnOptions, ReadOptions, FontsOptions, VersionsOptions,
                                 RestoreOptions, ReportOptions, WindowOptions>;

// `arguments` are without the program's name.
CommandLine parseCommandLine(const std::vector<std::string>& arguments);

// An option as a shell needs to know it to complete it.
struct OptionEntry {
    std::string name;   // "--font"
    std::string value;  // "NAME", what it takes; "" for a flag
    std::string about;  // one line
};
// A command with its options, or under the name "" the program without one. `operand` is what other arguments
// are, "" when there are none.
struct CommandEntry {
    std::string name;
    std::string about;
    std::string operand;
    std::vector<OptionEntry> options;
};

// All that may stand on the command line, the program without a command first.
std::vector<CommandEntry> commandTable();

// Does all but the window's work and returns the exit code: 0 done, 1 the work failed in whole or in part, 2
// the command line is wrong, 130 interrupted by Ctrl+C. Results go to `out`, problems to `err`; a progress
// bar goes to `err` when that is a terminal.
int runCommand(const CommandLine& line, const engine::ImageDecoder& decoder, const CommandStreams& streams);

}  // namespace dravik::trainer
