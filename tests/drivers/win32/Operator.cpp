#include "drivers/win32/Operator.h"

#include <commctrl.h>

#include <chrono>

#include "ui/Form.h"
#include "windows/win32/Peer.h"
#include "windows/win32/WinText.h"

namespace dravik::test {
namespace {

constexpr int kBoxText = 0xFFFF;

// A lambda would not have the calling convention of 32-bit Windows.
BOOL CALLBACK addShown(HWND window, LPARAM windows) {
    if (IsWindowVisible(window)) reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

}  // namespace

void settle() {
    MSG message{};
    for (int i = 0; i < 1000 && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE); ++i) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

bool waitUntil(const std::function<bool()>& condition, int milliseconds) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) return false;
        settle();
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    }
    return true;
}

HeldKeys::HeldKeys(std::initializer_list<int> keys) {
    GetKeyboardState(before_.data());
    std::array<BYTE, 256> held{};
    for (const int key : keys) held[static_cast<std::size_t>(key)] = key == 0 ? 0 : 0x80;
    SetKeyboardState(held.data());
}

HeldKeys::~HeldKeys() {
    SetKeyboardState(before_.data());
}

void pressKey(UINT key, int shift) {
    const HWND focus = GetFocus();
    const bool system = (shift & ui::kAltMask) != 0 || key == VK_F10;
    const LPARAM context = shift & ui::kAltMask ? 1 << 29 : 0;
    {
        const HeldKeys held{shift & ui::kShiftMask ? VK_SHIFT : 0, shift & ui::kCtrlMask ? VK_CONTROL : 0,
                            shift & ui::kAltMask ? VK_MENU : 0, static_cast<int>(key & 0xFF)};
        SendMessageW(focus, system ? WM_SYSKEYDOWN : WM_KEYDOWN, key, 1 | context);
        if (IsWindow(focus) && !system && (key == VK_TAB || key == VK_RETURN || key == VK_ESCAPE))
            SendMessageW(focus, WM_CHAR, key, 1);
    }
    if (IsWindow(focus))
        SendMessageW(focus, system ? WM_SYSKEYUP : WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    settle();
}

void typeText(const std::wstring& text) {
    for (const wchar_t unit : text) SendMessageW(GetFocus(), WM_CHAR, unit, 1);
    settle();
}

void typeOver(HWND edit, const std::wstring& text) {
    SendMessageW(edit, EM_SETSEL, 0, -1);
    if (text.empty()) SendMessageW(edit, WM_CLEAR, 0, 0);
    for (const wchar_t unit : text) SendMessageW(edit, WM_CHAR, unit, 1);
}

void mouse(HWND window, UINT message, int x, int y, WPARAM keys) {
    SendMessageW(window, message, keys, MAKELPARAM(x, y));
}

void click(HWND window, int x, int y) {
    mouse(window, WM_LBUTTONDOWN, x, y, MK_LBUTTON);
    if (IsWindow(window)) mouse(window, WM_LBUTTONUP, x, y);
    settle();
}

void clickMiddle(HWND window, const RECT& place) {
    click(window, (place.left + place.right) / 2, (place.top + place.bottom) / 2);
}

std::vector<HWND> shownWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(GetCurrentThreadId(), addShown, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

std::wstring classOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return name;
}

std::wstring boxText(HWND box) {
    const HWND text = GetDlgItem(box, kBoxText);
    return text ? win32::windowText(text) : std::wstring();
}

std::wstring statusText(HWND bar, int panel) {
    const auto place = static_cast<WPARAM>(panel);
    std::wstring text(LOWORD(SendMessageW(bar, SB_GETTEXTLENGTHW, place, 0)) + 1u, L'\0');
    SendMessageW(bar, SB_GETTEXTW, place, reinterpret_cast<LPARAM>(text.data()));
    text.pop_back();
    return text;
}

std::wstring clipboardContents() {
    if (!OpenClipboard(nullptr)) return L"(the clipboard does not open)";
    std::wstring text;
    if (const HANDLE data = GetClipboardData(CF_UNICODETEXT)) {
        if (const auto* characters = static_cast<const wchar_t*>(GlobalLock(data))) text = characters;
        GlobalUnlock(data);
    }
    CloseClipboard();
    return text;
}

RECT placeOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place;
}

RECT insideOf(HWND window) {
    RECT inside{};
    GetClientRect(window, &inside);
    return inside;
}

std::unique_ptr<win32::Canvas> picture(HWND window) {
    settle();
    const RECT place = placeOf(window);
    auto canvas = std::make_unique<win32::Canvas>(win32::widthOf(place), win32::heightOf(place));
    const HDC dc = GetWindowDC(window);
    BitBlt(canvas->dc(), 0, 0, win32::widthOf(place), win32::heightOf(place), dc, 0, 0, SRCCOPY);
    ReleaseDC(window, dc);
    for (std::uint32_t& pixel : canvas->pixels()) pixel |= 0xFF000000;
    return canvas;
}

COLORREF colorAt(win32::Canvas& canvas, int x, int y) {
    const std::uint32_t pixel = canvas.pixels()[static_cast<std::size_t>(y * canvas.width() + x)];
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
}

int countOf(win32::Canvas& canvas, COLORREF color) {
    int count = 0;
    for (int y = 0; y < canvas.height(); ++y)
        for (int x = 0; x < canvas.width(); ++x) count += colorAt(canvas, x, y) == color;
    return count;
}

}  // namespace dravik::test
