// Answers what comes up modally while a test waits in a nested loop: boxes and forms by title, menus by item.
// It looks from a timer of the thread, as the test itself cannot. What nobody expected is written down and
// closed.
#pragma once

#include <windows.h>

#include <deque>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace dravik {

class Robot {
  public:
    Robot();
    Robot(const Robot&) = delete;
    Robot& operator=(const Robot&) = delete;
    ~Robot();

    // A message box of that title, to be answered with a button (IDYES, ...).
    void expectBox(std::wstring title, int button);
    // A form of that title, visible and enabled; `act` is to make it go, at last.
    void expectForm(std::wstring title, std::function<void(HWND)> act);
    // A pop-up menu; the item of that text is picked, "" closes the menu.
    void expectMenu(std::wstring item);

    bool satisfied() const noexcept { return expected_.empty(); }
    // Texts of the boxes and items of the menus (disabled ones in brackets), in the order of their coming.
    std::vector<std::wstring> seen;
    std::vector<std::wstring> surprises;

  private:
    struct Expected {
        enum class Kind { Box, Form, Menu } kind;
        std::wstring text;
        int button = 0;
        std::function<void(HWND)> act;
    };

    static void CALLBACK tick(HWND, UINT, UINT_PTR id, DWORD);
    void look();
    void box(HWND window);
    void menu(HWND window);

    UINT_PTR timer_;
    std::deque<Expected> expected_;
    std::set<HWND> answered_;
    bool looking_ = false;
};

std::wstring textOfWindow(HWND window);
std::wstring classOfWindow(HWND window);
// The windows inside of another one, at any depth, of that class, in tab order.
std::vector<HWND> children(HWND parent, const std::wstring& className);
// The child window of that class and text; null when there is none.
HWND child(HWND parent, const std::wstring& className, const std::wstring& text);

}  // namespace dravik
