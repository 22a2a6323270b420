// A reading held against the text that should be there, character by character.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "engine/font/FontReader.h"

namespace dravik::library {

// A pair of the alignment; one of both may be missing.
struct Pairing {
    int expected = -1;  // index of the expected character
    int read = -1;      // index of the read one
};

// The characters of a text that are printed: all but blanks and line feeds.
std::vector<std::string> printedCharacters(std::string_view text);

// The confidence that a read character is this one: its own, that of an alternative, or 0.
double confidenceOf(const engine::ReadCharacter& read, const std::string& character);

// Pairs expected and read characters in their order so that as few as possible are wrong, missing or
// unexpected; of such pairings one in which wrong ones have the expected character among their alternatives.
std::vector<Pairing> paired(std::span<const std::string> expected,
                            std::span<const engine::ReadCharacter> read);

}  // namespace dravik::library
