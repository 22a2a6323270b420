// Where a line of print stands: its baseline and height of capitals.
#pragma once

#include <span>

#include "engine/image/Components.h"

namespace dravik::engine {

struct LineMetrics {
    float baseline = 0;      // across the line, in the print's frame
    float capHeight = 1;     // of capitals and figures above the baseline
    bool oneHeight = false;  // all characters are of one height, which may be that of small letters as well
};

// Baseline and height from the boxes of a line's characters, `height` being their usual height.
LineMetrics measureLine(std::span<const Box> boxes, float height);

}  // namespace dravik::engine
