#include "tool/FontName.h"

#include <algorithm>

#include "base/Text.h"

namespace dravik::tool {

std::string CleanFontName(std::string_view name) {
    std::string clean = trimmed(name);
    for (char& c : clean)
        if (std::string_view("* /\\:;.|").find(c) != std::string_view::npos) c = '_';
    return clean;
}

bool isReservedFontName(std::string_view name) {
    return lowerCase(name) == "new";
}

bool fontExists(std::string_view name, const std::vector<std::string>& fonts) {
    return std::any_of(fonts.begin(), fonts.end(),
                       [&](const std::string& font) { return lowerCase(font) == lowerCase(name); });
}

std::optional<std::string> fontNamed(const std::string& name, const std::vector<std::string>& fonts) {
    for (const auto& wanted : {name, CleanFontName(name)})
        if (std::find(fonts.begin(), fonts.end(), wanted) != fonts.end()) return wanted;
    return std::nullopt;
}

}  // namespace dravik::tool
