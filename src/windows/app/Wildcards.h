// Names with * and ?, which the command line of Windows hands to programs as they were typed.
#pragma once

#include <string>
#include <vector>

namespace dravik::app {

// The arguments (UTF-8), those with wildcards in their last part replaced by the files that they fit, in
// order of their names. What fits no file stays as it is, and so do options and the characters of --charset.
std::vector<std::string> withoutWildcards(const std::vector<std::string>& arguments);

}  // namespace dravik::app
