// A line of print cut out of a picture and turned upright.
#pragma once

#include <span>

#include "engine/scene/Scene.h"

namespace dravik::engine {

// Around a line of print that is cut out, beside it and as empty room around all that, in parts of the
// print's height.
constexpr float kBesideLine = 0.15f, kRoomAroundLine = 0.5f;

// The line upright, with nothing but background around it, and nothing of the other lines above and below it.
// Its print is `height` high. Nothing is looked for in the part yet.
ScenePart uprightLine(const GreyImage& image, const TextLine& line, float height,
                      std::span<const TextLine> others);

}  // namespace dravik::engine
