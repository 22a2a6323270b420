// How print stands: the slope of its lines, and how far its strokes lean.
#pragma once

#include <span>

#include "engine/image/Components.h"

namespace dravik::engine {

// Slope of the lines of print, at most about 5 degrees; 0 where the print is too short to tell.
float printSlope(std::span<const Piece> pieces, float height);

// How far upright strokes lean to the right, per height, at most about a third; 0 where none is clear. Pieces
// must be measured in a frame of the print's slope.
float printSlant(std::span<const Piece> pieces, float slope, float height);

}  // namespace dravik::engine
