// Whether what is found and read depends on the machine's instruction set.
#pragma once

#include <string>

namespace dravik {

// Finds and reads every image of `lines` with each version of the matrix kernels that the machine can run,
// without a font and with one learnt from the face's first sheet in `charsets`, and prints how many images
// differ from what the best version makes of them: in boxes, in texts, in likelihoods.
void compareKernels(const std::string& charsets, const std::string& lines);

}  // namespace dravik
