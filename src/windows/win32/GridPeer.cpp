// A grid drawn by hand: it asks the model for the texts of what is seen and for nothing else, so that any
// number of records is shown at once. Selection as in a flex grid: a rectangle from the current cell to a
// selection end.

#include <algorithm>

#include "windows/win32/Accessible.h"
#include "windows/win32/DrawnPeer.h"
#include "windows/win32/GridView.h"
#include "windows/win32/Page.h"
#include "windows/win32/Peers.h"
#include "windows/win32/ScrollBar.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr int kRowPadding = 6;
constexpr int kColumnPadding = 14;
constexpr int kCellPadding = 5;
constexpr int kLeastColumnWidth = 34;
constexpr int kProbedRows = 40;
constexpr int kEdgeReach = 3;
constexpr UINT_PTR kDragTimer = 1;
constexpr UINT kDragInterval = 50;  // milliseconds

UINT formatOf(ui::CellAlign align) {
    return align == ui::CellAlign::Left ? DT_LEFT : align == ui::CellAlign::Center ? DT_CENTER : DT_RIGHT;
}

class GridPeer : public PeerOf<ui::Grid, DrawnPeer>, private AccessibleContent {
  public:
    using PeerOf::PeerOf;

    bool takesFocus() const override { return true; }
    void placed(const ui::Box&) override { sized(); }
    void lookChanged() override {
        Peer::lookChanged();
        if (attached() && window()) fit();
    }

  protected:
    HWND make(HWND parent) override {
        return makeDrawn(L"DravikGrid", parent, WS_TABSTOP | WS_BORDER | WS_HSCROLL | WS_VSCROLL);
    }
    ui::Measure ask() override {
        const int line = look().lineHeight(wantedFont()) + look().px(kRowPadding);
        return {{look().px(120), 4 * line}, {look().px(260), 9 * line}, true, true, true, true};
    }
    bool firesMouse() const override { return false; }

    void show(ui::Change change) override {
        switch (change) {
            case ui::Change::Items:
                if (columns_ != model_.columns() || !fitted_ || digits() > fittedDigits_) fit();
                refill();
                break;
            case ui::Change::Appearance:
                DrawnPeer::show(change);
                if (!fitted_) fit();
                refill();
                break;
            case ui::Change::Selection:
                redraw();
                if (const int child = focusedChild(); child > 0)
                    NotifyWinEvent(EVENT_OBJECT_FOCUS, window(), OBJID_CLIENT, child);
                break;
            default:
                DrawnPeer::show(change);
        }
    }

    LRESULT message(UINT message, WPARAM wParam, LPARAM lParam) override {
        const POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        switch (message) {
            case WM_SIZE:
                sized();
                return 0;
            case WM_VSCROLL:
                scrolled(SB_VERT, LOWORD(wParam));
                return 0;
            case WM_HSCROLL:
                scrolled(SB_HORZ, LOWORD(wParam));
                return 0;
            case WM_MOUSEWHEEL:
            case WM_MOUSEHWHEEL:
                wheeled(message == WM_MOUSEHWHEEL, static_cast<short>(HIWORD(wParam)));
                return 0;
            case WM_LBUTTONDOWN:
            case WM_LBUTTONDBLCLK:
                pressed(ui::kLeftButton, wParam, place);
                return 0;
            case WM_RBUTTONDOWN:
            case WM_RBUTTONDBLCLK:
                pressed(ui::kRightButton, wParam, place);
                return 0;
            case WM_MBUTTONDOWN:
            case WM_MBUTTONDBLCLK:
                pressed(ui::kMiddleButton, wParam, place);
                return 0;
            case WM_MOUSEMOVE:
                moved(place);
                return 0;
            case WM_TIMER:
                if (wParam != kDragTimer) break;
                dragOn();
                return 0;
            case WM_LBUTTONUP:
                if (GetCapture() == window()) ReleaseCapture();
                return 0;
            case WM_CAPTURECHANGED:
                KillTimer(window(), kDragTimer);
                selecting_ = false;
                resized_ = -1;
                return 0;
            case WM_SETCURSOR: {
                POINT at{};
                GetCursorPos(&at);
                ScreenToClient(window(), &at);
                if (LOWORD(lParam) != HTCLIENT || at.y >= view_.headingHeight || at.y < 0 ||
                    view_.edgeAt(at.x, look().px(kEdgeReach)) < 0)
                    break;
                SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
                return TRUE;
            }
            default:
                break;
        }
        return DrawnPeer::message(message, wParam, lParam);
    }

