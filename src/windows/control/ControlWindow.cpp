#include "windows/control/ControlWindow.h"

#include <algorithm>

#include "base/Failure.h"
#include "windows/win32/Dpi.h"
#include "windows/win32/Entry.h"
#include "windows/win32/ScrollBar.h"

namespace dravik::control {
namespace {

constexpr wchar_t kClassName[] = L"DravikDlgControl";
constexpr UINT kDpiChangedAfterParent = 0x02E3;
constexpr int kScrollStep = 24;  // pixels at 96 dpi

// The class goes with the module: a module that is loaded again must not find windows of the one before.
class WindowClass {
  public:
    WindowClass(HINSTANCE module, WNDPROC procedure) : module_(module) {
        WNDCLASSEXW description{};
        description.cbSize = sizeof description;
        description.style = CS_DBLCLKS;
        description.lpfnWndProc = procedure;
        description.cbWndExtra = sizeof(void*);
        description.hInstance = module;
        description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        description.lpszClassName = kClassName;
        RegisterClassExW(&description);
    }
    WindowClass(const WindowClass&) = delete;
    WindowClass& operator=(const WindowClass&) = delete;
    ~WindowClass() { UnregisterClassW(kClassName, module_); }

  private:
    HINSTANCE module_;
};

}  // namespace

ControlWindow::ControlWindow(HINSTANCE module, HWND parent, const RECT& place, ui::Form& form,
                             win32::Win32Platform& platform, const win32::Ambient& ambient) {
    static const WindowClass registered(module, &ControlWindow::procedure);
    window_ = CreateWindowExW(
        WS_EX_CONTROLPARENT, kClassName, L"", WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, place.left,
        place.top, place.right - place.left, place.bottom - place.top, parent, nullptr, module, this);
    if (!window_) throw Failure(RuntimeError::OutOfMemory);
    page_ = std::make_unique<win32::FormPage>(form, window_, platform, ambient);
    page_->focusEntered = [this] {
        if (focusChanged) focusChanged(true);
    };
    page_->focusLeft = [this] {
        if (focusChanged) focusChanged(false);
    };
    page_->sizeChanged = [this] { arrange(); };
    arrange();
    page_->setVisible(true);
}

ControlWindow::~ControlWindow() {
    focusChanged = nullptr;
    lost = nullptr;
    page_->detach();
    page_.reset();
    if (!window_) return;
    SetWindowLongPtrW(window_, 0, 0);
    DestroyWindow(window_);
}

void ControlWindow::place(const RECT& place, const RECT& clip) {
    if (!window_) return;
    RECT seen{};
    IntersectRect(&seen, &place, &clip);
    HRGN region = nullptr;
    if (!EqualRect(&seen, &place)) {
        OffsetRect(&seen, -place.left, -place.top);
        region = CreateRectRgnIndirect(&seen);
    }
    SetWindowRgn(window_, region, TRUE);
    SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlWindow::show(bool visible) {
    if (!window_) return;
    // What is seen erases itself when it paints, not once before that.
    SetWindowPos(window_, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE |
                     (visible ? SWP_SHOWWINDOW | SWP_DEFERERASE : SWP_HIDEWINDOW));
}

void ControlWindow::takeFocus(const MSG* key) {
    if (!page_ || page_->hasFocusInside()) return;
    const auto held = [](int virtualKey) { return GetKeyState(virtualKey) < 0; };
    const bool tab = key && key->message == WM_KEYDOWN ? key->wParam == VK_TAB : held(VK_TAB);
    if (!tab || held(VK_CONTROL) || held(VK_MENU))
        page_->restoreFocus();
    else if (held(VK_SHIFT))
        page_->focusLast();
    else
        page_->focusFirst();
}

// The page gets the whole client area, or as much as it needs where the client area is a part of it that is
// scrolled.
void ControlWindow::arrange() {
    if (!window_ || !page_) return;
    const SIZE least = page_->minimumSize();
    // Showing one bar takes room from the other direction.
    for (const auto& [bar, need] : {std::pair{SB_VERT, least.cy}, {SB_HORZ, least.cx}, {SB_VERT, least.cy}}) {
        RECT client{};
        GetClientRect(window_, &client);
        const LONG room = bar == SB_VERT ? client.bottom : client.right;
        win32::setScrollBar(window_, bar, static_cast<int>(need), static_cast<int>(room),
                            GetScrollPos(window_, bar));
    }
    RECT client{};
    GetClientRect(window_, &client);
    const int left = -GetScrollPos(window_, SB_HORZ);
    const int top = -GetScrollPos(window_, SB_VERT);
    page_->setBounds(
        {left, top, left + std::max(client.right, least.cx), top + std::max(client.bottom, least.cy)});
}

void ControlWindow::scroll(int bar, int request) {
    const int step = MulDiv(kScrollStep, page_->dpi(), USER_DEFAULT_SCREEN_DPI);
    SetScrollPos(window_, bar, win32::scrolledTo(window_, bar, request, step), TRUE);
    arrange();
}

LRESULT CALLBACK ControlWindow::procedure(HWND window, UINT message, WPARAM wide, LPARAM longer) {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<ControlWindow*>(reinterpret_cast<CREATESTRUCTW*>(longer)->lpCreateParams);
        self->window_ = window;
        SetWindowLongPtrW(window, 0, reinterpret_cast<LONG_PTR>(self));
    }
    auto* self = reinterpret_cast<ControlWindow*>(GetWindowLongPtrW(window, 0));
    if (!self) return DefWindowProcW(window, message, wide, longer);
    const win32::Entry entry;
    try {
        return self->answer(message, wide, longer);
    } catch (...) {
        return 0;
    }
}

void ControlWindow::turnWheel(int delta) {
    const int lines = delta * 3 / WHEEL_DELTA;
    for (int i = 0; i < std::abs(lines); ++i) scroll(SB_VERT, lines > 0 ? SB_LINEUP : SB_LINEDOWN);
}

void ControlWindow::takeScale() {
    page_->setDpi(win32::dpiOf(window_));
    arrange();
}

void ControlWindow::takeSystemColors() {
    page_->systemChanged();
    arrange();
}

void ControlWindow::print(HDC dc) {
    RECT client{};
    GetClientRect(window_, &client);
    page_->draw(dc, client);
}

void ControlWindow::windowGoes() {
    SetWindowLongPtrW(window_, 0, 0);
    window_ = nullptr;
    page_->detach();
    if (const auto tell = lost) tell();
}

LRESULT ControlWindow::answer(UINT message, WPARAM wide, LPARAM longer) {
    switch (message) {
        case WM_SIZE:
            arrange();
            return 0;
        case WM_ERASEBKGND:
            return 1;  // the page covers it
        case WM_VSCROLL:
            scroll(SB_VERT, LOWORD(wide));
            return 0;
        case WM_HSCROLL:
            scroll(SB_HORZ, LOWORD(wide));
            return 0;
        case WM_MOUSEWHEEL:
            if ((GetWindowLongW(window_, GWL_STYLE) & WS_VSCROLL) == 0) break;
            turnWheel(GET_WHEEL_DELTA_WPARAM(wide));
            return 0;
        case WM_SETFOCUS:
            takeFocus(nullptr);
            return 0;
        case kDpiChangedAfterParent:
            takeScale();
            return 0;
        // From hosts that pass on what top-level windows are told.
        case WM_SYSCOLORCHANGE:
        case WM_THEMECHANGED:
        case WM_SETTINGCHANGE:
            takeSystemColors();
            return 0;
        // What a dialog would answer, for hosts that take any parent of controls for one.
        case WM_NEXTDLGCTL:
            if (LOWORD(longer)) SetFocus(reinterpret_cast<HWND>(wide));
            return 0;
        case DM_GETDEFID:
            return 0;
        case WM_PRINTCLIENT:
            print(reinterpret_cast<HDC>(wide));
            return 0;
        case WM_NCDESTROY: {
            const LRESULT result = DefWindowProcW(window_, message, wide, longer);
            windowGoes();
            return result;
        }
        default:
            break;
    }
    return DefWindowProcW(window_, message, wide, longer);
}

}  // namespace dravik::control
