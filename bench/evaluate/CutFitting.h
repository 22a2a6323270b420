// Fits the weights by which touching characters are told from wide ones, on labelled images whose boxes are
// known: the print is found as at the engine's closer look, and each narrow place of it is a case.
#pragma once

#include <string>
#include <vector>

namespace dravik {

// Prints the weights, and how many pieces the fitted ones and the present ones judge rightly.
void fitCuts(const std::vector<std::string>& folders);

}  // namespace dravik
