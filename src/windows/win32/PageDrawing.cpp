// A page drawn into a context that is not its window's: memory, metafile, printer.

#include <uxtheme.h>

#include <algorithm>

#include "windows/win32/Gdi.h"
#include "windows/win32/Page.h"

namespace dravik::win32 {
namespace {

// The border that the system draws around a window's client area, and what lies between the two.
void drawBorder(HDC dc, HWND window, RECT place) {
    const auto extended = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE));
    if (!(extended & WS_EX_CLIENTEDGE)) {
        if (GetWindowLongPtrW(window, GWL_STYLE) & WS_BORDER)
            frame(dc, place, GetSysColor(COLOR_WINDOWFRAME), 1);
        return;
    }
    const HBRUSH ground = reinterpret_cast<HBRUSH>(
        SendMessageW(GetParent(window), IsWindowEnabled(window) ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC,
                     reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(window)));
    FillRect(dc, &place, ground ? ground : GetSysColorBrush(COLOR_WINDOW));
    if (IsAppThemed())
        frame(dc, place, blend(GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOWTEXT), 0.35), 1);
    else
        DrawEdge(dc, &place, EDGE_SUNKEN, BF_RECT);
}

void drawWindow(HDC dc, HWND window, POINT origin) {
    RECT place{};
    GetWindowRect(window, &place);
    OffsetRect(&place, -origin.x, -origin.y);
    drawBorder(dc, window, place);

    POINT client{0, 0};
    ClientToScreen(window, &client);
    RECT inside{};
    GetClientRect(window, &inside);
    if (!IsRectEmpty(&inside)) {
        // On a canvas of its own: some controls set clipping regions without regard to where the context's
        // origin is.
        Canvas own(inside.right, inside.bottom);
        SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(own.dc()), 0);
        SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(own.dc()), PRF_CLIENT);
        BitBlt(dc, client.x - origin.x, client.y - origin.y, inside.right, inside.bottom, own.dc(), 0, 0,
               SRCCOPY);
    }

    // From the bottom of the stack to its top.
    for (HWND child = GetWindow(GetWindow(window, GW_CHILD), GW_HWNDLAST); child;
         child = GetWindow(child, GW_HWNDPREV))
        if (GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) drawWindow(dc, child, origin);
}

}  // namespace

void Page::draw(HDC dc, const RECT& place) {
    if (!window() || IsRectEmpty(&place)) return;
    arrangeFirst();
    RECT bounds{};
    GetWindowRect(window(), &bounds);
    Canvas canvas(widthOf(bounds), heightOf(bounds));
    drawWindow(canvas.dc(), window(), {bounds.left, bounds.top});
    GdiFlush();
    const int saved = SaveDC(dc);
    SetStretchBltMode(dc, HALFTONE);
    SetBrushOrgEx(dc, 0, 0, nullptr);
    StretchDIBits(dc, place.left, place.top, widthOf(place), heightOf(place), 0, 0, canvas.width(),
                  canvas.height(), canvas.bits(), &canvas.info(), DIB_RGB_COLORS, SRCCOPY);
    RestoreDC(dc, saved);
}

}  // namespace dravik::win32
