#include "windows/app/PageHost.h"

#include <algorithm>

#include "windows/win32/ScrollBar.h"

namespace dravik::app {
namespace {

constexpr int kStep = 24;  // pixels at 96 dpi

}  // namespace

PageHost::PageHost(HWND parent, SharedLook& look) : DrawnWindow(look) {
    create(L"DravikPageHost", "pageHost", parent, WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
           WS_EX_CONTROLPARENT);
}

void PageHost::show(win32::FormPage* page) {
    page_ = page;
    if (!page) return;
    page->focusEntered = [this] { bringFocusIntoView(); };
    page->setVisible(true);
    arrange();
}

int PageHost::leastWidth() const {
    const bool scrolls = (GetWindowLongPtrW(window(), GWL_STYLE) & WS_VSCROLL) != 0;
    return (page_ ? page_->minimumSize().cx : 0) + (scrolls ? GetSystemMetrics(SM_CXVSCROLL) : 0);
}

void PageHost::arrange() {
    if (!page_) return;
    const int needed = page_->minimumSize().cy;
    win32::setScrollBar(window(), SB_VERT, needed, client().bottom, GetScrollPos(window(), SB_VERT));
    const int top = -GetScrollPos(window(), SB_VERT);
    page_->setBounds({0, top, client().right, top + std::max<int>(client().bottom, needed)});
}

void PageHost::scrollTo(int position) {
    SetScrollPos(window(), SB_VERT, position, TRUE);
    arrange();
}

void PageHost::bringFocusIntoView() {
    RECT place{};
    if (!page_ || !IsChild(window(), GetFocus()) || !GetWindowRect(GetFocus(), &place)) return;
    MapWindowPoints(nullptr, window(), reinterpret_cast<POINT*>(&place), 2);
    const int margin = look().px(kStep) / 2;
    const int position = GetScrollPos(window(), SB_VERT);
    if (place.bottom > client().bottom) scrollTo(position + place.bottom - client().bottom + margin);
    if (place.top < 0) scrollTo(position + place.top - margin);
}

LRESULT PageHost::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_SIZE:
            arrange();
            return 0;
        case WM_VSCROLL:
            scrollTo(win32::scrolledTo(window(), SB_VERT, LOWORD(wParam), look().px(kStep)));
            return 0;
        case WM_MOUSEWHEEL:
            scrollTo(GetScrollPos(window(), SB_VERT) -
                     static_cast<short>(HIWORD(wParam)) * 3 * look().px(kStep) / WHEEL_DELTA);
            return 0;
        default:
            return DrawnWindow::answer(message, wParam, lParam);
    }
}

void PageHost::paint(HDC dc, const RECT& area) {
    win32::fill(dc, area, look().background());
}

}  // namespace dravik::app
