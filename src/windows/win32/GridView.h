// The geometry of a grid's window: which records and columns are seen where, and how far it is scrolled. Row
// 0 is the heading, which stays in place; records start at row 1.
#pragma once

#include <algorithm>
#include <vector>

namespace dravik::win32 {

class GridView {
  public:
    int records = 0;
    int rowHeight = 1;
    int headingHeight = 1;
    SIZE client{};

    void setWidths(std::vector<int> widths);
    const std::vector<int>& widths() const noexcept { return widths_; }
    void setWidth(int column, int width);
    int columns() const noexcept { return static_cast<int>(widths_.size()); }

    // The first record that is seen, from 1, and the pixels that the columns are scrolled by; both are kept
    // in their ranges.
    int top() const noexcept { return top_; }
    int offset() const noexcept { return offset_; }
    void scrollTo(int top, int offset);
    // Scrolls as little as it must for the cell to be seen.
    void reveal(int row, int column);

    // Records that are seen whole, at least 1.
    int wholeRows() const { return std::max((static_cast<int>(client.cy) - headingHeight) / rowHeight, 1); }
    // The last record that is seen at least in part.
    int bottom() const;
    int totalWidth() const noexcept { return totalWidth_; }

    RECT cell(int row, int column) const;
    // 0 in the heading, -1 below the last record.
    int rowAt(int y) const;
    // -1 right of the last column.
    int columnAt(int x) const;
    // The column whose right edge is within `reach` of x, -1 for none.
    int edgeAt(int x, int reach) const;

  private:
    int left(int column) const;

    std::vector<int> widths_;
    int totalWidth_ = 0;
    int top_ = 1;
    int offset_ = 0;
};

}  // namespace dravik::win32
