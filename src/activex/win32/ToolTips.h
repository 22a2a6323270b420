// The tool tips of a page: one tip window for all its controls and for parts of them.
#pragma once

#include "activex/win32/Windows.h"

#include <map>
#include <string>
#include <utility>

namespace dravik {

class ToolTips {
  public:
    ToolTips() = default;
    ToolTips(const ToolTips&) = delete;
    ToolTips& operator=(const ToolTips&) = delete;
    ~ToolTips();

    void create(HWND page);
    // Before the windows that have tips are destroyed: afterwards the tips could not let go of them.
    void close() noexcept;
    // Of a whole window; the empty text takes the tip away.
    void set(HWND window, const std::wstring& text);
    // Of a part of a window, numbered from 1.
    void set(HWND window, UINT part, const RECT& place, const std::wstring& text);
    void remove(HWND window);
    void setFont(HFONT font);
    // Shows a window's tip below it now, for the keyboard; until hide() or another tip.
    void showBelow(HWND window, const std::wstring& text);
    void hide();
    HWND window() const noexcept { return window_; }

  private:
    HWND window_ = nullptr;
    HWND page_ = nullptr;
    HWND tracked_ = nullptr;
    std::map<std::pair<HWND, UINT>, std::wstring> texts_;
};

}  // namespace dravik
