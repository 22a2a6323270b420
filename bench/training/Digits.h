// Handwritten digits as samples: every image is one character that stands alone.
#pragma once

#include <string>

#include "RenderedFonts.h"

namespace dravik {

using namespace engine;

// The first `most` images and labels in a folder, in the IDX files of MNIST whose names begin with `prefix`.
// Empty when they are not there.
LabelledInputs mnistDigits(const std::string& folder, const std::string& prefix = "",
                           std::size_t most = 100'000);

// Rows of 64 values from 0 to 16 and the digit, compressed by gzip. Empty when there is no such file.
LabelledInputs opticalDigits(const std::string& file);

}  // namespace dravik
