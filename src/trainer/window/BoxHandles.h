// Taking hold of a rectangle on the image: by its sides and corners to size it, inside to move it, by a
// handle above it to turn it. All places are image pixels.
#pragma once

#include <array>

#include "engine/image/RotatedBox.h"

namespace dravik::trainer {

enum class BoxPart {
    None,
    TopLeft,
    Top,
    TopRight,
    Right,
    BottomRight,
    Bottom,
    BottomLeft,
    Left,
    Turn,
    Inside
};

using ImagePoint = engine::RotatedBox::Point;

// Handles of the sides and corners, clockwise from the upper left as the box stands upright.
std::array<ImagePoint, 8> handlePlaces(const engine::RotatedBox& box);
// That by which a box is turned, so far above it.
ImagePoint turnPlace(const engine::RotatedBox& box, float above);

// What of a box is within reach of a place. Without a `turnAbove` it cannot be turned.
BoxPart partAt(const engine::RotatedBox& box, ImagePoint place, float reach, float turnAbove = 0);

// The box after one of its parts was dragged; no side gets shorter than `least`.
engine::RotatedBox dragged(const engine::RotatedBox& box, BoxPart part, ImagePoint from, ImagePoint to,
                           float least);
// The box between two places as its opposite corners, at an angle in degrees.
engine::RotatedBox boxBetween(ImagePoint one, ImagePoint other, float angle);
// The smallest box at the angle of the first that holds both.
engine::RotatedBox boxAround(const engine::RotatedBox& first, const engine::RotatedBox& second);
// The part of a box from one place to another along it, in pixels from its left side.
engine::RotatedBox slice(const engine::RotatedBox& box, float from, float to);
// Degrees from -180 to 180.
float usualAngle(float degrees);

}  // namespace dravik::trainer
