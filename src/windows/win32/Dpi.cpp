#include "windows/win32/Dpi.h"

#include <atomic>

namespace dravik::win32 {
namespace {

std::atomic<int> overridden{0};

}  // namespace

int dpiOf(HWND window) noexcept {
    if (const int dpi = overridden) return dpi;
    using GetDpi = UINT(WINAPI*)(HWND);
    static const auto getDpi = reinterpret_cast<GetDpi>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetDpiForWindow")));
    if (getDpi && window)
        if (const UINT dpi = getDpi(window)) return static_cast<int>(dpi);
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi > 0 ? dpi : kUsualDpi;
}

DpiOverride::DpiOverride(int dpi) noexcept : before_(overridden.exchange(dpi)) {}

DpiOverride::~DpiOverride() {
    overridden = before_;
}

}  // namespace dravik::win32
