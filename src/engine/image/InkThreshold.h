// A threshold for every pixel, from how far print stands out nearby.
#pragma once

#include <cstdint>
#include <vector>

namespace dravik::engine {

// Turns how far each pixel is on the print's side of its background, in grey levels, into how much of it is
// print: 0 none, 128 the threshold, 255 full. `side` in pixels is about three quarters of a character's
// height. Returns whether anything stands out from the noise; the values are of no use where nothing does.
bool inkFromDepths(std::vector<std::uint8_t>& depths, int width, int height, int side);

}  // namespace dravik::engine
