// What every window drawn by hand answers in the same way: it paints by one function, on the screen through
// memory, or into the context that it is given, and draws itself anew when its size or the focus changes.
#pragma once

#include <optional>

#include "windows/win32/Gdi.h"

namespace dravik::win32 {

// `paint` takes the context, the client area and what of it needs painting. Nothing for other messages.
template <class Paint>
std::optional<LRESULT> drawnAnswer(HWND window, UINT message, WPARAM wParam, Paint&& paint) {
    switch (message) {
        case WM_ERASEBKGND:
            return TRUE;
        case WM_NCPAINT:
            // The system looks for a frame even where there is none.
            if (GetWindowLongPtrW(window, GWL_STYLE) & (WS_BORDER | WS_DLGFRAME | WS_HSCROLL | WS_VSCROLL))
                return std::nullopt;
            return 0;
        case WM_PAINT: {
            const BufferedPaint buffer(window);
            paint(buffer.dc(), buffer.client(), buffer.dirty());
            return 0;
        }
        case WM_PRINTCLIENT: {
            RECT client{};
            GetClientRect(window, &client);
            paint(reinterpret_cast<HDC>(wParam), client, client);
            return 0;
        }
        case WM_SIZE:
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            // Being shown makes a window draw itself anyway.
            if (IsWindowVisible(window)) InvalidateRect(window, nullptr, FALSE);
            return 0;
        default:
            return std::nullopt;
    }
}

}  // namespace dravik::win32
