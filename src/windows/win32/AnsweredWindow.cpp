#include "windows/win32/AnsweredWindow.h"

#include <map>
#include <mutex>

#include "windows/win32/Guard.h"
#include "windows/win32/Module.h"

namespace dravik::win32 {
namespace {

// They go with the module: the system's procedures may be elsewhere when it is loaded again.
class NativeClasses {
  public:
    NativeClasses() = default;
    NativeClasses(const NativeClasses&) = delete;
    NativeClasses& operator=(const NativeClasses&) = delete;
    ~NativeClasses() {
        for (const auto& [name, own] : known_) UnregisterClassW(own.c_str(), moduleInstance());
    }

    std::wstring classFor(const std::wstring& name) {
        const std::lock_guard lock(mutex_);
        if (const auto found = known_.find(name); found != known_.end()) return found->second;
        const std::wstring own = L"Dravik" + name;
        WNDCLASSEXW description{};
        description.cbSize = sizeof description;
        {
            const Styles styles;
            if (!GetClassInfoExW(nullptr, name.c_str(), &description)) return name;
        }
        description.cbSize = sizeof description;
        description.style &= ~static_cast<UINT>(CS_GLOBALCLASS);
        description.hInstance = moduleInstance();
        description.lpszMenuName = nullptr;
        description.lpszClassName = own.c_str();
        if (!RegisterClassExW(&description)) return name;
        return known_[name] = own;
    }

  private:
    std::mutex mutex_;
    std::map<std::wstring, std::wstring> known_;
};

}  // namespace

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

std::wstring AnsweredWindow::nativeClass(const wchar_t* name) {
    static NativeClasses known;
    return known.classFor(name);
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
    if (!window_) return 0;
    return before_ ? CallWindowProcW(before_, window_, message, wParam, lParam)
                   : DefWindowProcW(window_, message, wParam, lParam);
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

}  // namespace dravik::win32
