// An object that answers the messages of a window made by this code, in place of the window's own procedure.
// The object's address lies in the window itself, so that a message costs no look-up, which is what the
// subclassing of the common controls takes.
#pragma once

#include <memory>
#include <string>

namespace dravik::win32 {

class AnsweredWindow {
  public:
    AnsweredWindow(const AnsweredWindow&) = delete;
    AnsweredWindow& operator=(const AnsweredWindow&) = delete;

    // Null when there is none yet, and when it is gone.
    HWND window() const noexcept { return window_; }

    // A class for windows drawn by hand; made when there is none yet. It holds no code of this module.
    static const wchar_t* drawnClass(const wchar_t* name);
    // A class of this module for the system's control of that name, in the control's own visual styles: the
    // system is asked once for what it is, and not for every window. "Dravik" stands before the name.
    static std::wstring nativeClass(const wchar_t* name);

  protected:
    AnsweredWindow() = default;
    virtual ~AnsweredWindow() = default;

    // From now on messages come to answer(). Once, and before anybody else uses the window's GWLP_USERDATA.
    void takeOver(HWND window);
    // A part of a window that another object answers, which passes on what is for this one; null: no longer.
    void standIn(HWND window) noexcept { window_ = window; }
    // Nothing comes any more; the window is the system's again.
    void giveBack() noexcept;

    // No exception leaves the window procedure; after one the answer is 0.
    virtual LRESULT answer(UINT message, WPARAM wParam, LPARAM lParam) = 0;
    // Keeps the object alive while it answers; null when its end has begun, and answer() is not called.
    virtual std::shared_ptr<void> kept() = 0;
    // WM_NCDESTROY; window() is null afterwards.
    virtual void windowGoes() {}
    // What the window's class makes of a message.
    LRESULT defaultAnswer(UINT message, WPARAM wParam, LPARAM lParam) const;

  private:
    static LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND window_ = nullptr;
    WNDPROC before_ = nullptr;
};

}  // namespace dravik::win32
