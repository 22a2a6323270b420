#include "windows/win32/FormWindow.h"

#include <algorithm>
#include <map>
#include <mutex>

#include "windows/win32/Gdi.h"
#include "windows/win32/Guard.h"
#include "windows/win32/Module.h"
#include "windows/win32/Peer.h"
#include "windows/win32/Skin.h"
#include "windows/win32/Win32Platform.h"
#include "windows/win32/WinText.h"

namespace dravik::win32 {
namespace {

constexpr wchar_t kClassName[] = L"DravikFormWindow";

// Where forms of a name stood last, for the whole process, in which several screens may have threads of their
// own.
struct Places {
    std::mutex mutex;
    std::map<std::string, RECT> rects;
};

Places& places() {
    static Places known;
    return known;
}

RECT workArea(const RECT& place) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoW(MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &info);
    return info.rcWork;
}

RECT movedInto(RECT rect, const RECT& area) {
    const int width = std::min(widthOf(rect), widthOf(area));
    const int height = std::min(heightOf(rect), heightOf(area));
    rect.left = std::clamp<LONG>(rect.left, area.left, area.right - width);
    rect.top = std::clamp<LONG>(rect.top, area.top, area.bottom - height);
    return {rect.left, rect.top, rect.left + width, rect.top + height};
}

}  // namespace

FormWindow::FormWindow(ui::Form& form, Win32Platform& platform)
    : form_(&form), name_(form.name()), resizable_(form.resizable), platform_(platform) {}

std::shared_ptr<FormWindow> FormWindow::make(ui::Form& form, HWND owner, Win32Platform& platform) {
    std::shared_ptr<FormWindow> result(new FormWindow(form, platform));
    result->create(owner);
    return result;
}

FormWindow::~FormWindow() {
    letGo();
    page_.reset();
    if (const HWND own = window()) {
        FormWindow::windowGoes();
        giveBack();
        DestroyWindow(own);
    }
}

void FormWindow::create(HWND owner) {
    const DWORD sizing = resizable_ ? WS_THICKFRAME | WS_MAXIMIZEBOX : 0u;
    HWND made = nullptr;
    {
        const Styles styles;
        made = CreateWindowExW(WS_EX_CONTROLPARENT | (resizable_ ? 0u : WS_EX_DLGMODALFRAME),
                               drawnClass(kClassName), wide(form_->caption()).c_str(),
                               WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN | sizing, 0, 0, 0, 0,
                               owner, nullptr, moduleInstance(), nullptr);
    }
    if (!made) throw Failure(RuntimeError::OutOfMemory, "no window: " + lastErrorText(GetLastError()));
    takeOver(made);
    SetPropW(window(), nameMark(name_).c_str(), window());
    if (owner)
        for (const WPARAM size : {ICON_SMALL, ICON_BIG})
            if (const LRESULT icon = SendMessageW(owner, WM_GETICON, size, 0))
                SendMessageW(window(), WM_SETICON, size, icon);
    page_ = std::make_unique<FormPage>(*form_, window(), platform_, platform_.ambient());
    takeAmbient();
    page_->setVisible(true);
    page_->escaped = [this] { close(); };
    page_->sizeChanged = [this] { fit(); };
    changed_ = form_->changed.connect([this](ui::Change change) {
        if (change == ui::Change::Caption && form_ && window())
            SetWindowTextW(window(), wide(form_->caption()).c_str());
    });
    const auto goes = [this] {
        const auto self = shared_from_this();
        letGo();
    };
    unloaded_ = form_->unloaded.connect(goes);
    destroyed_ = form_->destroyed.connect(goes);
    putInPlace(owner);
}

void FormWindow::takeAmbient() {
    const Ambient& ambient = platform_.ambient();
    page_->setAmbient(ambient);
    setDarkTitle(window(), ambient.skin != nullptr);
}

