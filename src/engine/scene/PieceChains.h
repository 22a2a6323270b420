// Pieces of ink that follow each other in a row: what may be a line of print, and what tells it from barcodes
// and other codes.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "engine/image/Components.h"

namespace dravik::engine {

// Pieces are characters of a size to be found from so high to so high, in working pixels.
constexpr float kLeastPieceHeight = 7, kMostPieceHeight = 34;
constexpr std::size_t kFewestInChain = 3;

// In the frame that its pieces are measured in.
struct Chain {
    std::vector<std::size_t> members;  // from left to right
    float top = 0, bottom = 0;         // middle of the members'
    float score = 0;
    float height() const { return bottom - top; }
};

// Chains along one direction, at most `kSteepestPrint` radians either way, which is refined by what they
// themselves say of it. The pieces are measured in the frame of that direction then. In these chains and
// below a working pixel is `unit` = 1 / cos(angle) of the frame's.
std::vector<Chain> chainsAlong(std::vector<Piece>& pieces, float& angle);

// Bars side by side, at distances much smaller than their height.
bool isBarcode(const Chain& chain, std::span<const Piece> pieces, float unit);

// Squares in rows closer than lines of text are: there are as many pieces right above and right below the
// chain.
bool isAmongMany(const Chain& chain, std::span<const Piece> pieces);

// Makes one of chains where what is between them is no more than a wide blank.
void joinAcrossBlanks(std::vector<Chain>& rows, std::span<const Piece> pieces, float unit);

// Takes away one or two pieces at an end, far from the others, that are no characters: the rim of a hole,
// squares of a code.
void trimEnds(Chain& chain, std::span<const Piece> pieces, float unit);

// How many of the members stand on the line or hang from its top, those that look like characters alone.
float scoreOf(const Chain& chain, std::span<const Piece> pieces);

// Moves the ends of a chain, which are left and right, to what stands in the line beside it and belongs to it
// too: marks, and characters that were not like their neighbours.
void reachOut(const Chain& row, std::span<const Piece> pieces, float& left, float& right);

}  // namespace dravik::engine
