
#include "windows/win32/support/Shown.h"

#include "windows/win32/CellBoard.h"
#include "windows/win32/CellPeer.h"

namespace dravik::test {

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

HWND Shown::view(const Widget& widget) const {
    const Peer* peer = platform.peerOf(widget);
    return peer ? peer->window() : nullptr;
}

RECT Shown::place(const Widget& widget) const {
    const int part = partOf(widget);
    return part ? AccessibleWindow(view(widget)).place(part) : placeOf(view(widget));
}

bool Shown::focused(const Widget& widget) const {
    const HWND window = view(widget);
    const int part = partOf(widget);
    return window && GetFocus() == window && (part == 0 || AccessibleWindow(window).focused() == part);
}

int Shown::partOf(const Widget& widget) const {
    const Peer* peer = platform.peerOf(widget);
    const CellBoard* board = peer ? peer->board() : nullptr;
    return board ? board->numberOf(static_cast<const CellPeer&>(*peer)) : 0;
}

void Shown::mouse(const Widget& widget, UINT message, int x, int y, WPARAM keys) const {
    POINT at{place(widget).left + x, place(widget).top + y};
    ScreenToClient(view(widget), &at);
    test::mouse(view(widget), message, at.x, at.y, keys);
}

std::unique_ptr<Canvas> Shown::canvas(const Widget& widget) const {
    const auto whole = test::picture(view(widget));
    const RECT window = placeOf(view(widget));
    const RECT own = place(widget);
    auto part = std::make_unique<Canvas>(widthOf(own), heightOf(own));
    BitBlt(part->dc(), 0, 0, widthOf(own), heightOf(own), whole->dc(), own.left - window.left,
           own.top - window.top, SRCCOPY);
    for (std::uint32_t& pixel : part->pixels()) pixel |= 0xFF000000;
    return part;
}

}  // namespace dravik::test
