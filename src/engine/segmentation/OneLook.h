// What one look at a picture finds: lines of print in its ink, the characters in them, and the decisions that
// might as well have been made otherwise.
#pragma once

#include <vector>

#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

std::size_t countOf(const std::vector<LinePieces>& lines);

// The lines of print that are seen, before their characters are told apart. `print` has the ink separated for
// its look, and gets its frame.
std::vector<LinePieces> linesSeen(Segmentation& print);

// Tells the characters of the lines apart, by the thresholds of the look.
void findCharacters(Segmentation& print, std::vector<LinePieces>&& lines, const Binarizer& binarizer);

// Thresholds that would turn one doubtful decision, or a few of one kind, the other way.
std::vector<Look::Bars> otherBars(const CharacterDecisions& decisions);

}  // namespace dravik::engine
