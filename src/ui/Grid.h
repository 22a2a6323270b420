// A virtual grid: it holds a source that gives a cell's text when asked, an order of its rows, a current cell
// and a selection that reaches from the current cell to a selection end, as a flex grid has them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ui/RowOrder.h"
#include "ui/Widget.h"

namespace dravik::ui {

// What a grid shows. Row 0 is the heading row. Immutable while a grid holds it.
class GridSource {
  public:
    GridSource() = default;
    GridSource(const GridSource&) = delete;
    GridSource& operator=(const GridSource&) = delete;
    virtual ~GridSource() = default;

    virtual int rows() const = 0;
    virtual int columns() const = 0;
    virtual std::string text(int row, int column) const = 0;
    // The cell as a number for sorting; by default the number that its text starts with.
    virtual double number(int row, int column) const;
};

enum class CellAlign { Left, Center, Right };

class Grid : public Widget {
  public:
    explicit Grid(std::string name)
        : Widget(WidgetKind::Grid, std::move(name), kWindowColor, kWindowTextColor) {}

    // Shows another source in the source's own order. The current cell and the selection stay, cut to the new
    // size.
    void setSource(std::shared_ptr<const GridSource> source);

    int rows() const;
    int columns() const;
    // Of the row as shown; "" outside.
    std::string text(int row, int column) const;

    // Row 0 stays; ties keep their order.
    void sortByNumber(int column);
    void sortByText(int column);

    // The current cell, row 1 or more when there are records, and the other end of the selection.
    int row() const noexcept { return row_; }
    int column() const noexcept { return column_; }
    int rowSelection() const noexcept { return rowSelection_; }
    int columnSelection() const noexcept { return columnSelection_; }
    // Cut to the grid.
    void select(int row, int column, int rowSelection, int columnSelection);
    // The column becomes current and the selection that one cell.
    void setColumn(int column) { select(row_, column, row_, column); }

    // The cell under the pointer, set by the backend before it fires a mouse event; -1 outside.
    int mouseRow() const noexcept { return mouseRow_; }
    int mouseColumn() const noexcept { return mouseColumn_; }
    void setMouseCell(int row, int column) {
        mouseRow_ = row;
        mouseColumn_ = column;
    }

    // The drawing switch: while it is false the grid shows an empty surface.
    bool redraw() const noexcept { return redraw_; }
    void setRedraw(bool redraw) { assign(redraw_, redraw, Change::Appearance); }

    // To the right, for numbers, unless set.
    CellAlign align(int column) const;
    void setAlign(int column, CellAlign align);

  private:
    // The records in their present order, each with its key.
    template <class KeyOf>
    std::vector<KeyedRow> keyedRows(KeyOf keyOf) const;
    // Shows the records in that order.
    void show(const std::vector<KeyedRow>& keyed);
    int sourceRow(int row) const { return order_.empty() ? row : order_[static_cast<std::size_t>(row)]; }

    std::shared_ptr<const GridSource> source_;
    std::vector<std::int32_t> order_;  // source row of each row; empty for the source's own order
    std::map<int, CellAlign> aligned_;
    int row_ = 1;
    int column_ = 0;
    int rowSelection_ = 1;
    int columnSelection_ = 0;
    int mouseRow_ = -1;
    int mouseColumn_ = -1;
    bool redraw_ = true;
};

}  // namespace dravik::ui
