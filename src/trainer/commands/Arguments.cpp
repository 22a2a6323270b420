#include "trainer/commands/Arguments.h"

#include <algorithm>

namespace dravik::trainer {

std::optional<std::string> Arguments::option(std::string_view name) const {
    const auto found = options.find(name);
    return found == options.end() ? std::nullopt : std::optional(found->second);
}

bool Arguments::flag(std::string_view name) const {
    return std::find(flags.begin(), flags.end(), name) != flags.end();
}

Arguments parseArguments(const std::vector<std::string>& arguments, const std::vector<std::string>& known,
                         const std::vector<std::string>& knownFlags) {
    Arguments result;
    const auto isFlag = [&](const std::string& name) {
        return std::find(knownFlags.begin(), knownFlags.end(), name) != knownFlags.end();
    };
    const auto isKnown = [&](const std::string& name) {
        return std::find(known.begin(), known.end(), name) != known.end() || isFlag(name);
    };
    bool onlyOperands = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto& argument = arguments[i];
        if (onlyOperands || argument.size() < 2 || argument[0] != '-') {
            result.operands.push_back(argument);
            continue;
        }
        if (argument == "--") {
            onlyOperands = true;
            continue;
        }
        if (argument == "--help" || argument == "-h") {
            result.wantsHelp = true;
            continue;
        }
        if (isFlag(argument)) {
            result.flags.push_back(argument);
            continue;
        }
        const auto equals = argument.find('=');
        const auto name = argument.substr(0, equals);
        if (!isKnown(name) || isFlag(name)) {
            result.problem = (isFlag(name) ? "no value goes with option " : "unknown option ") + name;
            return result;
        }
        const bool separate = equals == std::string::npos;
        if (separate && (i + 1 == arguments.size() || isKnown(arguments[i + 1]))) {
            result.problem = "option " + name + " needs a value";
            return result;
        }
        if (!result.options.emplace(name, separate ? arguments[++i] : argument.substr(equals + 1)).second) {
            result.problem = "option " + name + " is given twice";
            return result;
        }
    }
    return result;
}

std::string takeOption(std::vector<std::string>& arguments, const std::string& name) {
    for (auto it = arguments.begin(); it != arguments.end() && *it != "--"; ++it) {
        if (it->starts_with(name + "=")) {
            std::string value = it->substr(name.size() + 1);
            arguments.erase(it);
            return value;
        }
        if (*it == name && it + 1 != arguments.end()) {
            std::string value = *(it + 1);
            arguments.erase(it, it + 2);
            return value;
        }
    }
    return {};
}

}  // namespace dravik::trainer
