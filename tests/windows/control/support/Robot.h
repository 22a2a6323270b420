// Answers what comes up modally while a test waits in a nested loop: boxes by title, forms by name, menus by
// item. What nobody expected is written down and closed.
#pragma once

#include "drivers/win32/DialogScript.h"

namespace dravik::test {

class Robot {
  public:
    Robot() { script_.answerOthers(IDOK); }

    // A message box of that title, to be answered with a button (IDYES, ...).
    void expectBox(std::wstring title, int button);
    // A form of that name; `act` is to make it go, at last.
    void expectForm(std::string name, std::function<void(HWND)> act) {
        script_.expect(std::move(name), std::move(act));
    }
    // A pop-up menu; the first item that begins so is picked, "" closes the menu.
    void expectMenu(std::wstring item);

    bool satisfied() const { return script_.finished() && script_.problems().empty(); }
    // Texts of the boxes that were not expected.
    const std::vector<std::string>& surprises() const { return script_.messages(); }

  private:
    DialogScript script_;
};

// The windows inside of another one, at any depth, of that class, in tab order.
std::vector<HWND> children(HWND parent, const std::wstring& className);
// The window that is shown with this in its title; null when there is none.
HWND shownForm(const std::wstring& part);
// The child window of that class and text; null when there is none.
HWND child(HWND parent, const std::wstring& className, const std::wstring& text);

}  // namespace dravik::test
