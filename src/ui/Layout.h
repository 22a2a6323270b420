// The arrangement of a form, described once and laid out by every backend: rows, columns, tables and fixed
// places, with lengths in twips (1/1440 inch). Order in the tree is tab order. Hidden widgets take no room.
#pragma once

#include <utility>
#include <vector>

namespace dravik::ui {

class Widget;

// In twips; left and top from the container's inside.
struct Place {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

struct Layout {
    enum class Kind { Empty, Widget, Row, Column, Table, Fixed };

    Kind kind = Kind::Empty;
    Widget* widget = nullptr;      // Kind::Widget
    std::vector<Layout> children;  // Row, Column, Table, Fixed
    int stretch = 0;               // share of the spare length along the parent's direction
    int minimumWidth = 0;
    int minimumHeight = 0;
    bool fill = true;  // widens across the parent's direction; otherwise stays at its own size, at the start
    int tableRow = 0;  // in a Table
    int tableColumn = 0;
    int columnSpan = 1;
    std::vector<int> columnStretch;  // of a Table, by column; missing ones are 0
    Place place;                     // in a Fixed

    Layout&& stretched(int share = 1) && {
        stretch = share;
        return std::move(*this);
    }
    Layout&& atLeast(int width, int height = 0) && {
        minimumWidth = width;
        minimumHeight = height;
        return std::move(*this);
    }
    Layout&& ownSize() && {
        fill = false;
        return std::move(*this);
    }
    Layout&& spanning(int columns) && {
        columnSpan = columns;
        return std::move(*this);
    }
    Layout&& withColumns(std::vector<int> stretches) && {
        columnStretch = std::move(stretches);
        return std::move(*this);
    }
};

Layout item(Widget& widget);
Layout space(int stretch = 1);
Layout row(std::vector<Layout> children);
Layout column(std::vector<Layout> children);
// Rows of cells, each cell one column further than the one before it and its span.
Layout table(std::vector<std::vector<Layout>> rows);
Layout fixed(const std::vector<std::pair<Widget*, Place>>& places);

}  // namespace dravik::ui
