#include "activex/win32/AnsweredWindow.h"

#include "activex/win32/Guard.h"
#include "activex/win32/Module.h"

namespace dravik {

const wchar_t* AnsweredWindow::drawnClass(const wchar_t* name) {
    WNDCLASSEXW known{};
    known.cbSize = sizeof known;
    if (GetClassInfoExW(moduleInstance(), name, &known)) return name;
    WNDCLASSEXW wanted{};
    wanted.cbSize = sizeof wanted;
    wanted.style = CS_DBLCLKS;
    wanted.lpfnWndProc = DefWindowProcW;
    wanted.hInstance = moduleInstance();
    wanted.hCursor = LoadCursorW(nullptr, IDC_ARROW);
    wanted.lpszClassName = name;
    RegisterClassExW(&wanted);
    return name;
}

void AnsweredWindow::takeOver(HWND window) {
    window_ = window;
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    before_ = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure)));
}

void AnsweredWindow::giveBack() noexcept {
    if (!window_) return;
    SetWindowLongPtrW(window_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(before_));
    SetWindowLongPtrW(window_, GWLP_USERDATA, 0);
    window_ = nullptr;
}

LRESULT AnsweredWindow::defaultAnswer(UINT message, WPARAM wParam, LPARAM lParam) const {
    return window_ ? CallWindowProcW(before_, window_, message, wParam, lParam) : 0;
}

LRESULT CALLBACK AnsweredWindow::procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<AnsweredWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (!self) return DefWindowProcW(window, message, wParam, lParam);
    const WNDPROC before = self->before_;
    const auto kept = self->kept();
    if (message == WM_NCDESTROY) {
        if (kept) self->windowGoes();
        self->giveBack();
    } else if (kept && self->window_) {
        LRESULT result = 0;
        guarded([&] { result = self->answer(message, wParam, lParam); });
        return result;
    }
    return CallWindowProcW(before, window, message, wParam, lParam);
}

}  // namespace dravik
