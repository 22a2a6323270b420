// Tells where in a line of print one character ends and the next begins, also where they touch: a
// convolutional network, fitted on hundreds of faces, that sees two heights of capitals to each side. Its
// weights are part of the program; tools/fit.sh makes them.
#pragma once

#include <string_view>
#include <vector>

#include "engine/kernels/MatrixKernels.h"
#include "engine/recogniser/LineStrip.h"

namespace dravik::engine {

// For each column of the strip the log odds (natural) that it lies between two characters or where there is
// none, not inside one. May be called by many threads at once. The
// same to the last bit by all kernels.
std::vector<float> boundaryOdds(const LineStrip& strip, const MatrixKernels& kernels = usedKernels());

// Where the weights come from: inputs, faces with the versions of their packages, seeds, counts, scores.
std::string_view boundaryNetworkOrigin();

}  // namespace dravik::engine
