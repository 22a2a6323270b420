// Grey images on the screen: shrunk by averaging, enlarged smoothly up to a few times, in whole pixels
// beyond.
#pragma once

#include <memory>

#include "engine/image/GreyImage.h"
#include "windows/win32/Gdi.h"

namespace dravik::app {

// The part of the image that `seen` cuts out of it when it is drawn over all of `place` (both in pixels of
// the screen), as a picture of the size of `seen`, which lies inside of `place`. The image is not empty.
std::unique_ptr<win32::Canvas> greyPicture(const engine::GreyImage& image, const RECT& place,
                                           const RECT& seen);

// Draws the whole image over `place`, cut to what the context's clipping box shows.
void drawGrey(HDC dc, const engine::GreyImage& image, const RECT& place);

}  // namespace dravik::app
