// A page drawn into a context that is not its window's: memory, metafile, printer.

#include <uxtheme.h>

#include "base/Handle.h"
#include "windows/win32/DrawnPeer.h"
#include "windows/win32/Gdi.h"
#include "windows/win32/Page.h"
#include "windows/win32/SystemFunction.h"

namespace dravik::win32 {
namespace {

struct Themes {
    static constexpr wchar_t kLibrary[] = L"uxtheme.dll";
    SystemFunction<decltype(&IsAppThemed)> areUsed{kLibrary, "IsAppThemed"};
    SystemFunction<decltype(&OpenThemeData)> open{kLibrary, "OpenThemeData"};
    SystemFunction<decltype(&CloseThemeData)> close{kLibrary, "CloseThemeData"};
    SystemFunction<decltype(&DrawThemeBackground)> drawBackground{kLibrary, "DrawThemeBackground"};
};
const Themes& themes() {
    static const Themes all;
    return all;
}

struct ThemeOfControl {
    using Value = HTHEME;
    static HTHEME none() noexcept { return nullptr; }
    static void close(HTHEME theme) noexcept { themes().close(theme); }
};

constexpr int kEditText = 1;  // parts and states of the theme's edit control
constexpr int kNormal = 1;
constexpr int kDisabled = 4;

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
    const Handle<ThemeOfControl> theme(themes().areUsed() ? themes().open(window, L"Edit") : nullptr);
    const int state = IsWindowEnabled(window) ? kNormal : kDisabled;
    if (!theme || FAILED(themes().drawBackground(theme.get(), dc, kEditText, state, &place, nullptr)))
        DrawEdge(dc, &place, EDGE_SUNKEN, BF_RECT | BF_ADJUST);
    else
        InflateRect(&place, -1, -1);
    FillRect(dc, &place, ground ? ground : GetSysColorBrush(COLOR_WINDOW));
}

// What is drawn into the context goes to this place and nowhere else, until the object ends.
class Part {
  public:
    Part(HDC dc, POINT origin, const RECT& inside) : dc_(dc), saved_(SaveDC(dc)) {
        const XFORM move{1, 0, 0, 1, static_cast<float>(origin.x), static_cast<float>(origin.y)};
        SetGraphicsMode(dc, GM_ADVANCED);
        ModifyWorldTransform(dc, &move, MWT_LEFTMULTIPLY);
        IntersectClipRect(dc, inside.left, inside.top, inside.right, inside.bottom);
    }
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    ~Part() { RestoreDC(dc_, saved_); }

  private:
    HDC dc_;
    int saved_;
};

bool isScreen(HDC dc) {
    const DWORD kind = GetObjectType(dc);
    return (kind == OBJ_DC || kind == OBJ_MEMDC) && GetDeviceCaps(dc, TECHNOLOGY) == DT_RASDISPLAY;
}

}  // namespace

bool Page::isDrawnByHand(HWND window) const {
    if (window == this->window()) return true;
    for (const auto& board : boards_)
        if (board->window() == window) return true;
    const auto found = byWindow_.find(window);
    return found != byWindow_.end() && dynamic_cast<DrawnPeer*>(found->second);
}

void Page::drawWindow(HDC dc, HWND window, POINT origin, bool asPicture) const {
    RECT place{};
    GetWindowRect(window, &place);
    OffsetRect(&place, -origin.x, -origin.y);
    drawBorder(dc, window, place);

    POINT client{0, 0};
    ClientToScreen(window, &client);
    client = {client.x - origin.x, client.y - origin.y};
    RECT inside{};
    GetClientRect(window, &inside);
    const auto print = [window](HDC into) {
        SendMessageW(window, WM_ERASEBKGND, reinterpret_cast<WPARAM>(into), 0);
        SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(into), PRF_CLIENT);
    };
    if (!IsRectEmpty(&inside)) {
        if (!asPicture && isDrawnByHand(window)) {
            const Part part(dc, client, inside);
            print(dc);
        } else {
            // On a canvas of its own: some of the system's controls set clipping regions without regard to
            // where the context's origin is.
            Canvas own(inside.right, inside.bottom);
            print(own.dc());
            GdiFlush();
            StretchDIBits(dc, client.x, client.y, inside.right, inside.bottom, 0, 0, inside.right,
                          inside.bottom, own.bits(), &own.info(), DIB_RGB_COLORS, SRCCOPY);
        }
    }

    // From the bottom of the stack to its top.
    for (HWND child = GetWindow(GetWindow(window, GW_CHILD), GW_HWNDLAST); child;
         child = GetWindow(child, GW_HWNDPREV))
        if (GetWindowLongPtrW(child, GWL_STYLE) & WS_VISIBLE) drawWindow(dc, child, origin, asPicture);
}

// On the screen as one picture; a metafile and a printer get lines and texts, in their own resolution, for
// all but the system's controls.
void Page::draw(HDC dc, const RECT& place) {
    if (!window() || IsRectEmpty(&place)) return;
    arrangeFirst();
    RECT bounds{};
    GetWindowRect(window(), &bounds);
    const POINT origin{bounds.left, bounds.top};
    const int width = widthOf(bounds);
    const int height = heightOf(bounds);
    const int saved = SaveDC(dc);
    SetStretchBltMode(dc, HALFTONE);
    SetBrushOrgEx(dc, 0, 0, nullptr);
    if (isScreen(dc)) {
        Canvas canvas(width, height);
        drawWindow(canvas.dc(), window(), origin, true);
        GdiFlush();
        StretchDIBits(dc, place.left, place.top, widthOf(place), heightOf(place), 0, 0, width, height,
                      canvas.bits(), &canvas.info(), DIB_RGB_COLORS, SRCCOPY);
    } else {
        SetGraphicsMode(dc, GM_ADVANCED);
        const XFORM scale{static_cast<float>(widthOf(place)) / static_cast<float>(width),
                          0,
                          0,
                          static_cast<float>(heightOf(place)) / static_cast<float>(height),
                          static_cast<float>(place.left),
                          static_cast<float>(place.top)};
        ModifyWorldTransform(dc, &scale, MWT_LEFTMULTIPLY);
        drawWindow(dc, window(), origin, false);
    }
    RestoreDC(dc, saved);
}

}  // namespace dravik::win32
