#include "windows/win32/support/ShownPage.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "support/Accessible.h"
#include "windows/win32/CellBoard.h"
#include "windows/win32/CellPeer.h"
#include "windows/win32/Module.h"
#include "windows/win32/Peer.h"
#include "windows/win32/WinText.h"

namespace dravik::test {

using namespace app;
using namespace ui;
using namespace win32;

std::wstring accessibleName(HWND window, LONG part) {
    return AccessibleWindow(window).name(part);
}

void pressKey(UINT key, int shift) {
    std::array<BYTE, 256> before{};
    GetKeyboardState(before.data());
    std::array<BYTE, 256> during = before;
    if (shift & kShiftMask) during[VK_SHIFT] = 0x80;
    if (shift & kCtrlMask) during[VK_CONTROL] = 0x80;
    if (shift & kAltMask) during[VK_MENU] = 0x80;
    during[key & 0xFF] = 0x80;
    SetKeyboardState(during.data());
    const HWND focus = GetFocus();
    const bool system = (shift & kAltMask) != 0 || key == VK_F10;
    const LPARAM context = shift & kAltMask ? 1 << 29 : 0;
    SendMessageW(focus, system ? WM_SYSKEYDOWN : WM_KEYDOWN, key, 1 | context);
    if (IsWindow(focus) && !system && (key == VK_TAB || key == VK_RETURN || key == VK_ESCAPE))
        SendMessageW(focus, WM_CHAR, key, 1);
    SetKeyboardState(before.data());
    if (IsWindow(focus))
        SendMessageW(focus, system ? WM_SYSKEYUP : WM_KEYUP, key, static_cast<LPARAM>(0xC0000001));
    settle();
}

void typeText(const std::wstring& text) {
    for (const wchar_t unit : text) SendMessageW(GetFocus(), WM_CHAR, unit, 1);
    settle();
}

void mouse(HWND window, UINT message, int x, int y, WPARAM keys) {
    SendMessageW(window, message, keys, MAKELPARAM(x, y));
}

void click(HWND window, int x, int y) {
    mouse(window, WM_LBUTTONDOWN, x, y, MK_LBUTTON);
    if (IsWindow(window)) mouse(window, WM_LBUTTONUP, x, y);
    settle();
}

std::unique_ptr<Canvas> picture(HWND window) {
    settle();
    RECT rect{};
    GetWindowRect(window, &rect);
    auto canvas = std::make_unique<Canvas>(widthOf(rect), heightOf(rect));
    const HDC dc = GetWindowDC(window);
    BitBlt(canvas->dc(), 0, 0, widthOf(rect), heightOf(rect), dc, 0, 0, SRCCOPY);
    ReleaseDC(window, dc);
    for (std::uint32_t& pixel : canvas->pixels()) pixel |= 0xFF000000;
    return canvas;
}

void keepPicture(HWND window, const std::string& name) {
    keepPicture(*picture(window), name);
}

void keepPicture(Canvas& shown, const std::string& name) {
    const char* folder = std::getenv("DRAVIK_PICTURES");
    if (!folder) return;
    for (std::uint32_t& pixel : shown.pixels()) pixel |= 0xFF000000;
    const auto bytes = static_cast<DWORD>(shown.pixels().size_bytes());
    BITMAPFILEHEADER header{};
    header.bfType = 0x4D42;
    header.bfOffBits = sizeof header + sizeof(BITMAPINFOHEADER);
    header.bfSize = header.bfOffBits + bytes;
    std::ofstream file(std::filesystem::path(folder) / (name + ".bmp"), std::ios::binary);
    file.write(reinterpret_cast<const char*>(&header), sizeof header);
    file.write(reinterpret_cast<const char*>(&shown.info().bmiHeader), sizeof(BITMAPINFOHEADER));
    file.write(static_cast<const char*>(shown.bits()), bytes);
    EXPECT_TRUE(file.good()) << name;
}

COLORREF colorAt(Canvas& canvas, int x, int y) {
    const std::uint32_t pixel = canvas.pixels()[static_cast<std::size_t>(y * canvas.width() + x)];
    return RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
}

int countOf(Canvas& canvas, COLORREF color) {
    int count = 0;
    for (const std::uint32_t pixel : canvas.pixels())
        count += RGB(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF) == color;
    return count;
}

HostWindow::HostWindow(int width, int height) {
    const wchar_t* name = Peer::drawnClass(L"DravikTestHost");
    window_ = CreateWindowExW(WS_EX_CONTROLPARENT, name, L"host", WS_POPUP | WS_CLIPCHILDREN, 20, 20, width,
                              height, nullptr, nullptr, moduleInstance(), nullptr);
    ShowWindow(window_, SW_SHOW);
    SetActiveWindow(window_);
    settle();
}

HostWindow::~HostWindow() {
    if (IsWindow(window_)) DestroyWindow(window_);
}

HWND ShownPage::view(const Widget& widget) const {
    const Peer* peer = platform.peerOf(widget);
    return peer ? peer->window() : nullptr;
}

RECT ShownPage::place(const Widget& widget) const {
    RECT rect{};
    if (const HWND window = view(widget)) GetWindowRect(window, &rect);
    if (const int part = partOf(widget)) return AccessibleWindow(view(widget)).place(part);
    return rect;
}

bool ShownPage::focused(const Widget& widget) const {
    const HWND window = view(widget);
    const int part = partOf(widget);
    return window && GetFocus() == window && (part == 0 || AccessibleWindow(window).focused() == part);
}

int ShownPage::partOf(const Widget& widget) const {
    const Peer* peer = platform.peerOf(widget);
    const CellBoard* board = peer ? peer->board() : nullptr;
    return board ? board->numberOf(static_cast<const CellPeer&>(*peer)) : 0;
}

void ShownPage::mouse(const Widget& widget, UINT message, int x, int y, WPARAM keys) const {
    POINT at{place(widget).left + x, place(widget).top + y};
    ScreenToClient(view(widget), &at);
    test::mouse(view(widget), message, at.x, at.y, keys);
}

std::unique_ptr<Canvas> ShownPage::picture(const Widget& widget) const {
    const auto whole = test::picture(view(widget));
    RECT window{};
    GetWindowRect(view(widget), &window);
    const RECT own = place(widget);
    auto part = std::make_unique<Canvas>(widthOf(own), heightOf(own));
    BitBlt(part->dc(), 0, 0, widthOf(own), heightOf(own), whole->dc(), own.left - window.left,
           own.top - window.top, SRCCOPY);
    for (std::uint32_t& pixel : part->pixels()) pixel |= 0xFF000000;
    return part;
}

}  // namespace dravik::test
