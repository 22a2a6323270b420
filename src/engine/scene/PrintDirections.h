// In which directions the print of a picture may run.
#pragma once

#include <span>
#include <vector>

#include "engine/image/Components.h"

namespace dravik::engine {

constexpr float kSteepestPrint = 0.82f;  // radians, a little beyond 45 degrees

// The longer side of a piece's box.
float extent(const Piece& piece);

// Directions in which pieces at least `leastSize` large have neighbours of like size, in radians, the most
// frequent first: at most three. The pieces stand upright within width and height.
std::vector<float> printDirections(std::span<const Piece> pieces, int width, int height, float leastSize);

}  // namespace dravik::engine
