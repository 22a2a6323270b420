// The actions of the program's window as a menu bar and as keys.
#pragma once

#include <string>
#include <vector>

#include "trainer/window/WindowActions.h"

namespace dravik::app {

class WindowMenus {
  public:
    // Gives the window its menu bar. The actions outlive this object.
    WindowMenus(const trainer::WindowActions& actions, HWND window);
    WindowMenus(const WindowMenus&) = delete;
    WindowMenus& operator=(const WindowMenus&) = delete;
    ~WindowMenus() { DestroyAcceleratorTable(keys_); }

    // WM_COMMAND; unknown commands do nothing.
    void perform(WORD command) const;
    WORD commandOf(const trainer::Action& action) const;
    // WM_INITMENUPOPUP.
    void showStates(HMENU menu) const;
    // True when the message is the key of an action, which is performed then.
    bool translate(MSG& message) const;

  private:
    const trainer::Action* actionOf(UINT command) const;

    const HWND window_;
    std::vector<trainer::Action*> actions_;  // in the order of their commands
    HACCEL keys_ = nullptr;
};

}  // namespace dravik::app
