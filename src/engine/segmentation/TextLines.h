// Arranges pieces of print in lines of text: the slope of the lines, which piece stands in which line, and
// each line's baseline and height of capitals.
#pragma once

#include <span>
#include <vector>

#include "engine/image/Components.h"

namespace dravik::engine {

struct LineMetrics {
    float baseline = 0;      // across the line, in the print's frame
    float capHeight = 1;     // of capitals and figures above the baseline
    bool oneHeight = false;  // all characters are of one height, which may be that of small letters as well
};

struct LinePieces {
    std::vector<Piece> pieces;  // from left to right
    LineMetrics metrics;
};

// Usual height of the pieces that are characters; 0 when there are none.
float usualHeight(std::span<const Piece> pieces);

// Slope of the lines of print, at most about 5 degrees; 0 where the print is too short to tell.
float printSlope(std::span<const Piece> pieces, float height);

// How far upright strokes lean to the right, per height, at most about a third; 0 where none is clear. Pieces
// must be measured in a frame of the print's slope.
float printSlant(std::span<const Piece> pieces, float slope, float height);

// The lines from top to bottom. Pieces must be measured in the frame of the print. Specks and pieces that
// belong to no line of text are left out.
std::vector<LinePieces> textLines(std::vector<Piece> pieces, float height);

// Baseline and height from the boxes of a line's characters, `height` being their usual height.
LineMetrics measureLine(std::span<const Box> boxes, float height);

}  // namespace dravik::engine
