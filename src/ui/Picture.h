// Small pictures drawn from shapes, so that they are sharp at every size and take the theme's colours.
#pragma once

#include <vector>

#include "ui/Color.h"

namespace dravik::ui {

struct PicturePoint {
    double x;
    double y;
};

struct PictureShape {
    enum class Kind { Polyline, Polygon, Ellipse };

    Kind kind = Kind::Polyline;
    // In a box of 16 x 16 units, y downwards; an ellipse is given by two opposite corners of its box.
    std::vector<PicturePoint> points;
    bool filled = false;
    double strokeWidth = 1.25;
    Color color = kButtonTextColor;
};

using Picture = std::vector<PictureShape>;

}  // namespace dravik::ui
