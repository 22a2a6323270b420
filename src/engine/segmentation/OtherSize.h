// A line whose characters are all of one height may be of small letters alone: another height that its
// capitals may have, to be tried when it is read.
#pragma once

#include <optional>
#include <span>

#include "engine/segmentation/TextLines.h"

namespace dravik::engine {

// Another height that the capitals of a line may have, and how much surer its characters must be then.
struct OtherSize {
    float capHeight = 0;
    double doubt = 0;
};

// Nothing where the line's own height leaves no doubt. `lines` are all of the image, `line` one of them.
std::optional<OtherSize> otherSize(std::span<const LineMetrics> lines, const LineMetrics& line);

}  // namespace dravik::engine
