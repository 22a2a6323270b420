// Learns each font from its sheets of characters and reads its lines, as a user would.
#pragma once

#include <string>

namespace dravik {

// Prints, per font, sheets included and refused, lines with the exact count, characters right and wrong (by
// edit distance from the text), the training's figures and Distances.
// From each font's sheets no more than `most` with the right count are included.
void readBack(const std::string& charsets, const std::string& lines, int most);

}  // namespace dravik
