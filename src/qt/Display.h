// Whether a window can be shown. Qt itself ends the program with a signal where it cannot.
#pragma once

#include <optional>
#include <string>

namespace dravik::qt {

// What is missing for a window, as the end of a sentence; nothing where it can be tried. Looks at the
// environment and at what is installed, before there is a QApplication.
std::optional<std::string> missingForDisplay();

}  // namespace dravik::qt
