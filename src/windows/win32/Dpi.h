// Display scale: dots per inch of a window, and lengths in them.
#pragma once

namespace dravik::win32 {

constexpr int kUsualDpi = 96;

// Of the monitor that the window is on where the process is aware of it, else of the system.
int dpiOf(HWND window) noexcept;

// Pixels of a length at 96 dpi, and of one in twips (1/1440 inch); rounded.
constexpr int scaled(int length, int dpi) {
    return (length * dpi + (length < 0 ? -kUsualDpi : kUsualDpi) / 2) / kUsualDpi;
}
constexpr int pixels(int twips, int dpi) {
    return (twips * dpi + 720) / 1440;
}
constexpr double twips(double pixels, int dpi) {
    return pixels * 1440.0 / dpi;
}

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
