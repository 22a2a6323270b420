// The characters of a line once more, by what they look like: where one that was found is probably a half, a
// double or dirt, its cuts and the joins with its neighbours are tried, and the pieces taken that are the
// likeliest to be whole characters.
#pragma once

#include <span>
#include <vector>

#include "engine/recogniser/BaseNetwork.h"

namespace dravik::engine {

struct ReadPiece {
    Piece piece;
    PatchLikelihoods likelihoods{};
    float doubt = 0;  // of its cuts and joins and of the dirt left out beside it, as a logarithm
};

// How likely a piece is to be any character, as a logarithm.
float whole(const PatchLikelihoods& likelihoods);

// Of the found characters from `from` on, all of one line, which is believed to be where `line` says: `first`
// are their lineLikelihoods.
std::vector<ReadPiece> likeliestPieces(const Segmentation& found, std::size_t from,
                                       std::span<const PatchLikelihoods> first, const LineMetrics& line);

}  // namespace dravik::engine
