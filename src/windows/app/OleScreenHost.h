// The training screen in the OLE control, as the program's window shows it.
#pragma once

#include "windows/app/ControlContainer.h"
#include "windows/app/ScreenHost.h"

namespace dravik::app {

class OleScreenHost : public ScreenHost {
  public:
    // Makes the control in the window. Raises the container's failure when there is none to be had.
    explicit OleScreenHost(HWND parent);

    ControlContainer& container() noexcept { return container_; }

    SIZE minimumSize() const override;
    void setBounds(const RECT& bounds) override;
    void setDpi(int dpi) override;
    void systemChanged() override;
    void focus(bool last) override;
    bool restoreFocus() override;
    bool translate(MSG& message, bool& left) override;
    HWND window() const override { return container_.window(); }
    void close() override;

  private:
    ControlContainer container_;
    SIZE minimum_;
    bool left_ = false;
};

}  // namespace dravik::app
