// The plain way to find characters, to measure against: one threshold, connected components by OpenCV, parts
// that stand above each other merged. It is given what the usual program of that kind has: smoothing, a flat
// background, dots grown together, and a guess at the polarity.
#pragma once

#include <cstddef>

#include "engine/image/GreyImage.h"

namespace dravik {

// The number of characters found.
std::size_t countPlainly(const engine::GreyImage& image);

}  // namespace dravik
