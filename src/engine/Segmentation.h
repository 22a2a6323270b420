// Finds the characters of an image: size, polarity, threshold, slope, lines, characters in reading order.
#pragma once

#include <vector>

#include "engine/Binarization.h"
#include "engine/Components.h"
#include "engine/TextLines.h"

namespace dravik {

struct Glyph {
    Piece piece;  // measured in the segmentation's frame
    int line = 0;
};

struct Segmentation {
    InkImage ink;
    Frame frame;
    std::vector<LineMetrics> lines;  // from top to bottom
    std::vector<Glyph> glyphs;       // in reading order

    // Where a glyph is in the image.
    Region place(const Glyph& glyph) const;
};

// Empty when nothing is found. Takes any image and never fails but for want of memory.
Segmentation segment(const GreyImage& image);

}  // namespace dravik
