// A line of print as the network of its boundaries sees it: upright, as high as a character's patch, from end
// to end.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/recogniser/CharacterPatch.h"

namespace dravik::engine {

inline constexpr int kStripHeight = kPatchSide;
// Room before the first and behind the last character, in columns.
inline constexpr int kStripRoom = 12;

struct LineStrip {
    float left = 0;    // of the first column, along the line
    float column = 1;  // width of a column
    int columns = 0;
    std::vector<std::uint8_t> ink;  // rows from the top, 0 paper to 255 full ink

    float middle(int place) const noexcept { return left + column * (static_cast<float>(place) + 0.5f); }
};

// From `from` to `to` along the line and the room beside it; empty where that is too long for print. Columns
// are as wide as those of a patch times `stretch`.
LineStrip lineStrip(const InkImage& ink, const Frame& frame, const LineMetrics& line, float from, float to,
                    float stretch = 1);

}  // namespace dravik::engine
