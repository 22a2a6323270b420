// An OLE container for the one control DravikDlg: makes it, gives it a place in a window of the program,
// hands it keys and hears what it says. The registered control is taken; where none is, or it is of another
// version, the DravikDlg.ocx that lies beside the program.
#pragma once

#include <functional>
#include <memory>

#include "tool/Step.h"
#include "windows/com/ComPtr.h"

namespace dravik::app {

class ControlContainer {
  public:
    // The control is active in `parent` and fills `place` of its client area. Raises Failure with the reason
    // when there is no control to be had.
    ControlContainer(HWND parent, const RECT& place);
    ControlContainer(const ControlContainer&) = delete;
    ControlContainer& operator=(const ControlContainer&) = delete;
    // Closes the control unless it is closed.
    ~ControlContainer();

    // Null once it is closed.
    IUnknown* control() const noexcept;
    HWND window() const;
    // Raises the control's refusal.
    void setStep(const tool::StepPtr& step);
    void setBounds(const RECT& place);
    // Pixels.
    SIZE preferredSize() const;
    void focus();
    // A message of the program's loop, before it is translated; true when the control used it.
    bool translate(MSG& message);
    // The system's colours or fonts changed.
    void ambientChanged();
    // The control asks whether to save a changed font, and goes.
    void close();

    // The control is modal (true) or no longer.
    std::function<void(bool)> modal;
    // Tab (or Shift+Tab) at the end of the control's own order.
    std::function<void(bool backwards)> tabbedOut;

  private:
    class Site;

    com::ComPtr<IUnknown> object_;
    com::ComPtr<Site> site_;
};

}  // namespace dravik::app
