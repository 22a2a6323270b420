// File names are UTF-8 texts everywhere; this is the one way to the standard library's paths.
#pragma once

#include <filesystem>
#include <string>

namespace dravik {

inline std::filesystem::path toPath(const std::string& utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

inline std::string fromPath(const std::filesystem::path& path) {
    const auto utf8 = path.u8string();
    return std::string(utf8.begin(), utf8.end());
}

}  // namespace dravik
