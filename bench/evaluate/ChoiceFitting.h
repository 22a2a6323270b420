// Fits the weights by which the right one is told among the ways to see an image, on labelled images.
#pragma once

#include <string>
#include <vector>

namespace dravik {

// Prints the weights, and of how many images the chosen candidate has the right number of characters.
void fitChoice(const std::vector<std::string>& folders);

}  // namespace dravik
