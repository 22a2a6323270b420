// The headless commands: the screen's own procedures, driven without a display.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "trainer/OpenedParts.h"

namespace dravik::trainer {

// True when the first argument names a headless command or asks for --help or --version.
bool isHeadlessCommand(const std::vector<std::string>& arguments);

// Runs a headless command. `arguments` are without the program's name. Returns the exit code: 0 done, 1 the
// work failed in whole or in part, 2 the command line is wrong, 130 interrupted by Ctrl+C. Results go to
// `out`, problems to `err`; a progress bar goes to `err` when `errIsTerminal`.
int runHeadless(const std::vector<std::string>& arguments, const ImageDecoder& decoder, std::ostream& out,
                std::ostream& err, bool errIsTerminal);

// What the windowed program takes: image files and folders to open, and options.
struct WindowOptions {
    std::vector<std::string> paths;
    std::string jobs;     // "" for the standard folder
    std::string problem;  // what is wrong with the command line, "" when nothing is
};
WindowOptions windowOptions(const std::vector<std::string>& arguments);

}  // namespace dravik::trainer
