// The operator's wish for high contrast with white on black, while the object lives.
#pragma once

#include <array>

#include "windows/win32/HighContrast.h"

namespace dravik::test {

using namespace win32;

class BlackScheme {
  public:
    BlackScheme() {
        for (std::size_t i = 0; i < kElements.size(); ++i) before_[i] = GetSysColor(kElements[i]);
        set(kColors);
    }
    BlackScheme(const BlackScheme&) = delete;
    BlackScheme& operator=(const BlackScheme&) = delete;
    ~BlackScheme() { set(before_); }

  private:
    static constexpr std::array<int, 10> kElements{
        COLOR_BTNFACE,  COLOR_BTNTEXT,   COLOR_WINDOW,        COLOR_WINDOWTEXT, COLOR_SCROLLBAR,
        COLOR_GRAYTEXT, COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT, COLOR_BTNSHADOW,  COLOR_WINDOWFRAME};
    using Colors = std::array<COLORREF, kElements.size()>;
    static constexpr Colors kColors{
        0, 0xFFFFFF, 0, 0xFFFFFF, 0, RGB(0, 255, 0), RGB(0, 128, 255), 0xFFFFFF, 0x808080, 0xFFFFFF};
    static void set(const Colors& colors) {
        SetSysColors(static_cast<int>(colors.size()), kElements.data(), colors.data());
    }

    HighContrastOverride wish_;
    Colors before_{};
};

}  // namespace dravik::test
