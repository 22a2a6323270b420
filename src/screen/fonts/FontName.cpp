#include "screen/fonts/FontName.h"

#include "base/Text.h"

namespace dravik::screen {

std::string CleanFontName(std::string_view name) {
    std::string clean = trimmed(name);
    for (char& c : clean)
        if (std::string_view("* /\\:;.|").find(c) != std::string_view::npos) c = '_';
    return clean;
}

}  // namespace dravik::screen
