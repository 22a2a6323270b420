// Ink in the lines of print that was left out when their characters were found: what may be a character after
// all, once it is known that there are more.
#pragma once

#include <vector>

#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

// For each line of the view its pieces between and beside the characters, from left to right and measured;
// few.
std::vector<std::vector<Piece>> leftOutPieces(const Segmentation& found);

}  // namespace dravik::engine
