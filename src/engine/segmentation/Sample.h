// A character as the classifier sees it: the 49 features of its shape and its size and place in the line of
// print.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "tool/Samples.h"

namespace dravik::engine {

// What the network is given: the features, the height and the offset.
constexpr std::size_t kInputCount = tool::kFeatureCount + 2;

// Elements 0 to 48 are the features of a 7 x 7 grid, row by row from the top left, each 0 to 1. Element 49 is
// the character's height as a part of the line's height of capitals, element 50 its middle's height above the
// baseline in the same unit.
using SampleInputs = std::array<float, kInputCount>;

constexpr std::size_t kHeightInput = tool::kFeatureCount;
constexpr std::size_t kOffsetInput = tool::kFeatureCount + 1;

struct SampleOrigin;

struct Sample {
    std::uint64_t serial = 0;  // names the sample within its font for good
    std::int32_t code = 0;     // of the character that it is labelled with
    SampleInputs inputs{};
    std::shared_ptr<const SampleOrigin> origin{};  // null when it is not known
};

}  // namespace dravik::engine
