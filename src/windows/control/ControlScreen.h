// The training screen of one control with the platform that it runs on, from its first use to its end. A host
// that uses a closed control again gets a fresh screen, and gives it a step again.
#pragma once

#include <functional>
#include <memory>

#include "screen/shell/DravikDlg.h"
#include "windows/win32/Win32Platform.h"

namespace dravik::control {

class ControlScreen {
  public:
    ControlScreen();
    ControlScreen(const ControlScreen&) = delete;
    ControlScreen& operator=(const ControlScreen&) = delete;
    // Ends the screen. What still runs procedures of it, up the stack, may go on to do so.
    ~ControlScreen();

    screen::DravikDlg& dialog() noexcept;
    win32::Win32Platform& platform() noexcept;

    // A window inside of the host's: message boxes and forms appear above its root window.
    void setOwner(HWND window);
    // Told true before and false after everything modal.
    void setModalHook(std::function<void(bool)> hook);

    void setReadOnly(bool readOnly);
    void setRootStep(tool::StepPtr step);
    // Raises what DravikDlg::setStep raises; false when the step before stays bound.
    bool setStep(tool::StepPtr step);
    // The bound step, nothing before the first.
    const tool::StepPtr& step() const noexcept { return step_; }

    // Runs UserControl_Terminate, which may ask the operator, and lets the steps go; once in a screen's life.
    void end();
    bool ended() const noexcept { return ended_; }
    // A new screen after end(); does nothing before.
    void begin();

  private:
    struct Life;

    // Keeps an object until no procedure that may use it is running.
    template <class Kept>
    static void keep(Kept object);

    std::shared_ptr<Life> life_;
    tool::StepPtr rootStep_;
    tool::StepPtr step_;
    bool readOnly_ = false;
    bool ended_ = false;
};

}  // namespace dravik::control
