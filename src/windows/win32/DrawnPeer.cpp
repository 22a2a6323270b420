#include "windows/win32/DrawnPeer.h"

#include "windows/win32/Module.h"

namespace dravik::win32 {

HWND DrawnPeer::makeDrawn(const wchar_t* className, HWND parent, DWORD style, const std::wstring& text,
                          DWORD extendedStyle) {
    return CreateWindowExW(extendedStyle, drawnClass(className), text.c_str(),
                           style | WS_CHILD | WS_CLIPSIBLINGS, 0, 0, 0, 0, parent, nullptr, moduleInstance(),
                           nullptr);
}

void DrawnPeer::show(ui::Change change) {
    Peer::show(change);
    if (change == ui::Change::Enabled) redraw();
}

LRESULT DrawnPeer::message(UINT message, WPARAM wParam, LPARAM lParam) {
    if (const auto result =
            drawnAnswer(window(), message, wParam,
                        [this](HDC dc, const RECT& client, const RECT& dirty) { paint(dc, client, dirty); }))
        return *result;
    if (!takesFocus()) return Peer::message(message, wParam, lParam);
    const bool menuKey = wParam == VK_APPS || (wParam == VK_F10 && shiftState() == ui::kShiftMask);
    switch (message) {
        case WM_GETDLGCODE:
            return DLGC_WANTARROWS;
        case WM_CONTEXTMENU:
            return 0;  // answered when the button or the key was pressed
        case WM_SYSKEYDOWN:
            if (!menuKey) break;
            menuKeyPressed();
            return 0;
        case WM_KEYDOWN:
            if (menuKey)
                menuKeyPressed();
            else
                keyPressed(static_cast<UINT>(wParam));
            return 0;
        default:
            break;
    }
    return Peer::message(message, wParam, lParam);
}

POINT DrawnPeer::centre() const {
    RECT client{};
    GetClientRect(window(), &client);
    return {client.right / 2, client.bottom / 2};
}

}  // namespace dravik::win32
