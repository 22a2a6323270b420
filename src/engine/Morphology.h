// Grey-level closing with a square: fills whatever is darker than its surroundings and narrower than the
// square, and keeps the edges of everything larger.
#pragma once

#include <vector>

namespace dravik {

// Rows of `width` values without gaps; `side` is odd. Takes the same time for every side.
std::vector<float> closed(std::vector<float> pixels, int width, int height, int side);

}  // namespace dravik
