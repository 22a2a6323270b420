// The program's menus, and the keys that do the same.
#pragma once

#include "activex/win32/Windows.h"
// Behind the Windows headers
#include <vector>

#include "shell/Screen.h"

namespace dravik {

enum class Command : WORD {
    OpenImages = 100,
    OpenFolder,
    CloseImage,
    CloseAll,
    Quit,
    Previous,
    Next,
    ZoomIn,
    ZoomOut,
    Fit,
    ActualSize,
    FontSelect,
    FontInclude,
    FontLearn,
    FontStop,
    FontSave,
    FontRevert,
    Keys,
    About,
};

// For a window, which destroys it. Without a screen of this program there is no menu of the font's actions.
HMENU makeMenuBar(bool withFontMenu);

// The button of the screen that a command of the Font menu presses; nothing for other commands.
Button* fontButton(Screen& screen, Command command);

class AcceleratorTable {
  public:
    AcceleratorTable();
    AcceleratorTable(const AcceleratorTable&) = delete;
    AcceleratorTable& operator=(const AcceleratorTable&) = delete;
    ~AcceleratorTable() { DestroyAcceleratorTable(handle_); }
    HACCEL get() const noexcept { return handle_; }

  private:
    HACCEL handle_;
};

}  // namespace dravik
