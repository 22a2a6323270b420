// The characters of a line once more, by what they look like and by where the network of boundaries sees one
// end: where one that was found is probably a half, a double or dirt, its cuts and the joins with its
// neighbours are tried, and the pieces taken that are the likeliest to be whole characters.
#pragma once

#include <span>
#include <vector>

#include "engine/recogniser/BaseNetwork.h"
#include "engine/recogniser/LineBoundaries.h"

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
    // What it costs, as a logarithm, that a character ends at its left, and that none ends there.
    float boundary = 0, noBoundary = 0;
};

// The characters of a line, each left whole, cut where one may end, or in small steps. `cap` is the height of
// its capitals.
enum class Cuts { None, Likely, Everywhere };
std::vector<Atom> atomsOf(const Frame& frame, std::span<const Glyph> line, std::span<const Cuts> cuts,
                          const LineBoundaries& boundaries, float cap);

// Atoms `first` to `end` - 1 as one piece.
struct Span {
    std::size_t first = 0, end = 0;
    Piece piece;
    bool asFound = false;
    float doubt = 0;  // of where it begins, and that it is not cut
    bool isRead = false;
    PatchLikelihoods likelihoods{};
};

// What may be one piece, its likelihoods not known yet, in the order of the first atoms; characters are
// joined where one of them is doubtful.
std::vector<Span> spansOf(const std::vector<Atom>& atoms, const std::vector<bool>& doubtful,
                          const Frame& frame, float cap);

// By how much surer, as a logarithm, other pieces must be than those that were found: for each join; and for
// one that is left out, by what the boundaries say of its columns.
inline constexpr float kJoinDoubt = 0.5f;
float dirtDoubt(const LineBoundaries& boundaries, const Box& box);
// What has the size and the place of a character of the line is at least so likely one, as a logarithm: it
// may be one that the recogniser does not know.
inline constexpr float kUnknown = -3.9f;
bool isCharacterSized(const Box& box, const LineMetrics& line);

// What stands so far, in heights of capitals and in usual gaps, from the rest at an end of a line stands
// aside: it may be dirt that looks like print.
inline constexpr float kAside = 0.4f, kAsideGaps = 1.6f;

// How likely a piece is to be any character, as a logarithm.
float whole(const PatchLikelihoods& likelihoods);

// Whether it is probably no character, or a half or a double one.
bool isUnsure(const PatchLikelihoods& likelihoods);

// Of the found characters from `from` on, all of one line, which is believed to be where `line` says: `first`
// are their lineLikelihoods, `boundaries` those of the line, in whatever size.
std::vector<ReadPiece> likeliestPieces(const Segmentation& found, std::size_t from,
                                       std::span<const PatchLikelihoods> first,
                                       const LineBoundaries& boundaries, const LineMetrics& line);

}  // namespace dravik::engine
