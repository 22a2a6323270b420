// Numbers written by a picture such as "0.00#######" or "##0.0": '0' is a digit that is always written, '#'
// one that is written when it counts. Rounds half away from zero on the 15 significant decimal digits of the
// value.
#pragma once

#include <string>
#include <string_view>

namespace dravik {

// Infinite and undefined values give their classic texts (see numberText). A value that rounds to zero has no
// sign.
std::string formatNumber(double value, std::string_view picture);

}  // namespace dravik
