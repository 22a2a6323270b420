// The bar of a histogram that the pointer has come to, told to whoever shows its samples elsewhere.
#pragma once

#include <string>

namespace dravik::screen {

// The samples that a bar stands for.
struct PointedBar {
    std::string character;
    bool wholeCharacter = true;
    double lower = 0, upper = 0;  // Distances, both included, unless it is the whole character
};

}  // namespace dravik::screen
