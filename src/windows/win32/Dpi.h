// Display scale: dots per inch of a window, and lengths in them.
#pragma once

#include "windows/win32/Windows.h"

#include "ui/Lengths.h"

namespace dravik::win32 {

using ui::kUsualDpi;
using ui::pixels;
using ui::scaled;
using ui::twips;

// Of the monitor that the window is on where the process is aware of it, else of the system.
int dpiOf(HWND window) noexcept;

// Every window has this scale while the object lives; for tests and pictures.
class DpiOverride {
  public:
    explicit DpiOverride(int dpi) noexcept;
    DpiOverride(const DpiOverride&) = delete;
    DpiOverride& operator=(const DpiOverride&) = delete;
    ~DpiOverride();

  private:
    int before_;
};

}  // namespace dravik::win32
