// Tells holes, frames, logos and other things on a part from its print.
#pragma once

#include "engine/scene/Scene.h"

namespace dravik::engine {

// Takes away what stands alone, on a line of its own or far from the rest of its line, and is higher than all
// other characters or is cut off by the edge of the picture; and at the ends of lines the edges of holes and
// the sides of frames. A single letter of the print's own size stays. The image is the one that the part was
// made of.
void leaveOutOtherThings(ScenePart& part, const GreyImage& image);

}  // namespace dravik::engine
