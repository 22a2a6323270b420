// What an operator does with the windows of this thread and sees of them, for tests and for scripted
// sessions: keys and the mouse as messages, texts and pictures. Everything waits for a condition, nothing for
// a fixed time.
#pragma once

#include <array>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "windows/win32/Gdi.h"

namespace dravik::test {

// Dispatches messages until the condition holds; false when it does not within the time.
bool waitUntil(const std::function<bool()>& condition, int milliseconds = 20000);
// Dispatches what is waiting.
void settle();

// Keys that are held down while this lives, and no others; 0 is none.
class HeldKeys {
  public:
    HeldKeys(std::initializer_list<int> keys);
    HeldKeys(const HeldKeys&) = delete;
    HeldKeys& operator=(const HeldKeys&) = delete;
    ~HeldKeys();

  private:
    std::array<BYTE, 256> before_{};
};
// A key as the keyboard gives it to the window that has the focus, with everything that comes of it. `shift`
// is that of the models.
void pressKey(UINT key, int shift = 0);
// Character by character, to the window that has the focus.
void typeText(const std::wstring& text);
// Types over what an edit control holds; the empty text deletes it.
void typeOver(HWND edit, const std::wstring& text);
// In client coordinates.
void mouse(HWND window, UINT message, int x, int y, WPARAM keys = 0);
void click(HWND window, int x, int y);
void clickMiddle(HWND window, const RECT& place);

// This thread's windows that can be seen, the topmost first; menus are among them.
std::vector<HWND> shownWindows();
std::wstring classOf(HWND window);
// The text of a message box, of a panel of a status bar, of the clipboard.
std::wstring boxText(HWND box);
std::wstring statusText(HWND bar, int panel = 0);
std::wstring clipboardContents();
// A window on the screen, and the inside of its frame.
RECT placeOf(HWND window);
RECT insideOf(HWND window);
// What a window shows, from the screen.
std::unique_ptr<win32::Canvas> picture(HWND window);
COLORREF colorAt(win32::Canvas& canvas, int x, int y);
int countOf(win32::Canvas& canvas, COLORREF color);

}  // namespace dravik::test
