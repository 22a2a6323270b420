// Labelled samples to measure with: characters that were rendered and found as an include finds them, and
// handwritten digits.
#pragma once

#include <string>
#include <vector>

#include "RenderedPart.h"
#include "engine/segmentation/Sample.h"

namespace dravik {

using namespace engine;

struct SampleSet {
    std::string name;
    std::vector<Sample> samples;
};

// The 74 characters of the overview.
extern const std::string kAllCharacters;

struct LabelledPart {
    GreyImage image;
    std::vector<std::string> text;  // of each character in reading order
};

// All characters of a set in an order of their own, in several lines.
LabelledPart charsetPart(const OutlineFont& font, std::uint32_t seed, double faults,
                         const std::string& set = kAllCharacters);

// Samples of `parts` parts in which all characters are found.
SampleSet renderedSamples(const OutlineFont& font, int parts, std::uint32_t seed, double faults,
                          const std::string& set = kAllCharacters);
// Of all fonts together, as one.
SampleSet mixedSamples(const std::vector<OutlineFont>& fonts, int parts, std::uint32_t seed, double faults);

// Handwritten digits from a folder of IDX files; empty when they are not there.
SampleSet digitSamples(const std::string& folder);

}  // namespace dravik
