// The system's dialogs to choose files and folders. COM is initialized on the thread.
#pragma once

#include <string>
#include <vector>

#include "trainer/window/TrainerWindow.h"

namespace dravik::app {

// Paths in UTF-8; none, or "", when the operator cancels.
std::vector<std::string> choosePaths(HWND owner, const trainer::FileQuestion& question);
// Asks before an existing file is given.
std::string chooseNewFile(HWND owner, const trainer::FileQuestion& question);

}  // namespace dravik::app
