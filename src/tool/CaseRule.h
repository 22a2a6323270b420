// "Maintain Case": a typed text follows the case of the letters that the font knows. The screen's Include,
// the commands and the preview of an include all ask here.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tool/FontTool.h"

namespace dravik::tool {

// Case of the letters A-Z and a-z among a font's characters; others do not count.
enum class CharacterCase : std::int16_t { Mixed = 0, Upper = 1, Lower = 2, None = 3 };

// The case of the current font's characters. Raises what the query raises, and Type mismatch (13) or Overflow
// (6) for a record without a character's code.
CharacterCase fontCase(FontTool& tool);

// True when a text for a font of this case is changed before it is included.
constexpr bool isSingleCase(CharacterCase letters) {
    return letters == CharacterCase::Upper || letters == CharacterCase::Lower;
}

// The text in the font's case; as it is for a font with letters of both cases or of none.
std::string inCase(std::string_view text, CharacterCase letters);

}  // namespace dravik::tool
