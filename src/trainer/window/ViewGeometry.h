// Places in a view of the program's window, in the units in which its window system counts them, and what
// such a unit is.
#pragma once

namespace dravik::trainer {

struct ViewPoint {
    double x = 0;
    double y = 0;
};

struct ViewBox {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;

    double right() const noexcept { return left + width; }
    double bottom() const noexcept { return top + height; }
    bool contains(ViewPoint point) const noexcept {
        return point.x >= left && point.x < right() && point.y >= top && point.y < bottom();
    }
    bool intersects(const ViewBox& other) const noexcept {
        return left < other.right() && other.left < right() && top < other.bottom() && other.top < bottom();
    }
    ViewBox grownBy(double margin) const noexcept {
        return {left - margin, top - margin, width + 2 * margin, height + 2 * margin};
    }
};

struct Display {
    double unit = 1;          // units of the view in 1/96 inch
    double devicePixels = 1;  // pixels of the display in a unit
};

// What a scroll bar shows: a position from 0 to `most`, in units.
struct ScrollState {
    int position = 0;
    int most = 0;
    int page = 1;  // what is seen at once
    int line = 1;  // step of an arrow
};

}  // namespace dravik::trainer
