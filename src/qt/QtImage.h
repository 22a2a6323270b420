// Image files as grey images, decoded by Qt. Needs no display.
#pragma once

#include <QImage>
#include <string>

#include "engine/image/GreyImage.h"

namespace dravik::qt {

// Any format that Qt reads, turned upright as its orientation tag says, colour by its luminance, transparency
// on white. Raises Failure whose description names the file and the problem; more than kMostPixels is refused
// before decoding.
engine::GreyImage decodeImageFile(const std::string& path);

// A copy for drawing.
QImage toQImage(const engine::GreyImage& image);
// One of that size in pixels, which is smaller.
QImage shrunk(const engine::GreyImage& image, QSize size);

}  // namespace dravik::qt
