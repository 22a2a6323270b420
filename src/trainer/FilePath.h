// File names are UTF-8 texts everywhere in this system; these two turn them into paths and back.
#pragma once

#include <filesystem>
#include <string>

namespace dravik {

inline std::filesystem::path filePath(const std::string& name) {
    return std::filesystem::path(std::u8string(name.begin(), name.end()));
}

inline std::string fileName(const std::filesystem::path& path) {
    const auto name = path.u8string();
    return std::string(name.begin(), name.end());
}

}  // namespace dravik
