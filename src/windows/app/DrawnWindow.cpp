#include "windows/app/DrawnWindow.h"

#include <algorithm>
#include <cmath>

#include "windows/win32/DrawnAnswer.h"
#include "windows/win32/Module.h"
#include "windows/win32/Peer.h"

namespace dravik::app {

DrawnWindow::~DrawnWindow() {
    const HWND own = window();
    if (!own) return;
    DrawnWindow::windowGoes();
    giveBack();
    DestroyWindow(own);
}

void DrawnWindow::windowGoes() {
    RemovePropW(window(), mark_.c_str());
}

void DrawnWindow::create(const wchar_t* className, const std::string& name, HWND parent, DWORD style,
                         DWORD extendedStyle) {
    HWND made = nullptr;
    {
        const win32::Styles styles;
        made = CreateWindowExW(extendedStyle, drawnClass(className), L"", style, 0, 0, 0, 0, parent, nullptr,
                               win32::moduleInstance(), nullptr);
    }
    if (!made) throw Failure(RuntimeError::OutOfMemory, "no window can be made");
    mark_ = win32::nameMark(name);
    SetPropW(made, mark_.c_str(), made);
    takeOver(made);
}

void DrawnWindow::setBounds(const RECT& bounds) {
    if (window())
        SetWindowPos(window(), nullptr, bounds.left, bounds.top, std::max(win32::widthOf(bounds), 0),
                     std::max(win32::heightOf(bounds), 0), SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

RECT DrawnWindow::client() const {
    RECT rect{};
    GetClientRect(window(), &rect);
    return rect;
}

void DrawnWindow::paintFocus(HDC dc, const RECT& area) const {
    if (GetFocus() == window()) win32::frame(dc, area, look().system(COLOR_HIGHLIGHT), look().px(1));
}

LRESULT DrawnWindow::answer(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_GETOBJECT && static_cast<LONG>(lParam) == OBJID_CLIENT)
        if (win32::AccessibleContent* content = accessible())
            return win32::accessibleAnswer(window(), *content, alive_, wParam);
    const auto drawn = win32::drawnAnswer(
        window(), message, wParam, [this](HDC dc, const RECT& client, const RECT&) { paint(dc, client); });
    return drawn ? *drawn : defaultAnswer(message, wParam, lParam);
}

RECT rectOf(const trainer::ViewBox& box) {
    const auto whole = [](double value) { return std::lround(value); };
    return {whole(box.left), whole(box.top), whole(box.right()), whole(box.bottom())};
}

}  // namespace dravik::app
