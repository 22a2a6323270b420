// What stands beside print on parts: barcodes, codes of squares, frames, logos, holes, edges.
#pragma once

#include <string>
#include <vector>

#include "generate/Conditions.h"
#include "generate/Print.h"

namespace dravik {

// A part with print of one to four lines somewhere on it, turned to 25 degrees, now and then to 45.
Conditions sceneConditions(Random& random, bool dots);

// The print on a larger canvas with up to three things around it, which `tags` then name.
Print withSurroundings(const Print& print, std::vector<std::string>& tags, Random& random);

}  // namespace dravik