SIZE FormWindow::frameSize(SIZE inside) const {
    RECT outer{0, 0, inside.cx, inside.cy};
    AdjustWindowRectEx(&outer, static_cast<DWORD>(GetWindowLongPtrW(window(), GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongPtrW(window(), GWL_EXSTYLE)));
    return {widthOf(outer), heightOf(outer)};
}

// Over the middle of its owner, or where the form stood before; always on a screen.
void FormWindow::putInPlace(HWND owner) {
    const SIZE size = frameSize(page_->preferredSize());
    RECT rect{0, 0, size.cx, size.cy};
    RECT around{};
    if (!owner || !GetWindowRect(owner, &around)) around = workArea(rect);
    OffsetRect(&rect, (around.left + around.right - size.cx) / 2, (around.top + around.bottom - size.cy) / 2);
    {
        Places& known = places();
        const std::lock_guard lock(known.mutex);
        if (const auto found = known.rects.find(name_);
            found != known.rects.end() && MonitorFromRect(&found->second, MONITOR_DEFAULTTONULL)) {
            rect = found->second;
            if (!resizable_) {
                rect.right = rect.left + size.cx;
                rect.bottom = rect.top + size.cy;
            }
        }
    }
    rect = movedInto(rect, workArea(rect));
    SetWindowPos(window(), nullptr, rect.left, rect.top, widthOf(rect), heightOf(rect),
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::rememberPlace() const {
    if (!window() || IsIconic(window()) || IsZoomed(window())) return;
    RECT rect{};
    GetWindowRect(window(), &rect);
    Places& known = places();
    const std::lock_guard lock(known.mutex);
    known.rects[name_] = rect;
}

// A window that the operator cannot size follows its contents; one that he can grows when they no longer fit.
void FormWindow::fit() {
    if (!window() || !page_ || !form_) return;
    RECT now{};
    GetWindowRect(window(), &now);
    SIZE wanted = frameSize(resizable_ ? page_->minimumSize() : page_->preferredSize());
    if (resizable_)
        wanted = {std::max<LONG>(wanted.cx, widthOf(now)), std::max<LONG>(wanted.cy, heightOf(now))};
    if (wanted.cx != widthOf(now) || wanted.cy != heightOf(now))
        SetWindowPos(window(), nullptr, 0, 0, wanted.cx, wanted.cy,
                     SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOMOVE);
}

void FormWindow::bringUp() {
    if (!window()) return;
    const bool first = !IsWindowVisible(window());
    if (IsIconic(window())) ShowWindow(window(), SW_RESTORE);
    ShowWindow(window(), SW_SHOW);
    SetWindowPos(window(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    SetActiveWindow(window());
    SetForegroundWindow(window());
    if (page_ && !page_->hasFocusInside()) {
        if (first)
            page_->focusFirst();
        else
            page_->restoreFocus();
    }
}

void FormWindow::close() {
    const auto self = shared_from_this();
    if (form_) guarded([this] { form_->unload(); });
}

void FormWindow::letGo() {
    if (!form_) return;
    form_ = nullptr;
    changed_.disconnect();
    unloaded_.disconnect();
    destroyed_.disconnect();
    if (page_) page_->detach();
    rememberPlace();
    // The platform drops the window, and may be gone itself, where its end is the reason.
    auto tell = std::exchange(finished, nullptr);
    Win32Platform* platform = tell ? &platform_ : nullptr;
    if (tell) tell();
    if (window()) ShowWindow(window(), SW_HIDE);
    if (platform) platform->giveFocusBack();
}

void FormWindow::windowGoes() {
    RemovePropW(window(), nameMark(name_).c_str());
}

void FormWindow::tellLeastSize(MINMAXINFO& sizes) const {
    if (!page_ || !form_) return;
    const SIZE least = frameSize(page_->minimumSize());
    sizes.ptMinTrackSize = {least.cx, least.cy};
}

// The system gives the focus to the window; it belongs to the control that had it.
bool FormWindow::takeActivation(bool active, bool minimized) {
    if (!active || minimized || !page_) return false;
    if (!page_->hasFocusInside()) page_->restoreFocus();
    return true;
}

void FormWindow::takeScale(int dpi, const RECT& wanted) {
    if (page_) page_->setDpi(dpi);
    SetWindowPos(window(), nullptr, wanted.left, wanted.top, widthOf(wanted), heightOf(wanted),
                 SWP_NOZORDER | SWP_NOACTIVATE);
    fit();
}

LRESULT FormWindow::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CLOSE:
            close();
            return 0;
        case WM_DESTROY:  // together with its owner
            close();
            break;
        case WM_SIZE:
            if (page_ && wParam != SIZE_MINIMIZED) page_->setBounds({0, 0, LOWORD(lParam), HIWORD(lParam)});
            return 0;
        case WM_GETMINMAXINFO:
            tellLeastSize(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case WM_SETFOCUS:
            if (page_) page_->restoreFocus();
            return 0;
        case WM_ACTIVATE:
            if (takeActivation(LOWORD(wParam) != WA_INACTIVE, HIWORD(wParam) != 0)) return 0;
            break;
        case WM_ERASEBKGND:
            return TRUE;  // the page covers everything
        case WM_DPICHANGED:
            takeScale(LOWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED:
        case WM_SETTINGCHANGE:
            if (page_) page_->systemChanged();
            break;
        default:
            break;
    }
    return defaultAnswer(message, wParam, lParam);
}

}  // namespace dravik::win32
