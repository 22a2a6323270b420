// When samples of a font are labelled anew, the texts of the images that they are from are wrong at the same
// places: finds those texts as they are to be, so that a wrong label does not come back with its image.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "engine/font/SampleStore.h"

namespace dravik::trainer {

struct CorrectedLabel {
    std::string image;  // its path
    std::string text;
};

// Of the images of samples whose character is another one in `after`, what `textOf` them becomes. A text is
// left out when it is not known which of its characters the samples are.
std::vector<CorrectedLabel> correctedLabels(
    const engine::SampleColumns& before, const engine::SampleColumns& after,
    const std::function<std::optional<std::string>(const std::string&)>& textOf);

}  // namespace dravik::trainer
