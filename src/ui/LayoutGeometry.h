// Where everything of a form goes: turns its arrangement (rows, columns, tables, fixed places) and the sizes
// of its widgets into rectangles. Pure arithmetic in pixels, no window is known here; every window system
// measures its controls, asks, and puts them there.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "ui/Layout.h"

namespace dravik::ui {

// At 96 dpi: between neighbours, and around all that stands in a form or frame.
constexpr int kSpacing = 6;
constexpr int kMargin = 9;

struct Extent {
    int width = 0;
    int height = 0;

    bool operator==(const Extent&) const = default;
};

struct Box {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;

    bool operator==(const Box&) const = default;
};

// What a widget asks for.
struct Measure {
    Extent minimum;
    Extent preferred;
    bool visible = true;
    bool growsX = true;  // wider than preferred when there is room and its layout says "fill"
    bool growsY = true;
    bool greedyX = false;  // wants spare width even where nobody was given a stretch
    int shrunkWidth = -1;  // the least width where it was given a stretch, when that is less

    bool operator==(const Measure&) const = default;
};

struct PlacedWidget {
    Widget* widget = nullptr;
    Box box;
};

class LayoutGeometry {
  public:
    using MeasureOf = std::function<Measure(const Widget&)>;

    // Measures every widget once. The layout must outlive this object's place().
    LayoutGeometry(const Layout& layout, int dpi, const MeasureOf& measureOf);

    Extent minimum() const;
    Extent preferred() const;

    // The visible widgets in the order of the tree. Below the minimum they keep their least sizes and stand
    // out. From right to left everything is mirrored but the insides of fixed places.
    std::vector<PlacedWidget> place(const Box& box, bool rightToLeft = false) const;

  private:
    struct Node;

    std::shared_ptr<const Node> root_;
};

}  // namespace dravik::ui
