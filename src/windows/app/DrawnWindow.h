// A child window of the program that is drawn and driven by code of its own.
#pragma once

#include <memory>
#include <string>

#include "trainer/window/ViewGeometry.h"
#include "windows/win32/Accessible.h"
#include "windows/win32/AnsweredWindow.h"
#include "windows/win32/Look.h"

namespace dravik::app {

// The look of the program's window, made anew when its display scale or the system's settings change.
struct SharedLook {
    std::unique_ptr<win32::Look> now;
    trainer::Display display() const { return {double(now->dpi()) / win32::kUsualDpi, 1}; }
    win32::Look& operator*() const { return *now; }
    win32::Look* operator->() const { return now.get(); }
};

class DrawnWindow : public win32::AnsweredWindow {
  public:
    ~DrawnWindow() override;

    void setBounds(const RECT& bounds);

  protected:
    explicit DrawnWindow(SharedLook& look) : look_(look) {}
    // The name is that by which sessions and tests find it (see findWindowNamed). Raises Out of memory (7).
    void create(const wchar_t* className, const std::string& name, HWND parent, DWORD style,
                DWORD extendedStyle = 0);

    // The window procedure. The base paints by paint(), also for WM_PRINTCLIENT, and draws anew when the size
    // or the focus changes.
    LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) override;
    virtual void paint(HDC dc, const RECT& client) = 0;
    // What a screen reader is told; null leaves it to the system.
    virtual win32::AccessibleContent* accessible() { return nullptr; }

    win32::Look& look() const { return *look_; }
    const SharedLook& shared() const noexcept { return look_; }
    RECT client() const;
    // Around the window's content while it has the focus.
    void paintFocus(HDC dc, const RECT& client) const;
    void redraw() const { InvalidateRect(window(), nullptr, FALSE); }

  private:
    // The windows of the program live as long as its message loop.
    std::shared_ptr<void> kept() override { return {std::shared_ptr<void>(), this}; }
    void windowGoes() override;

    SharedLook& look_;
    std::wstring mark_;
    const std::shared_ptr<void> alive_ = std::make_shared<bool>(true);
};

// The nearest whole pixels of a place in a window.
RECT rectOf(const trainer::ViewBox& box);

}  // namespace dravik::app
