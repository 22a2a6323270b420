// Tells how much found characters look like print, so that of several ways to see an image the right one
// wins.
#pragma once

#include <array>

#include "engine/segmentation/RectifiedNetwork.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

// What tells rightly found print from other things; textTraits says what they are.
inline constexpr std::size_t kTextTraits = 38;
using TextTraits = std::array<double, kTextTraits>;
TextTraits textTraits(const Segmentation& found, const Binarizer& seen);

// Log odds that the characters are as many as there are.
using TextNetwork = RectifiedNetwork<kTextTraits, 12>;
extern const TextNetwork kTextLikeness;

// Whether there are characters, and they are not the many pieces of noise and texture, of which some are like
// characters by chance.
bool looksLikeText(const Segmentation& found);

// How many of the characters are whole, 0 to 1: of a character's height and on the line, or marks that stand
// clear of their neighbours. Tells broken or merged characters from good ones where both come from the same
// print.
double wholeness(const Segmentation& found);

// The usual height of capitals, in ink pixels; 0 when nothing is found.
float typicalHeight(const Segmentation& found);

// The usual gap between characters that follow each other in a line, in pixels of the image; 0 when none do.
float usualGap(const Segmentation& found);

}  // namespace dravik::engine
