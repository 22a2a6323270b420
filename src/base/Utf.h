// Texts between UTF-8, which all models have, and UTF-16, which Windows has (UTF-32 where wchar_t is that
// wide). Done here and not by the standard library, whose conversion brings its locales along, half as large
// as the engine.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace dravik {

struct Utf8Character {
    char32_t code;      // U+FFFD when it is not valid
    std::size_t bytes;  // at least 1
    bool valid;
};

// The character that a text starts with, which is not empty; one that is not valid is as long as what could
// have begun a valid one.
Utf8Character firstCharacter(std::string_view text);
// The UTF-8 of a character; U+FFFD for a code that names none.
std::string utf8Of(char32_t code);

// Bytes that are not UTF-8, and lone surrogates, become U+FFFD.
std::wstring wide(std::string_view utf8);
std::string utf8(std::wstring_view wide);

}  // namespace dravik
