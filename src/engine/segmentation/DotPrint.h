// Print in fragments: dots that do not touch, recognised by their one size and joined dot to dot, and strokes
// broken into pieces that lie closer together than characters do.
#pragma once

#include <vector>

#include "engine/image/Components.h"

namespace dravik::engine {

// The pieces with neighbouring dots joined when the print is dotted, as they are otherwise.
std::vector<Piece> joinedDots(std::vector<Piece> pieces);

// The pieces with fragments joined that lie within a small part of the print's height of each other and make
// one character together.
std::vector<Piece> joinedFragments(std::vector<Piece> pieces);

// The pieces with all joined that lie within a small part of the print's height of each other, as long as
// what comes out still looks like separate characters: dots of which some touch. The image size bounds the
// pieces' places.
std::vector<Piece> joinedByCloseness(std::vector<Piece> pieces, int width, int height);

}  // namespace dravik::engine
