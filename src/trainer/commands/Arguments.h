// The arguments of one headless command, taken apart: options with a value each, flags without, and operands.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dravik::trainer {

struct Arguments {
    // The value of an option, nothing when it is not given.
    std::optional<std::string> option(std::string_view name) const;
    bool flag(std::string_view name) const;

    std::map<std::string, std::string, std::less<>> options;  // by name, as in "--font"
    std::vector<std::string> flags;
    std::vector<std::string> operands;
    bool wantsHelp = false;
    std::string problem;  // what is wrong, "" when nothing is
};

// "--name value" and "--name=value" are the same; after "--" everything is an operand. Only the options and
// flags named are known.
Arguments parseArguments(const std::vector<std::string>& arguments, const std::vector<std::string>& known,
                         const std::vector<std::string>& knownFlags = {});

// Takes "--name value" or "--name=value" out of the arguments before "--"; "" when it is not there.
std::string takeOption(std::vector<std::string>& arguments, const std::string& name);

}  // namespace dravik::trainer
