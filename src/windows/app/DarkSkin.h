// The program's windows in dark colours, those of the dark theme on Linux.
#pragma once

#include "windows/win32/Skin.h"

namespace dravik::app {

const win32::Skin& darkSkin();

// The operator has chosen dark colours for programs in the settings of Windows.
bool desktopIsDark();

}  // namespace dravik::app
