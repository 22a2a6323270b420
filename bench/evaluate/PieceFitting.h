// Fits the weights by which pieces of print are judged, on labelled images whose boxes are known: the print
// is found as at the engine's closer look, and each piece of it is a case.
#pragma once

#include <string>
#include <vector>

namespace dravik {

// Touching characters and wide ones. Prints the weights, and how many pieces the fitted ones and the present
// ones judge rightly.
void fitCuts(const std::vector<std::string>& folders);
// Parts of one character and neighbours; likewise.
void fitJoins(const std::vector<std::string>& folders);
// Print and dirt; likewise.
void fitPrint(const std::vector<std::string>& folders);

}  // namespace dravik
