// What a program draws in place of the system: Windows has no documented dark colours for its own controls.
// Without a skin all of it is the system's, as in a host.
#pragma once

#include <optional>

#include "ui/Widget.h"

namespace dravik::win32 {

class Look;

class Skin {
  public:
    // In place of GetSysColor().
    virtual COLORREF color(int system) const = 0;
    // The skin draws the native controls of that kind, from their models and the states of their windows.
    virtual bool paints(const ui::Widget& model) const = 0;
    virtual void paint(HDC dc, const RECT& client, const ui::Widget& model, HWND window,
                       Look& look) const = 0;
    // The items that the menu has now; it is the owner that is asked to draw them.
    virtual void dressMenu(HMENU menu, HWND owner) const = 0;

  protected:
    Skin() = default;
    Skin(const Skin&) = delete;
    Skin& operator=(const Skin&) = delete;
    virtual ~Skin() = default;
};

// The answer to a message that has a control draw itself; nothing for others and other controls.
std::optional<LRESULT> drawnBySkin(const Skin& skin, const ui::Widget& model, HWND window, UINT message,
                                   WPARAM wParam, Look& look);
// After any other message was answered: what the system may have drawn over is drawn again.
void drawAgain(const Skin& skin, const ui::Widget& model, HWND window, UINT message, Look& look);

// The title bar of a window, where Windows has a dark one.
void setDarkTitle(HWND window, bool dark);

}  // namespace dravik::win32
