// Another program, waited for.
#pragma once

#include <string>

namespace dravik::test {

struct Finished {
    unsigned long code = 0;
    std::string output;  // standard output and standard error, UTF-8 or the console's bytes
};

// Runs the command line; ends it, and answers code 9999, when it takes longer than this.
Finished runProcess(const std::wstring& commandLine, unsigned long milliseconds = 60'000);

}  // namespace dravik::test
