// Print beside, above and below a line that was seen: characters beyond its ends that are unlike those which
// led to it, and further lines.
#pragma once

#include <optional>
#include <span>

#include "engine/scene/SeenLine.h"

namespace dravik::engine {

// Goes on along a clear line as far as characters follow each other; frames, codes and single shapes beside
// it are none.
void extend(SeenLine& seen, const LineSight& sight);

enum class Side { Above, Below };

// What stands next to a clear line on one side, up to a few heights away and not as far as any of the other
// lines, if that is a clear line of print of about its height.
std::optional<SeenLine> nextLine(const SeenLine& seen, Side side, std::span<const SeenLine> others,
                                 const LineSight& sight);

}  // namespace dravik::engine
