// The text of the current image helps to find its characters. A file of its own: the control, which is to
// stay small, never asks for it.
#pragma once

#include <string>

#include "engine/embedded/EmbeddedTool.h"

namespace dravik::engine {

// The tool's current image shows this text: where another number of characters is found, and the print may
// well be divided into those of the text (see sceneWithText()), these stand in the place of the found ones.
void divideByText(EmbeddedTool& tool, const std::string& text);

}  // namespace dravik::engine
