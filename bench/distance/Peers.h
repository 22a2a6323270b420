// Other ways of finding wrong labels, to compare Distance with. Each gives every sample a value, the higher
// the more suspicious.
#pragma once

#include <vector>

#include "engine/segmentation/Sample.h"

namespace dravik {

using namespace engine;

// Distance to the own class's mean over that to the nearest other class's, features as they are.
std::vector<double> classMeanRatios(const std::vector<Sample>& samples);

// The share of other classes among the `neighbours` nearest samples, the sample itself left out; ties are
// broken by the ratio of distances to the nearest sample of its own class and of another.
std::vector<double> neighbourShares(const std::vector<Sample>& samples, std::size_t neighbours);

// The best other output less the own one, of a network trained on the samples for `cycles` cycles.
std::vector<double> networkMargins(const std::vector<Sample>& samples, int cycles);

}  // namespace dravik
