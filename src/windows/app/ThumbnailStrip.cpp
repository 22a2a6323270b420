#include "windows/app/ThumbnailStrip.h"

#include <algorithm>
#include <utility>

#include "windows/app/GreyPicture.h"
#include "windows/win32/PictureImage.h"
#include "windows/win32/ScrollBar.h"
#include "windows/win32/WinText.h"

namespace dravik::app {

using trainer::PartStrip;

ThumbnailStrip::ThumbnailStrip(HWND parent, SharedLook& shared, PartStrip& strip)
    : DrawnWindow(shared), strip_(strip) {
    create(L"DravikThumbnails", "thumbnails", parent,
           WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_HSCROLL | WS_BORDER);
    toolTips_.open(window());
    changed_ = strip.changed.connect([this] { showState(); });
    strip.setDisplay(shared.display());
}

std::wstring ThumbnailStrip::name() const {
    return win32::wide(trainer::kStripName);
}

std::wstring ThumbnailStrip::childName(int child) const {
    return win32::wide(strip_.description(child - 1));
}

LONG ThumbnailStrip::childState(int child) const {
    const RECT place = childPlace(child);
    LONG state = STATE_SYSTEM_SELECTABLE | STATE_SYSTEM_FOCUSABLE;
    if (child == focusedChild()) state |= STATE_SYSTEM_SELECTED;
    if (place.right <= 0 || place.left >= client().right) state |= STATE_SYSTEM_OFFSCREEN;
    return state;
}

void ThumbnailStrip::focusChild(int child) {
    SetFocus(window());
    strip_.choose(child - 1);
}

int ThumbnailStrip::preferredHeight() const {
    return look().px(PartStrip::kItemHeight) + GetSystemMetrics(SM_CYHSCROLL) + 6;
}

int ThumbnailStrip::leastHeight() const {
    return preferredHeight() - look().px(PartStrip::kItemHeight - PartStrip::kLeastHeight);
}

void ThumbnailStrip::showState() {
    const trainer::ScrollState scroll = strip_.scroll();
    win32::setScrollBar(window(), SB_HORZ, scroll.most + scroll.page, scroll.page, scroll.position);
    if (std::exchange(focused_, focusedChild()) != focusedChild() && GetFocus() == window())
        NotifyWinEvent(EVENT_OBJECT_FOCUS, window(), OBJID_CLIENT, focused_);
    redraw();
}

void ThumbnailStrip::paint(HDC dc, const RECT& area) {
    win32::fill(dc, area, look().system(COLOR_WINDOW));
    SetBkMode(dc, TRANSPARENT);
    const win32::Selected font(dc, look().font());
    for (int index = std::max(strip_.partAt(0), 0); index < strip_.count(); ++index) {
        if (strip_.itemPlace(index).left >= area.right) break;
        paintItem(dc, index);
    }
}

void ThumbnailStrip::paintItem(HDC dc, int index) {
    const RECT item = rectOf(strip_.itemPlace(index));
    const int margin = look().px(PartStrip::kMargin);
    RECT box{item.left + margin, item.top + margin, item.left + margin + look().px(PartStrip::kPictureWidth),
             item.top + margin + look().px(PartStrip::kPictureHeight)};
    if (const engine::GreyImage* picture = strip_.picture(index); picture && !picture->empty()) {
        RECT place = rectOf(PartStrip::pictureIn(*picture, win32::widthOf(box), win32::heightOf(box)));
        OffsetRect(&place, box.left, box.top);
        drawGrey(dc, *picture, place);
    } else if (picture) {
        SetTextColor(dc, look().system(COLOR_WINDOWTEXT));
        DrawTextW(dc, L"?", 1, &box, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    }
    if (const trainer::PartMark& mark = strip_.mark(index); !mark.picture.empty()) {
        const int side = look().px(PartStrip::kMarkSide);
        const auto image = win32::pictureImage(mark.picture, side, look());
        win32::drawPicture(dc, *image, box.right - side, box.top, 1);
    }
    const bool current = index == strip_.current();
    const std::wstring name = win32::wide(strip_.name(index));
    const int wide = std::min<int>(look().textSize(look().font(), name).cx + look().px(4),
                                   win32::widthOf(item) - look().px(4));
    const int left = (item.left + item.right - wide) / 2;
    RECT words{left, item.bottom - look().lineHeight(look().font()) - look().px(3), left + wide,
               item.bottom - look().px(3)};
    if (current) win32::fill(dc, words, look().system(COLOR_HIGHLIGHT));
    SetTextColor(dc, look().system(current ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
    DrawTextW(dc, name.c_str(), static_cast<int>(name.size()), &words,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_PATH_ELLIPSIS);
    if (!current) return;
    RECT mark = item;
    InflateRect(&mark, -look().px(1), -look().px(1));
    paintFocus(dc, mark);
}

void ThumbnailStrip::showTip(int index) {
    toolTips_.set(window(), 1, client(), index < 0 ? std::wstring() : win32::wide(strip_.tip(index)));
}

LRESULT ThumbnailStrip::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    toolTips_.relay(window(), message, wParam, lParam);
    const trainer::ScrollState scroll = strip_.scroll();
    switch (message) {
        case WM_SIZE:
            strip_.setWidth(client().right);
            return 0;
        case WM_HSCROLL:
            strip_.scrollTo(win32::scrolledTo(window(), SB_HORZ, LOWORD(wParam), scroll.line));
            return 0;
        case WM_MOUSEWHEEL:
        case WM_MOUSEHWHEEL: {
            const int delta = static_cast<short>(HIWORD(wParam));
            strip_.scrollTo(scroll.position + (message == WM_MOUSEWHEEL ? -delta : delta));
            return 0;
        }
        case WM_LBUTTONDOWN:
            SetFocus(window());
            if (const int index = strip_.partAt(GET_X_LPARAM(lParam)); index >= 0) strip_.choose(index);
            return 0;
        case WM_MOUSEMOVE:
            showTip(strip_.partAt(GET_X_LPARAM(lParam)));
            return 0;
        case WM_KEYDOWN:
            if (wParam == VK_LEFT)
                strip_.step(PartStrip::Step::Previous);
            else if (wParam == VK_RIGHT)
                strip_.step(PartStrip::Step::Next);
            else if (wParam == VK_HOME)
                strip_.step(PartStrip::Step::First);
            else if (wParam == VK_END)
                strip_.step(PartStrip::Step::Last);
            else
                break;
            return 0;
        default:
            break;
    }
    return DrawnWindow::answer(message, wParam, lParam);
}

}  // namespace dravik::app
