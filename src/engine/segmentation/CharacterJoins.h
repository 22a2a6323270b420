// Which pieces that stand side by side are parts of one character: the strokes of a quotation mark, the parts
// of a torn letter, the columns of dots.
#pragma once

#include <array>
#include <vector>

#include "engine/segmentation/CharacterCuts.h"

namespace dravik::engine {

// What tells parts of one character from neighbours: the room between them, the sizes of both and of what
// they make together, where they stand in the line and in its even places.
inline constexpr std::size_t kJoinTraits = 26;
using JoinTraits = std::array<double, kJoinTraits>;

struct PossibleJoin {
    std::size_t first = 0, second = 0;
    JoinTraits traits{};
};

// The pairs close enough to be one character. `pieces` from left to right, their runs by row.
std::vector<PossibleJoin> possibleJoins(const std::vector<Piece>& pieces, const LineScale& scale);

// Log odds of two pieces being one character.
using JoinNetwork = RectifiedNetwork<kJoinTraits, 12>;
extern const JoinNetwork kJoinLikeness;

// The pieces from left to right with those joined that are likely to be one character.
std::vector<Piece> joinParts(std::vector<Piece> pieces, const LineScale& scale, Decisions& joins);

// From left to right, their runs by row.
void arrange(std::vector<Piece>& pieces);

}  // namespace dravik::engine
