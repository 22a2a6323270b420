// A small copy of an image for a strip of thumbnails, made by averaging areas, so that thin strokes stay
// visible.
#pragma once

#include "engine/image/GreyImage.h"

namespace dravik::engine {

// At most `side` pixels wide and high, with the image's proportions; never larger than the image itself.
// Empty when the image is or when `side` is below 1.
GreyImage thumbnailOf(const GreyImage& image, int side);

}  // namespace dravik::engine
