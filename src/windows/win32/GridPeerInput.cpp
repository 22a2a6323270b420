// What the mouse, the keys and the scroll bars do to a grid.
#include "windows/win32/GridPeer.h"
#include "windows/win32/Look.h"
#include "windows/win32/ScrollBar.h"

namespace dravik::win32 {
namespace {

constexpr int kEdgeReach = 3;
constexpr int kLeastSizedWidth = 10;
constexpr UINT_PTR kDragTimer = 1;
constexpr UINT kDragInterval = 50;  // milliseconds

}  // namespace

LRESULT GridPeer::message(UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (const int button = pressedButton(message)) {
        pressed(button, wParam, place);
        return 0;
    }
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
        case WM_MOUSEMOVE:
            moved(place);
            return 0;
        case WM_TIMER:
            if (wParam != kDragTimer) break;
            dragOn();
            return 0;
        case WM_LBUTTONUP:
            released();
            return 0;
        case WM_CAPTURECHANGED:
            captureLost();
            return 0;
        case WM_SETCURSOR:
            if (showSizingPointer(LOWORD(lParam))) return TRUE;
            break;
        default:
            break;
    }
    return DrawnPeer::message(message, wParam, lParam);
}

void GridPeer::scrolled(int bar, int request) {
    const int step = bar == SB_VERT ? 1 : look().px(40);
    const int to = scrolledTo(window(), bar, request, step, step);
    if (bar == SB_VERT)
        scrollTo(to + 1, view_.offset());
    else
        scrollTo(view_.top(), to);
}

void GridPeer::wheeled(bool across, int delta) {
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

void GridPeer::select(int row, int column, int rowEnd, int columnEnd) {
    view_.reveal(rowEnd, columnEnd);
    showScrollBars();
    act([&] { model_.select(row, column, rowEnd, columnEnd); });
}

void GridPeer::press(int button, int shift, int row, int column, POINT place) {
    act([&] { model_.setMouseCell(row, column); });
    fireMouseDown(button, shift, place);
}

void GridPeer::pressed(int button, WPARAM keys, POINT place) {
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

void GridPeer::released() {
    if (GetCapture() == window()) ReleaseCapture();
}

void GridPeer::captureLost() {
    KillTimer(window(), kDragTimer);
    selecting_ = false;
    resized_ = -1;
}

bool GridPeer::showSizingPointer(int hit) const {
    POINT at{};
    GetCursorPos(&at);
    ScreenToClient(window(), &at);
    const bool onHeading = at.y >= 0 && at.y < view_.headingHeight;
    if (hit != HTCLIENT || !onHeading || view_.edgeAt(at.x, look().px(kEdgeReach)) < 0) return false;
    SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
    return true;
}

void GridPeer::moved(POINT place) {
    if (resized_ >= 0) {
        const RECT cell = view_.cell(0, resized_);
        view_.setWidth(resized_, std::max<int>(place.x - cell.left, look().px(kLeastSizedWidth)));
        showScrollBars();
        redraw();
    } else if (selecting_) {
        extendTo(place, false);
    }
}

void GridPeer::dragOn() {
    POINT place{};
    GetCursorPos(&place);
    ScreenToClient(window(), &place);
    if (selecting_ && GetCapture() == window()) extendTo(place, true);
}

void GridPeer::extendTo(POINT place, bool scrolls) {
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

void GridPeer::menuKeyPressed() {
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

void GridPeer::keyPressed(UINT key) {
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
        press(ui::kLeftButton, 0, 0, column, {(heading.left + heading.right) / 2, view_.headingHeight / 2});
    } else {
        moveByKey(key, control, (shift & ui::kShiftMask) != 0);
    }
}

void GridPeer::moveByKey(UINT key, bool control, bool extend) {
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

}  // namespace dravik::win32
