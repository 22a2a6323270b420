#include "windows/app/Wildcards.h"

#include <algorithm>

#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

std::vector<std::string> filesThatFit(const std::string& pattern) {
    std::vector<std::string> files;
    const std::size_t folder = pattern.find_last_of("\\/:") + 1;  // 0 without one
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW(win32::wide(pattern).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return files;
    do {
        if (!(found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
            files.push_back(pattern.substr(0, folder) + win32::utf8(found.cFileName));
    } while (FindNextFileW(search, &found));
    FindClose(search);
    std::sort(files.begin(), files.end());
    return files;
}

}  // namespace

std::vector<std::string> withoutWildcards(const std::vector<std::string>& arguments) {
    std::vector<std::string> result;
    for (const std::string& argument : arguments) {
        const bool characters = !result.empty() && result.back() == "--charset";
        std::vector<std::string> files;
        if (!characters && !argument.starts_with("--") && argument.find_first_of("*?") != std::string::npos)
            files = filesThatFit(argument);
        if (files.empty()) files.push_back(argument);
        result.insert(result.end(), files.begin(), files.end());
    }
    return result;
}

}  // namespace dravik::app
