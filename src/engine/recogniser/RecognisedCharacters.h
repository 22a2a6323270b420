// The characters that are told apart without a font: those of the overview, in the order of the network's
// outputs.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string_view>

namespace dravik::engine {

inline constexpr std::string_view kRecognisedCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcdefghijklmnopqrstuvwxyz-=.,:;\"'_*+/";
static_assert(kRecognisedCharacters.size() == 74);

// The place of a character among them.
constexpr std::optional<std::size_t> recognisedPlace(std::string_view character) {
    const std::size_t place =
        character.size() == 1 ? kRecognisedCharacters.find(character.front()) : std::string_view::npos;
    return place == std::string_view::npos ? std::nullopt : std::optional(place);
}

// Whether many faces draw both so alike that without a font only their size and neighbours tell which it is.
constexpr bool areDrawnAlike(std::string_view a, std::string_view b) {
    for (const std::string_view group :
         {"0Oo", "Il1", "Cc", "Ss", "Vv", "Ww", "Xx", "Zz", "Uu", "Kk", "Pp", "-_"})
        if (group.find(a) != std::string_view::npos && group.find(b) != std::string_view::npos) return true;
    return false;
}

}  // namespace dravik::engine
