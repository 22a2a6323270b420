// A child window of the program that is drawn and driven by code of its own.
#pragma once

#include "activex/win32/Windows.h"
// Behind the Windows headers
#include <memory>
#include <string>

#include "activex/win32/Look.h"

namespace dravik {

// The look of the program's window, made anew when its display scale or the system's settings change.
struct SharedLook {
    std::unique_ptr<Look> now;
    Look& operator*() const { return *now; }
    Look* operator->() const { return now.get(); }
};

class DrawnWindow {
  public:
    DrawnWindow(const DrawnWindow&) = delete;
    DrawnWindow& operator=(const DrawnWindow&) = delete;
    virtual ~DrawnWindow();

    HWND window() const noexcept { return window_; }
    void setBounds(const RECT& bounds);

  protected:
    explicit DrawnWindow(SharedLook& look) : look_(look) {}
    // The name is that by which sessions and tests find it (see findWindowNamed). Raises Out of memory (7).
    void create(const wchar_t* className, const std::string& name, HWND parent, DWORD style,
                DWORD extendedStyle = 0);

    // The window procedure. The base paints by paint(), also for WM_PRINTCLIENT, and draws anew when the size
    // or the focus changes.
    virtual LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam);
    virtual void paint(HDC dc, const RECT& client) = 0;
    LRESULT defaultAnswer(UINT message, WPARAM wParam, LPARAM lParam);

    Look& look() const { return *look_; }
    RECT client() const;
    void redraw() const { InvalidateRect(window_, nullptr, FALSE); }
    // Sets a scroll bar; returns its position, cut to the new range.
    int setScrollBar(int bar, int content, int page, int position) const;
    // Where WM_HSCROLL or WM_VSCROLL asks to go.
    int scrolledTo(int bar, int code, int step) const;

  private:
    static LRESULT CALLBACK subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                     DWORD_PTR self);

    SharedLook& look_;
    std::wstring mark_;
    HWND window_ = nullptr;
};

}  // namespace dravik
