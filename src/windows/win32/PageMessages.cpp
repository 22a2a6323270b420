// The messages that a page's window gets, and those of the windows in it that are for it.
#include "windows/win32/Page.h"
#include "windows/win32/Win32Platform.h"

namespace dravik::win32 {

std::shared_ptr<Peer> Page::childPeer(HWND window) const {
    const auto found = byWindow_.find(window);
    const bool known = found != byWindow_.end() && found->second->attached();
    return known ? found->second->shared_from_this() : nullptr;
}

bool Page::commandFrom(HWND child, WPARAM command) {
    const auto peer = childPeer(child);
    if (peer) peer->command(HIWORD(command), LOWORD(command));
    return peer != nullptr;
}

std::optional<LRESULT> Page::notificationFrom(NMHDR& header) {
    const auto peer = childPeer(header.hwndFrom);
    return peer ? peer->notify(header) : std::nullopt;
}

// The list that a combo box drops down is a window of its own, which nobody here knows.
std::optional<LRESULT> Page::colorsOf(HWND child, HDC dc, bool mayBeList) {
    const auto peer = childPeer(child);
    if (HBRUSH brush = peer ? peer->colors(dc) : nullptr) return reinterpret_cast<LRESULT>(brush);
    if (!peer && mayBeList) {
        if (!look_->skin()) return std::nullopt;
        SetTextColor(dc, look_->system(COLOR_WINDOWTEXT));
        SetBkColor(dc, look_->system(COLOR_WINDOW));
        return reinterpret_cast<LRESULT>(look_->brush(look_->system(COLOR_WINDOW)));
    }
    SetTextColor(dc, look_->color(ui::kButtonTextColor));
    SetBkColor(dc, look_->background());
    return reinterpret_cast<LRESULT>(look_->brush(look_->background()));
}

std::optional<LRESULT> Page::fromChild(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_COMMAND:
            if (commandFrom(reinterpret_cast<HWND>(lParam), wParam)) return 0;
            return std::nullopt;
        case WM_NOTIFY:
            return notificationFrom(*reinterpret_cast<NMHDR*>(lParam));
        case WM_CTLCOLOREDIT:
        case WM_CTLCOLORLISTBOX:
            return colorsOf(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam), true);
        case WM_CTLCOLORBTN:
        case WM_CTLCOLORSTATIC:
            return colorsOf(reinterpret_cast<HWND>(lParam), reinterpret_cast<HDC>(wParam), false);
        default:
            return std::nullopt;
    }
}

void Page::fillGround(HDC dc) const {
    RECT client{};
    GetClientRect(window(), &client);
    fill(dc, client, look_->background());
}

void Page::leaveAsPosted(HWND control) {
    const auto peer = peerOf(control);
    if (!peer || peer->isUsable()) return;
    if (!GetFocus() || GetFocus() == peer->window()) focusLeft(*peer);
}

void Page::focusAsPosted(HWND control) {
    const auto peer = peerOf(control);
    if (peer && peer->isUsable() && IsWindowVisible(peer->window())) peer->focus();
}

void Page::timerFired(std::size_t number) {
    if (attached_ && !inert_ && number >= 1 && number <= form_.timers.size()) tick(number - 1);
}

LRESULT Page::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
        case WM_PRINTCLIENT:
            fillGround(reinterpret_cast<HDC>(wParam));
            return TRUE;
        case WM_DESTROY:
            toolTips_.close();
            break;
        case WM_SIZE:
        case kArrange:
            arrange();
            return 0;
        case kGiveFocusBack:
            if (attached_) platform_.giveFocusBack();
            return 0;
        case kChanged:
            tellChange();
            return 0;
        case kFocusLeft:
            leaveAsPosted(reinterpret_cast<HWND>(wParam));
            return 0;
        case kFocus:
            focusAsPosted(reinterpret_cast<HWND>(wParam));
            return 0;
        case WM_TIMER:
            timerFired(wParam);
            return 0;
        case WM_SETFOCUS:
            restoreFocus();
            return 0;
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED:
        case WM_SETTINGCHANGE:
            systemChanged();
            return 0;
        default:
            break;
    }
    if (const auto result = fromChild(message, wParam, lParam)) return *result;
    return defaultAnswer(message, wParam, lParam);
}

}  // namespace dravik::win32
