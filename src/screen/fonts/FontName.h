// What a font may be called.
#pragma once

#include <string>
#include <string_view>

namespace dravik::screen {

// The name without surrounding blanks, and with "_" for every character of it that cannot stand in a file
// name.
std::string CleanFontName(std::string_view name);

}  // namespace dravik::screen
