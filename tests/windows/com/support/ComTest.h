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

namespace dravik::test {

using namespace com;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

}  // namespace dravik::test
