// The tool tips of a page: one tip window for all its controls and for parts of them, made when the pointer
// first comes to one of them.
#pragma once

#include <map>
#include <string>
#include <utility>

namespace dravik::win32 {

class ToolTips {
  public:
    ToolTips() = default;
    ToolTips(const ToolTips&) = delete;
    ToolTips& operator=(const ToolTips&) = delete;
    ~ToolTips();

    void open(HWND page);
    // Before the windows that have tips are destroyed: afterwards the tips could not let go of them.
    void close() noexcept;
    // Of a whole window; the empty text takes the tip away.
    void set(HWND window, const std::wstring& text);
    // Of a part of a window, numbered from 1.
    void set(HWND window, UINT part, const RECT& place, const std::wstring& text);
    void remove(HWND window);
    // Every message that comes to a window with tips: they live by those of the mouse.
    void relay(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void setFont(HFONT font);
    // Shows a tip below a place in a window now, for the keyboard; until hide() or another tip.
    void showBelow(HWND window, RECT place, const std::wstring& text);
    void hide();

  private:
    using Key = std::pair<HWND, UINT>;
    struct Tip {
        std::wstring text;
        RECT place{};
    };

    void create();
    void add(const Key& key, Tip& tip);
    void forget(const Key& key);

    HWND window_ = nullptr;
    HWND page_ = nullptr;
    HWND tracked_ = nullptr;
    HFONT font_ = nullptr;
    std::map<Key, Tip> tips_;
};

}  // namespace dravik::win32
