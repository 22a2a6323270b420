// Grey-level closing with a square: fills whatever is darker than its surroundings and narrower than the
// square, and keeps the edges of everything larger. What reaches the image's border counts as going on
// beyond.
#pragma once

#include <cstdint>
#include <vector>

namespace dravik::engine {

// Rows of `width` values without gaps; `side` is odd. Takes nearly the same time for every side, and no more
// room than some rows.
void closeNarrow(std::vector<std::uint8_t>& pixels, int width, int height, int side);

}  // namespace dravik::engine
