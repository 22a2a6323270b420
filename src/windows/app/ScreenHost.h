// Where the training screen stands in the program's window, and what the window asks of it: shown by native
// controls of the program itself, or inside of an OLE control.
#pragma once

#include <memory>

namespace dravik::trainer {
class Trainer;
}
namespace dravik::win32 {
class FormPage;
class Win32Platform;
}  // namespace dravik::win32

namespace dravik::app {

class ScreenHost {
  public:
    ScreenHost() = default;
    ScreenHost(const ScreenHost&) = delete;
    ScreenHost& operator=(const ScreenHost&) = delete;
    virtual ~ScreenHost() = default;

    // Pixels.
    virtual SIZE minimumSize() const = 0;
    virtual void setBounds(const RECT& bounds) = 0;
    virtual void setDpi(int dpi) = 0;
    virtual void systemChanged() = 0;
    // Gives the screen the focus; `last` when the operator came backwards.
    virtual void focus(bool last) = 0;
    // The control that had the focus when the window was left, has it again; false when none had.
    virtual bool restoreFocus() = 0;
    // A message of the program's loop before it is translated: true when the screen used it. Tab at its ends
    // is not used and sets `left`.
    virtual bool translate(MSG& message, bool& left) = 0;
    // The window that holds the screen's controls; null once it is closed.
    virtual HWND window() const = 0;
    // Ends the screen, which offers to save a changed font.
    virtual void close() = 0;
};

// The screen of the trainer itself in native controls.
class OwnScreenHost : public ScreenHost {
  public:
    // The trainer has a screen of its own; it and the platform outlive the host.
    OwnScreenHost(trainer::Trainer& trainer, HWND parent, win32::Win32Platform& platform);
    ~OwnScreenHost() override;

    SIZE minimumSize() const override;
    void setBounds(const RECT& bounds) override;
    void setDpi(int dpi) override;
    void systemChanged() override;
    void focus(bool last) override;
    bool restoreFocus() override;
    bool translate(MSG& message, bool& left) override;
    HWND window() const override;
    void close() override;

  private:
    trainer::Trainer& trainer_;
    std::unique_ptr<win32::FormPage> page_;
};

}  // namespace dravik::app
