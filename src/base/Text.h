// Texts are UTF-8; what the operator counts and types are their characters (code points), which these
// functions see.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dravik {

// The characters of a text, one string each. A byte that is not part of valid UTF-8 is a character of its
// own.
std::vector<std::string> characters(std::string_view text);
std::size_t characterCount(std::string_view text);

// The text without its last `count` characters.
std::string withoutLast(std::string_view text, std::size_t count);

// Character and code; the empty text has code 0, a code that names no character gives U+FFFD.
std::int32_t codeOf(std::string_view character);
std::string characterOf(std::int32_t code);

// True for UTF-8 without control characters: what can be printed.
bool isPrintable(std::string_view text);
// A character that takes no place in print, such as a zero-width blank or a mark of the direction of writing.
bool isInvisible(std::int32_t code);

// Case of Latin, Greek, Cyrillic and Armenian letters, letter by letter; everything else stays, and so do
// letters whose other case is not one letter.
std::string upperCase(std::string_view text);
std::string lowerCase(std::string_view text);

// Without leading and trailing blanks (U+0020 only).
std::string trimmed(std::string_view text);

// True when `part` occurs in `text`; the empty part occurs in every text that is not empty.
bool contains(std::string_view text, std::string_view part);

}  // namespace dravik
