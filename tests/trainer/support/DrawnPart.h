// Part images for tests, drawn stroke by stroke: digits and a few letters made of seven segments, which no
// two characters share all of. Kept as PGM files, the simplest format that there is.
#pragma once

#include <string>

#include "engine/GreyImage.h"

namespace dravik::test {

// Dark characters on a light part; lines are separated by '\n'. Drawable: 0-9 A C E F H J L P U.
// `height` is a character's height in pixels.
GreyImage drawPart(const std::string& text, int height = 40);

void writePgm(const std::string& file, const GreyImage& image);

// The decoder that the tests hand to the program; raises Failure that names the file and the problem.
GreyImage readPgm(const std::string& file);

}  // namespace dravik::test
