// A character as the base recogniser sees it: two small pictures of its surroundings, placed by the baseline
// and the height of capitals of its line, so that size and place of the ink tell a comma from an apostrophe
// and a small o from a capital one.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "engine/segmentation/Segmentation.h"

namespace dravik::engine {

inline constexpr int kPatchSide = 24;
// Height of capitals in the patch, and its row on which the baseline lies.
inline constexpr float kPatchCapHeight = 14, kPatchBaseline = 18.5f;

// Rows from the top, columns from the left, 0 paper to 255 full ink. The character's middle stands in the
// middle column.
struct CharacterPatch {
    using Plane = std::array<std::uint8_t, std::size_t(kPatchSide) * kPatchSide>;
    Plane own{};     // the character's ink, with the soft edges beside it
    Plane others{};  // what else is printed there: its neighbours, dirt
};

// `piece` must be measured in `frame`; `line` says where its line is believed to be.
CharacterPatch characterPatch(const InkImage& ink, const Frame& frame, const Piece& piece,
                              const LineMetrics& line);

}  // namespace dravik::engine
