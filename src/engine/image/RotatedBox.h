// A rectangle that stands at an angle in an image, and what an image shows in it, turned upright.
#pragma once

#include <array>
#include <utility>

#include "engine/image/GreyImage.h"

namespace dravik::engine {

struct RotatedBox {
    float centreX = 0, centreY = 0;  // image pixels, from the image's corner
    float width = 0, height = 0;
    float angle = 0;  // degrees, clockwise

    bool operator==(const RotatedBox&) const = default;

    struct Point {
        float x = 0, y = 0;
    };
    // From the box's own places, which count from its middle along its sides, to the image's and back.
    Point toImage(Point own) const noexcept;
    Point toOwn(Point image) const noexcept;
    // Upper left, upper right, lower right and lower left as the box stands upright.
    std::array<Point, 4> corners() const noexcept;
    bool contains(Point image) const noexcept;
};

// What the image shows in the box, a pixel for a pixel, turned upright by the box's angle; beyond the image
// its border goes on. At least one pixel wide and high; raises as GreyImage does. The image is not empty.
GreyImage uprightPicture(const GreyImage& image, const RotatedBox& box);

}  // namespace dravik::engine
