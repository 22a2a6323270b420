// The program or library that this code is linked into, and its visual styles.
#pragma once

namespace dravik::win32 {

// The handle of the module that holds this code, which in a control is not the program's.
HINSTANCE moduleInstance() noexcept;

// While this object lives, windows and dialogs are made with the common controls of version 6 when the module
// carries a manifest for them (resource 2), whatever manifest the program has.
class Styles {
  public:
    Styles() noexcept;
    Styles(const Styles&) = delete;
    Styles& operator=(const Styles&) = delete;
    ~Styles();

  private:
    ULONG_PTR cookie_ = 0;
    bool active_ = false;
};

}  // namespace dravik::win32
