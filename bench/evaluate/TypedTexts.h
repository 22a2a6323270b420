// What becomes of images that are included with a typed text: the right one, and ones with a character more
// or less.
#pragma once

#include <string>

namespace dravik {

// A folder with lines.tsv, and with meta.tsv and boxes.tsv where right places are to be counted; `verbose`
// names the images that are refused, wrongly labelled, or taken with a wrong text.
void includeFolder(const std::string& folder, bool verbose);

}  // namespace dravik
