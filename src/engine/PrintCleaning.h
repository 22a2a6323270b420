// Drops what stands among characters but is no print: dirt, scratches, edges of the part, texture.
#pragma once

#include <vector>

#include "engine/Binarization.h"
#include "engine/TextLines.h"

namespace dravik {

// Width of a piece's strokes in ink pixels: twice its area over its outline, which for a long stroke is its
// width.
float strokeWidth(const Piece& piece, const InkImage& ink);

// `lines` hold the characters from left to right. What is much fainter than the print, or made of much
// thinner strokes, goes; so do lines of which little remains.
void dropForeign(std::vector<LinePieces>& lines, const InkImage& ink, const Binarizer& seen);

}  // namespace dravik
