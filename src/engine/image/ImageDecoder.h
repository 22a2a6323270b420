// Image files are decoded by the platform, which knows more formats than any program should, and handed down
// as grey images.
#pragma once

#include <functional>
#include <string>

#include "engine/image/GreyImage.h"

namespace dravik::engine {

// Decodes an image file to grey; raises Failure whose description names the file and the problem.
using ImageDecoder = std::function<GreyImage(const std::string& path)>;

}  // namespace dravik::engine
