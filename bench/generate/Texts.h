// What is printed on parts: dates, lot and serial codes, marks, words, plates.
#pragma once

#include <string>
#include <vector>

#include "generate/Random.h"

namespace dravik {

// One or more lines of five to sixteen characters.
std::vector<std::string> partText(Random& random, int lines);
// Rows of capitals and figures without blanks, as on a sheet of plate characters.
std::vector<std::string> sheetText(Random& random);
// All characters of the overview in a random order, in lines.
std::vector<std::string> charsetText(Random& random, int lines);

// A single character, two or three, or a page of words: what the engine must not be at a loss with though
// parts seldom have it.
std::vector<std::string> unusualText(Random& random);

}  // namespace dravik
