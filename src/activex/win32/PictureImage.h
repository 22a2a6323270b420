// Small pictures drawn from shapes, smooth at every size.
#pragma once

#include "activex/win32/Windows.h"

#include <memory>

#include "activex/win32/Gdi.h"
#include "activex/win32/Look.h"
#include "widgets/Picture.h"

namespace dravik {

// A square picture of that many pixels in the look's colours, transparent around the shapes (alpha multiplied
// in).
std::unique_ptr<Canvas> pictureImage(const Picture& picture, int side, const Look& look);

// Draws it with the given opacity, 0 to 1.
void drawPicture(HDC dc, Canvas& image, int left, int top, double opacity);

}  // namespace dravik
