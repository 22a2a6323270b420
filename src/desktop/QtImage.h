// Image files as grey images, decoded by Qt. Needs no display.
#pragma once

#include <QImage>
#include <string>

#include "engine/GreyImage.h"

namespace dravik {

// Any format that Qt reads, turned upright as its orientation tag says, colour by its luminance, transparency
// on white. Raises Failure whose description names the file and the problem; more than kMostPixels is refused
// before decoding.
GreyImage decodeImageFile(const std::string& path);

// A copy for drawing.
QImage toQImage(const GreyImage& image);

}  // namespace dravik
