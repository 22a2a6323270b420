// How a grid looks, and what a screen reader says of it.
#include "windows/win32/Gdi.h"
#include "windows/win32/GridPeer.h"
#include "windows/win32/Look.h"

namespace dravik::win32 {
namespace {

UINT formatOf(ui::CellAlign align) {
    return align == ui::CellAlign::Left ? DT_LEFT : align == ui::CellAlign::Center ? DT_CENTER : DT_RIGHT;
}

constexpr int kCellPadding = 5;
constexpr double kCellLineShare = 0.15;
constexpr double kHeadingLineShare = 0.25;

}  // namespace

bool GridPeer::isSelected(int row, int column) const {
    const auto [top, bottom] = std::minmax({model_.row(), model_.rowSelection()});
    const auto [left, right] = std::minmax({model_.column(), model_.columnSelection()});
    return row >= top && row <= bottom && column >= left && column <= right;
}

void GridPeer::paint(HDC dc, const RECT& client, const RECT& dirty) {
    fill(dc, client, look().color(ui::kWindowColor));
    if (!isFilled()) return;
    const Selected font(dc, wantedFont());
    SetBkMode(dc, TRANSPARENT);
    int edge = 0;
    for (int column = 0; column < view_.columns(); ++column) {
        const RECT heading = view_.cell(0, column);
        edge = heading.right;
        if (heading.right <= dirty.left || heading.left >= dirty.right) continue;
        for (int row = view_.top(); row <= view_.bottom(); ++row) {
            const RECT cell = view_.cell(row, column);
            if (cell.bottom > dirty.top && cell.top < dirty.bottom) drawRecord(dc, row, column, cell);
        }
        drawHeading(dc, heading);
        SetTextColor(dc,
                     IsWindowEnabled(window()) ? look().color(ui::kWindowTextColor) : look().disabledText());
        drawText(dc, 0, column, heading);
    }
    // Without a line at its end, which is that of the window.
    if (edge < client.right) drawHeading(dc, {edge, 0, client.right + 1, view_.headingHeight});
}

void GridPeer::drawRecord(HDC dc, int row, int column, const RECT& cell) const {
    const COLORREF marked = look().system(hasFocus() ? COLOR_HIGHLIGHT : COLOR_BTNSHADOW);
    const COLORREF line = look().line(look().color(ui::kWindowColor), kCellLineShare);
    const bool selected = isSelected(row, column);
    if (selected) fill(dc, cell, marked);
    fill(dc, {cell.left, cell.bottom - 1, cell.right, cell.bottom}, line);
    fill(dc, {cell.right - 1, cell.top, cell.right, cell.bottom}, line);
    SetTextColor(dc, selected ? hasFocus() ? look().system(COLOR_HIGHLIGHTTEXT) : readableOn(marked)
                     : IsWindowEnabled(window()) ? look().system(COLOR_WINDOWTEXT)
                                                 : look().disabledText());
    drawText(dc, row, column, cell);
    if (!hasFocus() || row != model_.rowSelection() || column != model_.columnSelection()) return;
    const RECT mark{cell.left, cell.top, cell.right - 1, cell.bottom - 1};
    DrawFocusRect(dc, &mark);
}

void GridPeer::drawHeading(HDC dc, const RECT& place) const {
    const COLORREF face = look().background();
    const COLORREF line = look().line(face, kHeadingLineShare);
    fill(dc, place, face);
    fill(dc, {place.left, place.bottom - 1, place.right, place.bottom}, line);
    fill(dc, {place.right - 1, place.top, place.right, place.bottom}, line);
}

void GridPeer::drawText(HDC dc, int row, int column, RECT cell) const {
    const std::wstring words = text(row, column);
    if (words.empty()) return;
    InflateRect(&cell, -look().px(kCellPadding), 0);
    DrawTextW(dc, words.c_str(), static_cast<int>(words.size()), &cell,
              formatOf(model_.align(column)) | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

std::wstring GridPeer::description() const {
    return L"Shift and the arrow keys select, Ctrl+Enter sorts by the current column";
}

int GridPeer::children() const {
    return isFilled() ? view_.columns() * (2 + view_.bottom() - view_.top()) : 0;
}

std::pair<int, int> GridPeer::cellOf(int child) const {
    const int line = (child - 1) / view_.columns();
    return {line == 0 ? 0 : view_.top() + line - 1, (child - 1) % view_.columns()};
}

LONG GridPeer::childRole(int child) const {
    return cellOf(child).first == 0 ? ROLE_SYSTEM_COLUMNHEADER : ROLE_SYSTEM_CELL;
}

std::wstring GridPeer::childName(int child) const {
    const auto [row, column] = cellOf(child);
    return text(row, column);
}

RECT GridPeer::childPlace(int child) const {
    const auto [row, column] = cellOf(child);
    return view_.cell(row, column);
}

LONG GridPeer::childState(int child) const {
    const auto [row, column] = cellOf(child);
    return STATE_SYSTEM_READONLY | (row > 0 ? STATE_SYSTEM_SELECTABLE : 0) |
           (isSelected(row, column) ? STATE_SYSTEM_SELECTED : 0);
}

int GridPeer::focusedChild() const {
    const int row = model_.rowSelection();
    if (!isFilled() || row < view_.top() || row > view_.bottom()) return 0;
    return view_.columns() * (1 + row - view_.top()) + model_.columnSelection() + 1;
}

}  // namespace dravik::win32
