// Finds underscores. Those of bold print are so thin beside it that no threshold for the print has them; so
// they are looked for where there is room for one, in the mean ink along the line.
#pragma once

#include <vector>

#include "engine/image/Binarization.h"
#include "engine/image/Components.h"
#include "engine/segmentation/TextLines.h"

namespace dravik::engine {

// Adds those that are found to the characters of their lines, which are measured in the frame and stay in
// their order from left to right.
void addUnderscores(std::vector<LinePieces>& lines, const InkImage& ink, const Frame& frame);

}  // namespace dravik::engine
