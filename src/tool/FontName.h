// What a font may be called, and which font a name means.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dravik::tool {

// The name without surrounding blanks, and with "_" for every character of it that cannot stand in a file
// name.
std::string CleanFontName(std::string_view name);

// "new" in any case is no name for a font.
bool isReservedFontName(std::string_view name);

// True when a font of the list has that name in any case: their files would be one where case does not count.
bool fontExists(std::string_view name, const std::vector<std::string>& fonts);

// The font of a list that is meant: the one of just that name, else the one of the name as a new font would
// get it; nothing when there is none.
std::optional<std::string> fontNamed(const std::string& name, const std::vector<std::string>& fonts);

}  // namespace dravik::tool
