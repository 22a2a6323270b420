// Small copies of an image for the screen, made by averaging areas, so that thin strokes stay visible.
#pragma once

#include "engine/image/GreyImage.h"

namespace dravik::engine {

// At most `side` pixels wide and high, with the image's proportions; never larger than the image itself.
// Empty when the image is or when `side` is below 1.
GreyImage thumbnailOf(const GreyImage& image, int side);

// A pixel for each `factor` x `factor` of the image, those that are left at the right and at the bottom
// included; `factor` is at least 1.
GreyImage reduced(const GreyImage& image, int factor);

}  // namespace dravik::engine
