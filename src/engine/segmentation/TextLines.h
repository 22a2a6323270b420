// Arranges pieces of print in lines of text: which piece stands in which line.
#pragma once

#include <span>
#include <vector>

#include "engine/image/Components.h"
#include "engine/segmentation/LineMetrics.h"

namespace dravik::engine {

struct LinePieces {
    std::vector<Piece> pieces;  // from left to right
    LineMetrics metrics;
    std::vector<Piece> leftOut = {};  // of its pieces, what is hardly likelier dirt than print
};

// Usual height of the pieces that are characters; 0 when there are none.
float usualHeight(std::span<const Piece> pieces);

// The lines from top to bottom. Pieces must be measured in the frame of the print; one that reaches over two
// lines is cut between them. Specks and pieces that belong to no line of text are left out.
std::vector<LinePieces> textLines(std::vector<Piece> pieces, const Frame& frame, float height);

}  // namespace dravik::engine
