// Reads lines without any font, and compares them with texts that are right and wrong.
#pragma once

#include <string>

namespace dravik {

// Prints, per font and in all, images with the exact count and characters wrong by edit distance: with
// context, without it, and in the first view alone; how sure the readings were; and what comparing with a
// typed text finds.
void readWithoutFonts(const std::string& lines, bool verbose);

}  // namespace dravik
