// Image files that tests write.
#pragma once

#include "activex/com/WindowsSdk.h"
// Behind the Windows headers
#include <wincodec.h>

#include "engine/GreyImage.h"

namespace dravik::test {

// A colour image in the format of the container (GUID_ContainerFormatPng, ...).
void writeImage(const std::string& path, const GreyImage& image, const GUID& container);

}  // namespace dravik::test
