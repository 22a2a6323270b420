// Where everything of a form goes: turns the portable arrangement (rows, columns, tables, fixed places) and
// the sizes of its widgets into rectangles. Pure arithmetic in pixels, no window is known here.
#pragma once

#include <functional>
#include <vector>

#include "ui/Layout.h"

namespace dravik::win32 {

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
    ui::Widget* widget = nullptr;
    Box box;
};

class LayoutGeometry {
  public:
    using MeasureOf = std::function<Measure(const ui::Widget&)>;

    // Measures every widget once. The layout must outlive this object. `spacing` is in pixels at 96 dpi, as
    // all lengths that are not in twips.
    LayoutGeometry(const ui::Layout& layout, int dpi, const MeasureOf& measureOf, int spacing = 6);

    Extent minimum() const { return root_.minimum; }
    Extent preferred() const { return root_.preferred; }

    // The visible widgets in the order of the tree. Below the minimum they keep their least sizes and stand
    // out.
    std::vector<PlacedWidget> place(const Box& box) const;

  private:
    struct Node {
        const ui::Layout* layout = nullptr;
        std::vector<Node> children;
        Extent minimum;
        Extent preferred;
        bool visible = true;
        bool growsX = true;
        bool growsY = true;
        bool greedyX = false;
    };
    // A row or column of a table, or an element along a box.
    struct Slot {
        int minimum = 0;
        int preferred = 0;
        int stretch = 0;
        bool greedy = false;
        bool visible = false;
        bool space = false;
    };

    Node build(const ui::Layout& layout, const MeasureOf& measureOf) const;
    void measureBox(Node& node, bool across) const;
    void measureTable(Node& node) const;
    void measureFixed(Node& node) const;
    void placeNode(const Node& node, const Box& box, std::vector<PlacedWidget>& placed) const;
    void placeBox(const Node& node, const Box& box, bool across, std::vector<PlacedWidget>& placed) const;
    void placeTable(const Node& node, const Box& box, std::vector<PlacedWidget>& placed) const;

    static std::vector<Slot> boxSlots(const Node& node, bool across);
    static std::vector<Slot> tableColumns(const Node& node, int spacing);
    static std::vector<Slot> tableRows(const Node& node);
    // The length of each slot for the room that they have together, spacing left out.
    static std::vector<int> share(const std::vector<Slot>& slots, int room);
    static int gaps(const std::vector<Slot>& slots, int spacing);

    int dpi_;
    int spacing_;
    Node root_;
};

}  // namespace dravik::win32
