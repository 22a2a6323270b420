// The window of an active control inside its host: it holds the page of the screen, scrolls when the host
// gives less room than the page needs, and tells when the keyboard focus comes in or goes.
#pragma once

#include <functional>
#include <memory>

#include "windows/win32/FormPage.h"

namespace dravik::control {

class ControlWindow {
  public:
    // `place` in pixels of the parent's client area. Raises Failure 7 when no window can be made.
    ControlWindow(HINSTANCE module, HWND parent, const RECT& place, ui::Form& form,
                  win32::Win32Platform& platform, const win32::Ambient& ambient);
    ControlWindow(const ControlWindow&) = delete;
    ControlWindow& operator=(const ControlWindow&) = delete;
    ~ControlWindow();

    // Null once the host has destroyed it.
    HWND window() const noexcept { return window_; }
    win32::FormPage& page() noexcept { return *page_; }

    // `clip` is the part of the parent that may be drawn on.
    void place(const RECT& place, const RECT& clip);
    void show(bool visible);
    // Gives the focus to the page unless it has it. By Tab, which is `key` or is held down, it comes in at
    // the first or the last control; else it goes back to the one that had it last.
    void takeFocus(const MSG* key);

    std::function<void(bool)> focusChanged;
    // The host destroyed the window.
    std::function<void()> lost;

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wide, LPARAM longer);
    LRESULT answer(UINT message, WPARAM wide, LPARAM longer);
    // Each answers one message.
    void turnWheel(int delta);
    void takeScale();
    void takeSystemColors();
    void print(HDC dc);
    void windowGoes();
    void arrange();
    void scroll(int bar, int request);

    HWND window_ = nullptr;
    std::unique_ptr<win32::FormPage> page_;
};

}  // namespace dravik::control
