#include "windows/win32/Skin.h"

#include <dwmapi.h>

#include "windows/win32/DrawnAnswer.h"
#include "windows/win32/Look.h"
#include "windows/win32/SystemFunction.h"

namespace dravik::win32 {
namespace {

constexpr DWORD kDarkTitle = 20;  // DWMWA_USE_IMMERSIVE_DARK_MODE
constexpr double kEdgeShare = 0.45;

// The sunken edge of a native control.
void drawEdge(HWND window, Look& look) {
    if (!(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_CLIENTEDGE)) return;
    RECT place{};
    GetWindowRect(window, &place);
    OffsetRect(&place, -place.left, -place.top);
    const COLORREF ground = look.color(ui::kWindowColor);
    const HDC dc = GetWindowDC(window);
    frame(dc, place, look.line(ground, kEdgeShare), 1);
    InflateRect(&place, -1, -1);
    frame(dc, place, ground, GetSystemMetrics(SM_CXEDGE) - 1);
    ReleaseDC(window, dc);
}

}  // namespace

std::optional<LRESULT> drawnBySkin(const Skin& skin, const ui::Widget& model, HWND window, UINT message,
                                   WPARAM wParam, Look& look) {
    const bool draws = message == WM_PAINT || message == WM_PRINTCLIENT || message == WM_ERASEBKGND;
    if (!draws || !skin.paints(model)) return std::nullopt;
    return drawnAnswer(window, message, wParam, [&](HDC dc, const RECT& client, const RECT&) {
        skin.paint(dc, client, model, window, look);
    });
}

void drawAgain(const Skin& skin, const ui::Widget& model, HWND window, UINT message, Look& look) {
    switch (message) {
        case WM_NCPAINT:
            drawEdge(window, look);
            break;
        case WM_ENABLE:
        case WM_SETTEXT:
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
        case WM_KEYDOWN:
        case WM_KEYUP:
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_MOUSEMOVE:
        case WM_MOUSELEAVE:
        case WM_CAPTURECHANGED:
        case BM_SETCHECK:
        case BM_SETSTATE:
        case BM_SETSTYLE:
        case CB_SETCURSEL:
        case CB_SHOWDROPDOWN:
            if (skin.paints(model)) InvalidateRect(window, nullptr, FALSE);
            break;
        default:
            break;
    }
}

void setDarkTitle(HWND window, bool dark) {
    static const SystemFunction<decltype(&DwmSetWindowAttribute)> set{L"dwmapi.dll", "DwmSetWindowAttribute"};
    const BOOL wanted = dark;
    set(window, kDarkTitle, &wanted, sizeof wanted);
}

}  // namespace dravik::win32
