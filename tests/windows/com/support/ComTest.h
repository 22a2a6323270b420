// What tests of the way in and out of COM begin with.
#pragma once

#include <DravikLib.h>

#include "contract/DrawnText.h"
#include "screen/support/RecordingTool.h"
#include "support/Testing.h"
#include "windows/com/Boundary.h"
#include "windows/com/ComFontTool.h"
#include "windows/com/ComStep.h"
#include "windows/com/ComText.h"
#include "windows/com/FontToolObject.h"
#include "windows/com/LateBound.h"
#include "windows/com/ToolValues.h"
#include "windows/com/Variant.h"
#include "windows/com/support/ControlFile.h"

namespace dravik::test {

using namespace com;

inline std::wstring windowsPath(const std::string& path) {
    return std::filesystem::absolute(toPath(path)).make_preferred().wstring();
}
inline ControlFile controlFile() {
    return ControlFile(windowsPath(DRAVIK_CONTROL));
}

}  // namespace dravik::test
