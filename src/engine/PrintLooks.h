// Looks at an image in several ways, of which one will see its print as it is: sizes, polarities, degrees of
// blur, and ways to put broken print together.
#pragma once

#include <vector>

#include "engine/Segmentation.h"
#include "engine/TextLikeness.h"

namespace dravik {

struct Candidate {
    Segmentation found;
    TextTraits traits{};
    double value = 0;  // kTextLikeness of the traits
    float height = 0;  // of capitals, in image pixels
};

// UntilClear ends as soon as one candidate is beyond doubt, as most are; All is to learn from.
enum class Search { UntilClear, All };

// In no order; those with characters.
std::vector<Candidate> printCandidates(const GreyImage& image, Search search = Search::UntilClear);

}  // namespace dravik
