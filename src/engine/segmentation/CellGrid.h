// Evenly spaced print: finds the cells that the characters of a line stand in, by the clear borders between
// them.
#pragma once

#include <optional>
#include <vector>

#include "engine/image/Components.h"

namespace dravik::engine {

struct CellGrid {
    float pitch = 0;   // width of a cell along the line, in ink pixels
    float origin = 0;  // left border of a cell
};

// Nothing when the line is too short to tell or its characters are not evenly spaced. `pieces` are those of
// one line, measured in the frame.
std::optional<CellGrid> findGrid(const std::vector<Piece>& pieces, const Frame& frame, float capHeight);

// Whether no piece is wider than a cell and the pieces that share one are all parts of something higher than
// each of them, as the fragments of a character are and a character beside a mark is not.
bool joinsFragmentsOnly(const std::vector<Piece>& pieces, const CellGrid& grid, float capHeight);
// Whether it is false for every grid, since a piece is wider than any cell.
bool joinsNever(const std::vector<Piece>& pieces, float capHeight);

}  // namespace dravik::engine
