// Turns the pieces of a line into its characters: parts that belong together (dots over letters, colons,
// equal signs, quotation marks, broken strokes) are joined and characters that touch are cut apart where that
// is clear.
#pragma once

#include <vector>

#include "engine/image/Components.h"
#include "engine/segmentation/CharacterCuts.h"
#include "engine/segmentation/TextLines.h"

namespace dravik::engine {

// Distance from character to character of a line in which all are equally wide; 0 when they are not.
float characterPitch(std::span<const Piece> pieces, float capHeight);

// Joins the pieces that stand one above the other, arranges them, and measures the line.
LineScale joinAndMeasure(LinePieces& line, const Frame& frame);

// Makes the line's pieces its characters, from left to right.
void tellCharactersApart(LinePieces& line, const Frame& frame, CharacterDecisions& decisions);

}  // namespace dravik::engine
