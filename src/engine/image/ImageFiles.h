// Which files are images, by their names.
#pragma once

#include <filesystem>
#include <span>
#include <string_view>
#include <system_error>
#include <vector>

namespace dravik::engine {

// ".png" and the like, in small letters: files of a folder with such a name are taken for images.
std::span<const std::string_view> imageExtensions() noexcept;
bool hasImageExtension(const std::filesystem::path& path);

// Every image of a folder in order of name; folders inside are not entered, pipes and devices left out. What
// was found before an error is returned with it.
std::vector<std::filesystem::path> imagesIn(const std::filesystem::path& folder, std::error_code& error);

}  // namespace dravik::engine
