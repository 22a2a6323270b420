// The caller's image and settings as the engine takes them.
#pragma once

#include <optional>

#include "dravik/dravik.h"
#include "engine/classifier/Confidence.h"
#include "engine/image/GreyImage.h"

struct dravik_settings {
    std::optional<dravik_box> region;
    double rejectLimit = dravik::engine::kRejectLimit;
};

namespace dravik::library {

// The part of an image that is to be read.
struct ImagePart {
    engine::GreyImage pixels;
    int left = 0, top = 0;  // in the image
};

// `settings` may be null. Raises Refusal for a null image or one without pixels, and for a region that lies
// outside of it; Failure for one that is too large.
ImagePart partToRead(const dravik_image* image, const dravik_settings* settings);

}  // namespace dravik::library
