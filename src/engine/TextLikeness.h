// Tells how much found characters look like print, so that of several ways to see an image the right one
// wins.
#pragma once

#include <array>

#include "engine/Segmentation.h"

namespace dravik {

// What tells print from other things, in this order: shares of the ink in characters of usual shape and of
// whole characters; evenness of the strokes; strength of the ink; clearness of upper and lower edges; number
// of characters, in all and per line, brought to 0 to 1; width of strokes and of characters, in heights of
// capitals; how full their boxes are; shares of neighbours that are close and that overlap; room between
// neighbours; share of all ink that is in characters; share of characters as high as capitals; stroke width
// beyond the usual.
using TextTraits = std::array<double, 16>;
TextTraits textTraits(const Segmentation& found, const Binarizer& seen);

// What textLikeness tells of an image without characters.
constexpr double kNoText = -1000;

// How much the characters look like print: of usual shape, of even stroke, standing on their lines, several
// to a line, clear against their background. Right segmentations are usually above 4, wrong ones below 3.
double textLikeness(const Segmentation& found, const Binarizer& seen);

// How many of the characters are whole, 0 to 1: of a character's height and on the line, or marks that stand
// clear of their neighbours. Tells broken or merged characters from good ones where both come from the same
// print.
double wholeness(const Segmentation& found);

// The usual height of capitals, in ink pixels; 0 when nothing is found.
float typicalHeight(const Segmentation& found);

}  // namespace dravik
