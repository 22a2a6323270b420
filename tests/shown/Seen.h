// What the cases of this folder say to the class Shown, which every window system has one of: a form on the
// screen, driven as an operator does and looked at as one sees it. Places are in a control's own pixels, a
// shift is that of the models, colours are 0x00BBGGRR.
#pragma once

#include "support/Testing.h"
#include "ui/Bars.h"
#include "ui/Button.h"
#include "ui/Chart.h"
#include "ui/Form.h"
#include "ui/Grid.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/Platform.h"
#include "ui/TextBox.h"
#include "ui/Toolbar.h"

namespace dravik::test {

using namespace ui;

enum class Key { Tab, Enter, Escape, Up, Down, Left, Right, Home, End, Delete, Menu, F10, Space, A, C };

struct Point {
    int x = 0;
    int y = 0;
};

struct Area {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Area&) const = default;
};

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<Color> pixels;
    Color at(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }
    auto count(Color color) const { return std::count(pixels.begin(), pixels.end(), color); }
};

}  // namespace dravik::test
