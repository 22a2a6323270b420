// What one look at a picture finds: lines of print in its ink, and the characters in them.
#pragma once

#include <vector>

#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

// The lines of print that are seen, before their characters are told apart. `print` has the ink separated for
// its look, and gets its frame.
std::vector<LinePieces> linesSeen(Segmentation& print);

// Tells the characters of the lines apart, and drops what is no print.
void findCharacters(Segmentation& print, std::vector<LinePieces>&& lines, const Binarizer& binarizer);

}  // namespace dravik::engine
