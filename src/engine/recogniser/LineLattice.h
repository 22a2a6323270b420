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

// A part that pieces are made of, and which found character it comes from.
struct Atom {
    Piece piece;
    std::size_t character = 0;
    float doubt = 0;  // of the cut at its left
};

// The characters `from` to `to` - 1, all of one line, those that are doubtful cut where characters are likely
// to touch, or in small steps.
enum class Cuts { Likely, Everywhere };
std::vector<Atom> atomsOf(const Segmentation& found, std::size_t from, std::size_t to,
                          const std::vector<bool>& doubtful, const LineMetrics& line, Cuts cuts);

// Atoms `first` to `end` - 1 as one piece.
struct Span {
    std::size_t first = 0, end = 0;
    Piece piece;
    bool asFound = false;
    float doubt = 0;  // of its cuts and joins
    PatchLikelihoods likelihoods{};
};

// What may be one piece, its likelihoods not known yet, in the order of the first atoms; characters are
// joined where one of them is doubtful.
std::vector<Span> spansOf(const std::vector<Atom>& atoms, const std::vector<bool>& doubtful,
                          const Frame& frame, float cap, Cuts cuts);

// By how much surer, as a logarithm, other pieces must be than those that were found: for each join and piece
// that is left out.
inline constexpr float kJoinDoubt = 1, kDirtDoubt = 4;
// What has the size and the place of a character of the line is at least so likely one, as a logarithm: it
// may be one that the recogniser does not know.
inline constexpr float kUnknown = -3.9f;
bool isCharacterSized(const Box& box, const LineMetrics& line);

// How likely a piece is to be any character, as a logarithm.
float whole(const PatchLikelihoods& likelihoods);

// Of the found characters from `from` on, all of one line, which is believed to be where `line` says: `first`
// are their lineLikelihoods.
std::vector<ReadPiece> likeliestPieces(const Segmentation& found, std::size_t from,
                                       std::span<const PatchLikelihoods> first, const LineMetrics& line);

}  // namespace dravik::engine
