// Looks at lines of print one by one, and at the room between them.
#pragma once

#include <stop_token>

#include "engine/scene/Scene.h"

namespace dravik::engine {

// Print odds of what is taken for print where nothing is clearer, at least.
constexpr double kPerhapsPrint = -1;

// What the lines show, each looked at alone. A line without clear characters is none when another has them;
// what stands at the end of a line, far from the rest, what is between lines, and those of the other lines
// that were found whose place shows nothing clear are tried too.
Scene lineByLine(const GreyImage& image, const TextLines& found, const PrintSettings& print,
                 const std::stop_token& stop);

}  // namespace dravik::engine
