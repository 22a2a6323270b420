#include "windows/app/ThumbnailStrip.h"

#include <algorithm>

#include "windows/app/GreyPicture.h"
#include "windows/win32/Guard.h"
#include "windows/win32/ScrollBar.h"
#include "windows/win32/WinText.h"

namespace dravik::app {
namespace {

constexpr SIZE kThumbnail{104, 54};
constexpr SIZE kItem{116, 82};
constexpr std::size_t kKeptThumbnails = 400;
constexpr UINT_PTR kDecodeTimer = 1;

}  // namespace

ThumbnailStrip::ThumbnailStrip(HWND parent, SharedLook& shared, trainer::OpenedParts& parts)
    : DrawnWindow(shared), parts_(parts) {
    create(L"DravikThumbnails", "thumbnails", parent,
           WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_HSCROLL | WS_BORDER);
    SetWindowTextW(window(), L"Opened images");
    toolTips_.open(window());
    listChanged_ = parts.listChanged.connect([this] { win32::guarded([this] { showList(); }); });
    currentChanged_ = parts.currentChanged.connect([this] { win32::guarded([this] { showCurrent(); }); });
    showList();
}

int ThumbnailStrip::preferredHeight() const {
    return look().px(kItem.cy) + GetSystemMetrics(SM_CYHSCROLL) + 6;
}

void ThumbnailStrip::forgetPictures() {
    pictures_.clear();
    kept_.clear();
    showList();
}

RECT ThumbnailStrip::itemPlace(int index) const {
    const int wide = look().px(kItem.cx);
    const int left = index * wide - scroll_;
    return {left, 0, left + wide, look().px(kItem.cy)};
}

void ThumbnailStrip::scrollTo(int to) {
    scroll_ =
        win32::setScrollBar(window(), SB_HORZ, parts_.count() * look().px(kItem.cx), client().right, to);
    SetTimer(window(), kDecodeTimer, USER_TIMER_MINIMUM, nullptr);
    redraw();
}

void ThumbnailStrip::showList() {
    scrollTo(scroll_);
    showCurrent();
}

void ThumbnailStrip::showCurrent() {
    if (parts_.current() >= 0) {
        const RECT place = itemPlace(parts_.current());
        const int right = client().right;
        if (place.left < 0) scrollTo(scroll_ + place.left);
        if (place.right > right) scrollTo(scroll_ + place.right - right);
    }
    redraw();
}

const engine::GreyImage* ThumbnailStrip::pictureOf(int index) const {
    const auto found = pictures_.find(parts_.path(index));
    return found == pictures_.end() ? nullptr : &found->second;
}

// The first one in view that has no picture yet.
bool ThumbnailStrip::decodeOne() {
    const int wide = look().px(kItem.cx);
    const int last = std::min(parts_.count() - 1, (scroll_ + static_cast<int>(client().right)) / wide);
    for (int index = scroll_ / wide; index <= last; ++index) {
        if (pictureOf(index)) continue;
        const std::string path = parts_.path(index);
        engine::GreyImage picture;
        win32::guarded([&] { picture = parts_.thumbnail(index, look().px(kThumbnail.cx)); });
        pictures_[path] = std::move(picture);
        kept_.push_back(path);
        if (kept_.size() > kKeptThumbnails) {
            pictures_.erase(kept_.front());
            kept_.pop_front();
        }
        redraw();
        return true;
    }
    return false;
}

void ThumbnailStrip::paint(HDC dc, const RECT& area) {
    win32::fill(dc, area, GetSysColor(COLOR_WINDOW));
    SetBkMode(dc, TRANSPARENT);
    const win32::Selected font(dc, look().font());
    const int line = look().lineHeight(look().font());
    const bool focused = GetFocus() == window();
    for (int index = scroll_ / look().px(kItem.cx); index < parts_.count(); ++index) {
        const RECT item = itemPlace(index);
        if (item.left >= area.right) break;
        const RECT box{item.left + look().px(6), item.top + look().px(6),
                       item.left + look().px(6 + kThumbnail.cx), item.top + look().px(6 + kThumbnail.cy)};
        if (const engine::GreyImage* picture = pictureOf(index); picture && !picture->empty()) {
            const double scale = std::min(win32::widthOf(box) / double(picture->width()),
                                          win32::heightOf(box) / double(picture->height()));
            const int wide = std::max(static_cast<int>(picture->width() * scale), 1);
            const int high = std::max(static_cast<int>(picture->height() * scale), 1);
            const int left = (box.left + box.right - wide) / 2;
            const int top = (box.top + box.bottom - high) / 2;
            drawGrey(dc, *picture, {left, top, left + wide, top + high});
        } else if (picture) {
            RECT place = box;
            SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
            DrawTextW(dc, L"?", 1, &place, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
        }
        const bool current = index == parts_.current();
        const std::wstring name = win32::wide(parts_.name(index));
        const int wide = std::min<int>(look().textSize(look().font(), name).cx + look().px(4),
                                       win32::widthOf(item) - look().px(4));
        const int left = (item.left + item.right - wide) / 2;
        RECT words{left, item.bottom - line - look().px(3), left + wide, item.bottom - look().px(3)};
        if (current) win32::fill(dc, words, GetSysColor(COLOR_HIGHLIGHT));
        SetTextColor(dc, GetSysColor(current ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT));
        DrawTextW(dc, name.c_str(), static_cast<int>(name.size()), &words,
                  DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_PATH_ELLIPSIS);
        if (current && focused) {
            RECT mark = item;
            InflateRect(&mark, -look().px(1), -look().px(1));
            win32::frame(dc, mark, GetSysColor(COLOR_HIGHLIGHT), look().px(1));
        }
    }
}

void ThumbnailStrip::choose(int index) {
    if (index >= 0 && index < parts_.count() && index != parts_.current()) parts_.setCurrent(index);
}

LRESULT ThumbnailStrip::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    toolTips_.relay(window(), message, wParam, lParam);
    const int wide = look().px(kItem.cx);
    const int under = (GET_X_LPARAM(lParam) + scroll_) / wide;
    switch (message) {
        case WM_SIZE:
            scrollTo(scroll_);
            return 0;
        case WM_HSCROLL:
            scrollTo(win32::scrolledTo(window(), SB_HORZ, LOWORD(wParam), wide));
            return 0;
        case WM_MOUSEWHEEL:
        case WM_MOUSEHWHEEL: {
            const int delta = static_cast<short>(HIWORD(wParam));
            scrollTo(scroll_ + (message == WM_MOUSEWHEEL ? -delta : delta));
            return 0;
        }
        case WM_TIMER:
            if (wParam != kDecodeTimer) break;
            if (!decodeOne()) KillTimer(window(), kDecodeTimer);
            return 0;
        case WM_LBUTTONDOWN:
            SetFocus(window());
            choose(under);
            return 0;
        case WM_MOUSEMOVE:
            toolTips_.set(window(), 1, client(),
                          under < parts_.count() ? win32::wide(parts_.path(under)) : std::wstring());
            return 0;
        case WM_KEYDOWN:
            if (wParam == VK_LEFT)
                choose(parts_.current() - 1);
            else if (wParam == VK_RIGHT)
                choose(parts_.current() + 1);
            else if (wParam == VK_HOME)
                choose(0);
            else if (wParam == VK_END)
                choose(parts_.count() - 1);
            else
                break;
            return 0;
        default:
            break;
    }
    return DrawnWindow::answer(message, wParam, lParam);
}

}  // namespace dravik::app
