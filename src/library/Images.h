// The caller's image and settings as the engine takes them.
#pragma once

#include <optional>

#include "dravik/dravik.h"
#include "engine/classifier/Confidence.h"
#include "engine/image/GreyImage.h"
#include "engine/segmentation/SegmentationSettings.h"

// What is empty is left to the font.
struct dravik_settings {
    // The caller's region, at most one of the first two; or none, whatever the font has.
    std::optional<dravik_box> region;
    std::optional<dravik::engine::RotatedBox> turnedRegion;
    bool wholeImage = false;
    std::optional<dravik::engine::Polarity> polarity;
    std::optional<dravik::engine::PrintKind> print;
    std::optional<int> smallestHeight;
    double rejectLimit = dravik::engine::kRejectLimit;

    void clearRegion() {
        region.reset();
        turnedRegion.reset();
        wholeImage = false;
    }
};

namespace dravik::library {

// The part of an image that is to be read, and by which settings.
struct ImagePart {
    engine::GreyImage pixels;
    int left = 0, top = 0;  // in the image
    engine::SegmentationSettings settings;
};

// The font's own settings with what the caller has set in their place; `settings` may be null.
engine::SegmentationSettings merged(const dravik_settings* settings, engine::SegmentationSettings ofFont);

// `settings` may be null; `ofFont` are the font's own. Raises Refusal for a null image or one without pixels,
// and for a region that lies outside of it; Failure for one that is too large.
ImagePart partToRead(const dravik_image* image, const dravik_settings* settings,
                     const engine::SegmentationSettings& ofFont);

}  // namespace dravik::library
