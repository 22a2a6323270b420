// How well values point out the samples that are labelled wrong.
#pragma once

#include <cstdint>
#include <vector>

#include "engine/segmentation/Sample.h"

namespace dravik {

using namespace engine;

// Samples some of which were given the label of another class.
struct Planted {
    std::vector<Sample> samples;
    std::vector<bool> wrong;
    std::size_t count = 0;
};
Planted planted(std::vector<Sample> samples, double share, std::uint32_t seed);

struct Ranking {
    double area = 0;  // under the ROC curve: how often a wrong label has the higher value than a right one
    double precision = 0;  // wrong ones among as many of the highest values as there are wrong ones
};
Ranking ranking(const std::vector<double>& values, const Planted& labels);

}  // namespace dravik
