// Small pictures drawn from shapes, smooth at every size.
#pragma once

#include <memory>

#include "ui/Picture.h"
#include "windows/win32/Gdi.h"
#include "windows/win32/Look.h"

namespace dravik::win32 {

// A square picture of that many pixels in the look's colours, transparent around the shapes (alpha multiplied
// in).
std::unique_ptr<Canvas> pictureImage(const ui::Picture& picture, int side, const Look& look);

// Draws it with the given opacity, 0 to 1.
void drawPicture(HDC dc, Canvas& image, int left, int top, double opacity);

}  // namespace dravik::win32