    void menuKeyPressed() override {
        POINT place = centre();
        const int row = model_.rowSelection();
        const int column = model_.columnSelection();
        const bool onCell = records() > 0;
        if (onCell) {
            view_.reveal(row, column);
            const RECT cell = view_.cell(row, column);
            place = {(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2};
        }
        press(ui::kRightButton, 0, onCell ? row : -1, onCell ? column : -1, place);
    }

    void keyPressed(UINT key) override {
        const int shift = shiftState();
        const bool control = (shift & ui::kCtrlMask) != 0;
        if (shift & ui::kAltMask) return;
        if (control && key == 'C') {
            // Ctrl+Insert is a copy already; the other key for it becomes one.
            act([&] { model_.keyDown(ui::kKeyInsert, ui::kCtrlMask); });
        } else if (records() == 0) {
            return;
        } else if (control && key == 'A') {
            act([&] { model_.select(1, 0, view_.records, view_.columns() - 1); });
        } else if (control && key == VK_RETURN) {
            const int column = model_.columnSelection();
            const RECT heading = view_.cell(0, column);
            press(ui::kLeftButton, 0, 0, column,
                  {(heading.left + heading.right) / 2, view_.headingHeight / 2});
        } else {
            moveByKey(key, control, (shift & ui::kShiftMask) != 0);
        }
    }

    void paint(HDC dc, const RECT& client, const RECT& dirty) override {
        const COLORREF ground = look().color(ui::kWindowColor);
        fill(dc, client, ground);
        if (!isFilled()) return;
        const Selected font(dc, wantedFont());
        SetBkMode(dc, TRANSPARENT);
        const bool enabled = IsWindowEnabled(window()) != FALSE;
        const COLORREF words = enabled ? GetSysColor(COLOR_WINDOWTEXT) : look().disabledText();
        const COLORREF line = look().line(ground, 0.15);
        const COLORREF face = look().background();
        const COLORREF faceLine = look().line(face, 0.25);
        const auto [top, bottom] = std::minmax({model_.row(), model_.rowSelection()});
        const auto [left, right] = std::minmax({model_.column(), model_.columnSelection()});

        int edge = 0;
        for (int column = 0; column < view_.columns(); ++column) {
            const RECT heading = view_.cell(0, column);
            edge = heading.right;
            if (heading.right <= dirty.left || heading.left >= dirty.right) continue;
            const UINT align = formatOf(model_.align(column));
            for (int row = view_.top(); row <= view_.bottom(); ++row) {
                RECT cell = view_.cell(row, column);
                if (cell.bottom <= dirty.top || cell.top >= dirty.bottom) continue;
                const bool selected = row >= top && row <= bottom && column >= left && column <= right;
                if (selected) fill(dc, cell, GetSysColor(hasFocus() ? COLOR_HIGHLIGHT : COLOR_BTNSHADOW));
                fill(dc, {cell.left, cell.bottom - 1, cell.right, cell.bottom}, line);
                fill(dc, {cell.right - 1, cell.top, cell.right, cell.bottom}, line);
                SetTextColor(dc, !selected    ? words
                                 : hasFocus() ? GetSysColor(COLOR_HIGHLIGHTTEXT)
                                              : readableOn(GetSysColor(COLOR_BTNSHADOW)));
                drawCell(dc, row, column, cell, align);
                if (hasFocus() && row == model_.rowSelection() && column == model_.columnSelection()) {
                    RECT mark{cell.left, cell.top, cell.right - 1, cell.bottom - 1};
                    DrawFocusRect(dc, &mark);
                }
            }
            fill(dc, heading, face);
            fill(dc, {heading.left, heading.bottom - 1, heading.right, heading.bottom}, faceLine);
            fill(dc, {heading.right - 1, heading.top, heading.right, heading.bottom}, faceLine);
            SetTextColor(dc, enabled ? look().color(ui::kWindowTextColor) : look().disabledText());
            drawCell(dc, 0, column, heading, align);
        }
        if (edge < client.right) {
            fill(dc, {edge, 0, client.right, view_.headingHeight}, face);
            fill(dc, {edge, view_.headingHeight - 1, client.right, view_.headingHeight}, faceLine);
        }
    }

    AccessibleContent* accessibleContent() override { return this; }

  private:
    bool isFilled() const { return attached() && model_.redraw() && model_.columns() > 0; }
    int records() const { return isFilled() ? std::max(model_.rows() - 1, 0) : 0; }

    std::wstring text(int row, int column) const {
        std::wstring result;
        guarded([&] { result = wide(model_.text(row, column)); });
        return result;
    }

    // Widths by the headings and the first and last records; the rest is not looked at.
    void fit() {
        const HFONT font = wantedFont();
        view_.rowHeight = look().lineHeight(font) + look().px(kRowPadding);
        view_.headingHeight = view_.rowHeight + look().px(2);
        columns_ = model_.columns();
        const int last = records();
        std::vector<int> widths;
        for (int column = 0; column < columns_; ++column) {
            long widest = 0;
            for (int row = 0; row <= std::min(last, kProbedRows); ++row)
                widest = std::max(widest, look().textSize(font, text(row, column)).cx);
            if (last > kProbedRows) widest = std::max(widest, look().textSize(font, text(last, column)).cx);
            widths.push_back(
                std::max(static_cast<int>(widest) + look().px(kColumnPadding), look().px(kLeastColumnWidth)));
        }
        fitted_ = last > 0;
        fittedDigits_ = digits();
        view_.setWidths(std::move(widths));
    }

    // Of the largest record number.
    std::size_t digits() const { return std::to_wstring(records()).size(); }

    void refill() {
        view_.records = records();
        sized();
        NotifyWinEvent(EVENT_OBJECT_REORDER, window(), OBJID_CLIENT, CHILDID_SELF);
    }

    void sized() {
        RECT client{};
        GetClientRect(window(), &client);
        view_.client = {client.right, client.bottom};
        view_.scrollTo(view_.top(), view_.offset());
        showScrollBars();
        redraw();
    }

    // Showing one bar takes room from the other direction, and so sizes the window again.
    void showScrollBars() {
        if (showingBars_ || !window()) return;
        showingBars_ = true;
        const auto show = [&](int bar, int content, int page, int position) {
            setScrollBar(window(), bar, content, page, position);
            RECT client{};
            GetClientRect(window(), &client);
            view_.client = {client.right, client.bottom};
            view_.scrollTo(view_.top(), view_.offset());
        };
        const bool filled = isFilled();
        show(SB_HORZ, filled ? view_.totalWidth() : 0, static_cast<int>(view_.client.cx), view_.offset());
        show(SB_VERT, view_.records, view_.wholeRows(), view_.top() - 1);
        show(SB_HORZ, filled ? view_.totalWidth() : 0, static_cast<int>(view_.client.cx), view_.offset());
        showingBars_ = false;
    }

    void scrollTo(int top, int offset) {
        const int topBefore = view_.top();
        const int offsetBefore = view_.offset();
        view_.scrollTo(top, offset);
        if (view_.top() == topBefore && view_.offset() == offsetBefore) return;
        showScrollBars();
        redraw();
    }

    void scrolled(int bar, int request) {
        const int step = bar == SB_VERT ? 1 : look().px(40);
        const int to = scrolledTo(window(), bar, request, step, step);
        if (bar == SB_VERT)
            scrollTo(to + 1, view_.offset());
        else
            scrollTo(view_.top(), to);
    }

    void wheeled(bool across, int delta) {
        UINT lines = 3;
        SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
        if (lines == WHEEL_PAGESCROLL) lines = static_cast<UINT>(view_.wholeRows());
        wheel_ += delta * static_cast<int>(lines);
        const int steps = wheel_ / WHEEL_DELTA;
        wheel_ -= steps * WHEEL_DELTA;
        if (across || (GetKeyState(VK_SHIFT) < 0 && !across))
            scrollTo(view_.top(), view_.offset() + (across ? steps : -steps) * look().px(20));
        else
            scrollTo(view_.top() - steps, view_.offset());
    }

    void select(int row, int column, int rowEnd, int columnEnd) {
        view_.reveal(rowEnd, columnEnd);
        showScrollBars();
        act([&] { model_.select(row, column, rowEnd, columnEnd); });
    }

    void press(int button, int shift, int row, int column, POINT place) {
        act([&] { model_.setMouseCell(row, column); });
        fireMouseDown(button, shift, place);
    }

    void pressed(int button, WPARAM keys, POINT place) {
        const auto self = shared_from_this();
        SetFocus(window());
        if (!attached() || !window()) return;
        const int shift = (keys & MK_SHIFT ? ui::kShiftMask : 0) | (keys & MK_CONTROL ? ui::kCtrlMask : 0);
        const int column = isFilled() ? view_.columnAt(place.x) : -1;
        const int row = isFilled() ? view_.rowAt(place.y) : -1;
        if (row == 0 && button == ui::kLeftButton) {
            resized_ = view_.edgeAt(place.x, look().px(kEdgeReach));
            if (resized_ >= 0) {
                SetCapture(window());
                return;
            }
        }
        const bool onCell = row >= 1 && column >= 0;
        if (onCell && button == ui::kLeftButton) {
            if (shift & ui::kShiftMask)
                select(model_.row(), model_.column(), row, column);
            else
                select(row, column, row, column);
            if (!window()) return;
            SetCapture(window());
            selecting_ = true;
            SetTimer(window(), kDragTimer, kDragInterval, nullptr);
        }
        // Outside of the records both are -1.
        const bool outside = row < 0 || column < 0;
        press(button, shift, outside ? -1 : row, outside ? -1 : column, place);
    }

    void moved(POINT place) {
        if (resized_ >= 0) {
            const RECT cell = view_.cell(0, resized_);
            view_.setWidth(resized_, std::max<int>(place.x - cell.left, look().px(kCellPadding * 2)));
            showScrollBars();
            redraw();
        } else if (selecting_) {
            extendTo(place, false);
        }
    }

    // Past an edge the next row or column comes into view.
    void dragOn() {
        POINT place{};
        GetCursorPos(&place);
        ScreenToClient(window(), &place);
        if (selecting_ && GetCapture() == window()) extendTo(place, true);
    }

    void extendTo(POINT place, bool scrolls) {
        if (records() == 0) return;
        if (scrolls) {
            const int down = place.y >= view_.client.cy ? 1 : place.y < view_.headingHeight ? -1 : 0;
            const int right = place.x >= view_.client.cx ? 1 : place.x < 0 ? -1 : 0;
            if (down == 0 && right == 0) return;
            scrollTo(view_.top() + down, view_.offset() + right * look().px(20));
        }
        const int y = std::clamp<int>(place.y, view_.headingHeight,
                                      std::max<int>(view_.client.cy - 1, view_.headingHeight));
        const int x = std::clamp<int>(place.x, 0, std::max<int>(view_.client.cx - 1, 0));
        const int row = view_.rowAt(y) < 0 ? view_.records : view_.rowAt(y);
        const int column = view_.columnAt(x) < 0 ? view_.columns() - 1 : view_.columnAt(x);
        if (row != model_.rowSelection() || column != model_.columnSelection())
            act([&] { model_.select(model_.row(), model_.column(), row, column); });
    }

    void moveByKey(UINT key, bool control, bool extend) {
        int row = std::max(model_.rowSelection(), 1);
        int column = model_.columnSelection();
        const int lastColumn = view_.columns() - 1;
        switch (key) {
            case VK_LEFT:
                column = control ? 0 : column - 1;
                break;
            case VK_RIGHT:
                column = control ? lastColumn : column + 1;
                break;
            case VK_UP:
                row = control ? 1 : row - 1;
                break;
            case VK_DOWN:
                row = control ? view_.records : row + 1;
                break;
            case VK_PRIOR:
                row -= view_.wholeRows();
                break;
            case VK_NEXT:
                row += view_.wholeRows();
                break;
            case VK_HOME:
                column = 0;
                if (control) row = 1;
                break;
            case VK_END:
                column = lastColumn;
                if (control) row = view_.records;
                break;
            default:
                return;
        }
        row = std::clamp(row, 1, view_.records);
        column = std::clamp(column, 0, lastColumn);
        if (extend)
            select(model_.row(), model_.column(), row, column);
        else
            select(row, column, row, column);
    }

    void drawCell(HDC dc, int row, int column, RECT cell, UINT align) const {
        const std::wstring words = text(row, column);
        if (words.empty()) return;
        InflateRect(&cell, -look().px(kCellPadding), 0);
        DrawTextW(dc, words.c_str(), static_cast<int>(words.size()), &cell,
                  align | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    }

    // For a screen reader: the headings, then the cells that are seen, row by row.
    LONG role() const override { return ROLE_SYSTEM_TABLE; }
    std::wstring name() const override { return wide(model_.accessibleName()); }
    std::wstring description() const override {
        return L"Shift and the arrow keys select, Ctrl+Enter sorts by the current column";
    }
    int children() const override {
        return isFilled() ? view_.columns() * (2 + view_.bottom() - view_.top()) : 0;
    }
    std::pair<int, int> cellOf(int child) const {
        const int line = (child - 1) / view_.columns();
        return {line == 0 ? 0 : view_.top() + line - 1, (child - 1) % view_.columns()};
    }
    LONG childRole(int child) const override {
        return cellOf(child).first == 0 ? ROLE_SYSTEM_COLUMNHEADER : ROLE_SYSTEM_CELL;
    }
    std::wstring childName(int child) const override {
        const auto [row, column] = cellOf(child);
        return text(row, column);
    }
    RECT childPlace(int child) const override {
        const auto [row, column] = cellOf(child);
        return view_.cell(row, column);
    }
    LONG childState(int child) const override {
        const auto [row, column] = cellOf(child);
        const auto [top, bottom] = std::minmax({model_.row(), model_.rowSelection()});
        const auto [left, right] = std::minmax({model_.column(), model_.columnSelection()});
        const bool selected = row >= top && row <= bottom && column >= left && column <= right;
        return STATE_SYSTEM_READONLY | (row > 0 ? STATE_SYSTEM_SELECTABLE : 0) |
               (selected ? STATE_SYSTEM_SELECTED : 0);
    }
    int focusedChild() const override {
        const int row = model_.rowSelection();
        if (!isFilled() || row < view_.top() || row > view_.bottom()) return 0;
        return view_.columns() * (1 + row - view_.top()) + model_.columnSelection() + 1;
    }

    GridView view_;
    int columns_ = -1;
    int wheel_ = 0;
    int resized_ = -1;
    bool fitted_ = false;
    std::size_t fittedDigits_ = 0;
    bool selecting_ = false;
    bool showingBars_ = false;
};

}  // namespace

std::shared_ptr<Peer> make(ui::Grid& model, Page& page) {
    return std::make_shared<GridPeer>(model, page);
}

}  // namespace dravik::win32
