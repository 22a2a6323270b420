// Counts in how many images exactly the characters that are there are found.
#pragma once

#include <string>

namespace dravik {

// A folder with lines.tsv and, if it has tiers, meta.tsv: prints the shares by tier, for dot print and for
// each tag; with `verbose` also the images that are not exact.
void countFolder(const std::string& folder, bool verbose);

// The folder of the other data sets: single photographed digits, scanned pages, photographs.
void countShared(const std::string& folder);

// Scenes: how many have as many characters and lines as they should, by what stands beside the print.
void countScenes(const std::string& folder, bool verbose);

}  // namespace dravik
