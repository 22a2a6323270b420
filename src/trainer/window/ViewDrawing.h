// What a view of the image draws over it: frames around characters and regions, their handles, and tags.
#pragma once

#include <array>
#include <string>

#include "trainer/window/ViewGeometry.h"
#include "ui/Color.h"

namespace dravik::trainer {

constexpr ui::Color kLabelledColor = ui::rgb(0x1E, 0x6F, 0xD9);
constexpr ui::Color kMismatchColor = ui::rgb(0xD8, 0x43, 0x15);
constexpr ui::Color kReadColor = ui::rgb(0x2E, 0x7D, 0x32);
constexpr ui::Color kRegionColor = ui::rgb(0x8E, 0x24, 0xAA);

// Four corners in their order, a line from each to the next.
struct ViewFrame {
    std::array<ViewPoint, 4> corners;
    ui::Color color = kLabelledColor;
    bool heavy = false;
    bool dashed = false;
    bool filled = false;  // a handle or a bar: the area, without a pale line below
};

// A word on a background of its colour, or in its colour on white.
struct ViewTag {
    ViewPoint from;        // the middle of the side that it stands beside
    ViewPoint away{0, 1};  // of length 1, from that side outwards
    std::string text;
    ui::Color color = kLabelledColor;
    bool outlined = false;
    int textHeight = 9;  // of bold letters, in units
};

enum class ViewCursor {
    Arrow,
    OpenHand,
    ClosedHand,
    Cross,
    Move,
    SizeAcross,
    SizeDown,
    SizeFalling,
    SizeRising
};

}  // namespace dravik::trainer
