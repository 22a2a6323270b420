// The actions of the program's window as a menu bar and as keys.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "trainer/window/WindowActions.h"
#include "windows/win32/Skin.h"

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
    // Null: the system draws the menus.
    void setSkin(const win32::Skin* skin);
    // WM_INITMENUPOPUP.
    void showStates(HMENU menu) const;
    // True when the message is the key of an action, which is performed then.
    bool translate(MSG& message) const;

  private:
    HMENU makeMenu(const trainer::ActionList& entries, std::vector<ACCEL>& keys);
    // What the menu shows now, in place of what it showed before.
    void fill(HMENU menu, const trainer::ActionList& entries) const;

    const HWND window_;
    std::vector<trainer::Action*> actions_;  // in the order of their commands
    std::map<HMENU, const trainer::ActionList*> menus_;
    std::map<const trainer::Action*, HMENU> inside_;  // menus inside of menus
    HACCEL keys_ = nullptr;
    const win32::Skin* skin_ = nullptr;
};

}  // namespace dravik::app
