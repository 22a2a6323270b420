// Finds lines of print in a picture of a part, at any angle to 45 degrees, beside barcodes, frames, logos,
// holes and texture.
//
// Pieces of ink of both polarities and several sizes are linked to neighbours of like size; the direction in
// which most links point is the print's, and chains of pieces along it are its lines.
#pragma once

#include <stop_token>
#include <vector>

#include "engine/image/GreyImage.h"
#include "engine/scene/TextLine.h"

namespace dravik::engine {

struct TextLines {
    std::vector<TextLine> lines;  // from top to bottom; those side by side at one height from left to right
    // What stood back behind a clearer line of the other polarity at its place, or is unlike the rest of the
    // print; the clearest first.
    std::vector<TextLine> others;
};

// None in noise and texture; few or none once a stop is requested.
TextLines findTextLines(const GreyImage& image, const std::stop_token& stop = {});

}  // namespace dravik::engine
