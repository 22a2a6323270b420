// Drops what stands among characters but is no print: dirt, scratches, edges of the part, texture.
#pragma once

#include <array>
#include <vector>

#include "engine/segmentation/RectifiedNetwork.h"
#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

// Width of a piece's strokes in ink pixels: twice its area over its outline, which for a long stroke is its
// width.
float strokeWidth(const Piece& piece, const InkImage& ink);

// What tells print from dirt: size, contrast and stroke beside those of the line and of the whole, place in
// the line, room to its neighbours, noise, and how it was looked at.
inline constexpr std::size_t kPrintTraits = 20;
using PrintTraits = std::array<double, kPrintTraits>;
// Of each piece of each line; `lines` hold the characters from left to right.
std::vector<std::vector<PrintTraits>> printTraits(const std::vector<LinePieces>& lines, const InkImage& ink,
                                                  const Binarizer& seen, const Look& look);

// Log odds of a piece being print.
using PrintNetwork = RectifiedNetwork<kPrintTraits, 10>;
extern const PrintNetwork kPrintLikeness;

// Removes the pieces that are more likely dirt than print, and lines that have hardly any piece left.
void dropForeign(std::vector<LinePieces>& lines, const InkImage& ink, const Binarizer& seen, const Look& look,
                 Decisions& prints);

}  // namespace dravik::engine
