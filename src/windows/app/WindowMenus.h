// The program's menus, and the keys that do the same.
#pragma once

#include <string>
#include <vector>

namespace dravik::app {

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

// For a window, which destroys it.
HMENU makeMenuBar();

// The name of the screen's button that a command of the Font menu presses; "" for other commands.
std::string fontButton(Command command);

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

}  // namespace dravik::app
