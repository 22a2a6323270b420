// Tells bars, such as those of a barcode, from print.
#pragma once

#include "engine/image/GreyImage.h"
#include "engine/scene/TextLine.h"

namespace dravik::engine {

// Whether the picture looks the same all the way down the line, as bars do. A text of I, l and 1 does so too,
// but its strokes are of one width and not so close.
bool isBarred(const GreyImage& image, const TextLine& line);

}  // namespace dravik::engine
