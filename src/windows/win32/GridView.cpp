#include "windows/win32/GridView.h"

#include <cstdlib>
#include <numeric>

namespace dravik::win32 {

void GridView::setWidths(std::vector<int> widths) {
    widths_ = std::move(widths);
    totalWidth_ = std::accumulate(widths_.begin(), widths_.end(), 0);
    scrollTo(top_, offset_);
}

void GridView::setWidth(int column, int width) {
    totalWidth_ += width - widths_[static_cast<std::size_t>(column)];
    widths_[static_cast<std::size_t>(column)] = width;
    scrollTo(top_, offset_);
}

void GridView::scrollTo(int top, int offset) {
    top_ = std::clamp(top, 1, std::max(records - wholeRows() + 1, 1));
    offset_ = std::clamp(offset, 0, std::max(totalWidth_ - static_cast<int>(client.cx), 0));
}

int GridView::left(int column) const {
    return std::accumulate(widths_.begin(), widths_.begin() + column, 0) - offset_;
}

void GridView::reveal(int row, int column) {
    int top = top_;
    if (row >= 1 && row < top) top = row;
    if (row >= top + wholeRows()) top = row - wholeRows() + 1;
    int offset = offset_;
    if (column >= 0 && column < columns()) {
        const int begin = left(column);
        const int end = begin + widths_[static_cast<std::size_t>(column)];
        if (end > client.cx) offset += end - static_cast<int>(client.cx);
        if (begin - (offset - offset_) < 0) offset = offset_ + begin;
    }
    scrollTo(top, offset);
}

int GridView::bottom() const {
    const int room = std::max(static_cast<int>(client.cy) - headingHeight, 0);
    return std::min(records, top_ + (room + rowHeight - 1) / rowHeight - 1);
}

RECT GridView::cell(int row, int column) const {
    const int x = left(column);
    const int y = row == 0 ? 0 : headingHeight + (row - top_) * rowHeight;
    return {x, y, x + widths_[static_cast<std::size_t>(column)], y + (row == 0 ? headingHeight : rowHeight)};
}

int GridView::rowAt(int y) const {
    if (y < headingHeight) return 0;
    const int row = top_ + (y - headingHeight) / rowHeight;
    return row <= records ? row : -1;
}

int GridView::columnAt(int x) const {
    int edge = -offset_;
    for (int column = 0; column < columns(); ++column) {
        edge += widths_[static_cast<std::size_t>(column)];
        if (x < edge) return column;
    }
    return -1;
}

int GridView::edgeAt(int x, int reach) const {
    int edge = -offset_;
    for (int column = 0; column < columns(); ++column) {
        edge += widths_[static_cast<std::size_t>(column)];
        if (std::abs(x - edge) <= reach) return column;
    }
    return -1;
}

}  // namespace dravik::win32
