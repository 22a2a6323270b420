#include "activex/host/DrawnWindow.h"

#include <commctrl.h>

#include <algorithm>

#include "activex/win32/Guard.h"
#include "activex/win32/Module.h"
#include "activex/win32/Peer.h"

namespace dravik {
namespace {

constexpr UINT_PTR kSubclass = 2;

}  // namespace

DrawnWindow::~DrawnWindow() {
    if (!window_) return;
    RemovePropW(window_, mark_.c_str());
    RemoveWindowSubclass(window_, subclass, kSubclass);
    DestroyWindow(window_);
}

void DrawnWindow::create(const wchar_t* className, const std::string& name, HWND parent, DWORD style,
                         DWORD extendedStyle) {
    {
        const Styles styles;
        window_ = CreateWindowExW(extendedStyle, Peer::drawnClass(className), L"", style, 0, 0, 0, 0, parent,
                                  nullptr, moduleInstance(), nullptr);
    }
    if (!window_) throw Failure(RuntimeError::OutOfMemory, "no window can be made");
    mark_ = nameMark(name);
    SetPropW(window_, mark_.c_str(), window_);
    SetWindowSubclass(window_, subclass, kSubclass, reinterpret_cast<DWORD_PTR>(this));
}

void DrawnWindow::setBounds(const RECT& bounds) {
    if (window_)
        SetWindowPos(window_, nullptr, bounds.left, bounds.top, std::max(widthOf(bounds), 0),
                     std::max(heightOf(bounds), 0), SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

RECT DrawnWindow::client() const {
    RECT rect{};
    GetClientRect(window_, &rect);
    return rect;
}

LRESULT DrawnWindow::defaultAnswer(UINT message, WPARAM wParam, LPARAM lParam) {
    return window_ ? DefSubclassProc(window_, message, wParam, lParam) : 0;
}

LRESULT CALLBACK DrawnWindow::subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                       DWORD_PTR self) {
    auto& drawn = *reinterpret_cast<DrawnWindow*>(self);
    if (message == WM_NCDESTROY) {
        RemovePropW(window, drawn.mark_.c_str());
        RemoveWindowSubclass(window, subclass, kSubclass);
        drawn.window_ = nullptr;
        return DefSubclassProc(window, message, wParam, lParam);
    }
    LRESULT result = 0;
    guarded([&] { result = drawn.answer(message, wParam, lParam); });
    return result;
}

LRESULT DrawnWindow::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_ERASEBKGND:
            return TRUE;
        case WM_PAINT: {
            const BufferedPaint buffer(window_);
            paint(buffer.dc(), buffer.client());
            return 0;
        }
        case WM_PRINTCLIENT:
            paint(reinterpret_cast<HDC>(wParam), client());
            return 0;
        case WM_SIZE:
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            redraw();
            return 0;
        default:
            return defaultAnswer(message, wParam, lParam);
    }
}

int DrawnWindow::setScrollBar(int bar, int content, int page, int position) const {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = std::max(content - 1, 0);
    info.nPage = static_cast<UINT>(std::max(page, 1));
    info.nPos = std::clamp(position, 0, std::max(content - page, 0));
    SetScrollInfo(window_, bar, &info, TRUE);
    return info.nPos;
}

int DrawnWindow::scrolledTo(int bar, int code, int step) const {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(window_, bar, &info);
    const int page = std::max(static_cast<int>(info.nPage), 1);
    int to = info.nPos;
    switch (code) {
        case SB_LINEUP:
            to -= step;
            break;
        case SB_LINEDOWN:
            to += step;
            break;
        case SB_PAGEUP:
            to -= page;
            break;
        case SB_PAGEDOWN:
            to += page;
            break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            to = info.nTrackPos;
            break;
        case SB_TOP:
            to = 0;
            break;
        case SB_BOTTOM:
            to = info.nMax;
            break;
        default:
            break;
    }
    return std::clamp(to, 0, std::max(info.nMax - page + 1, 0));
}

}  // namespace dravik
