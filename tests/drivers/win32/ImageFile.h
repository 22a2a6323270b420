// Image files, written by the system's imaging component. COM is initialized on the thread.
#pragma once

#include <wincodec.h>

#include <vector>

#include "engine/image/GreyImage.h"
#include "windows/com/Variant.h"
#include "windows/win32/Gdi.h"

namespace dravik::test {

using namespace engine;

// An image of the pixels' bytes as they are in that format, `stride` bytes a row, in a file of the container
// (GUID_ContainerFormatPng, ...). The path is UTF-8. Raises Failure, also where the container cannot keep the
// format as it is.
void writeImage(const std::string& path, const GUID& container, const WICPixelFormatGUID& format, UINT width,
                UINT height, UINT stride, std::vector<BYTE> bytes);
// The image in colours.
void writeImage(const std::string& path, const GreyImage& image, const GUID& container);
// The image's grey levels as the embedded step takes them.
com::Variant bytesOf(const GreyImage& image);
// What a window shows, as a PNG file.
void writeImage(const std::string& path, win32::Canvas& picture);

}  // namespace dravik::test
