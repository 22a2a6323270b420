// File names are UTF-8 texts everywhere; this is the one way to the standard library's paths, and to the
// names that Windows takes.
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

// UTF-16 as Windows has it, without the standard library's locales, on which its own conversion rests and
// which are as large as half the engine. Bytes that are not UTF-8 become U+FFFD.
std::wstring wideName(const std::string& utf8);

}  // namespace dravik
