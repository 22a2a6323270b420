// What only a platform can do for the screen: message boxes, forms on the screen, pop-up menus, the
// clipboard, dates in the user's regional form and the pointer's busy shape. Tests pass one whose answers are
// written down in advance.
#pragma once

#include <string>

#include "ui/Form.h"
#include "ui/Menu.h"

namespace dravik::ui {

struct MessageBox {
    enum class Buttons { Ok, YesNo, YesNoCancel };
    enum class Icon { None, Critical, Information };

    std::string text;  // lines are separated by single carriage returns
    std::string title;
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::None;
};

enum class Answer { Ok, Yes, No, Cancel };

class Platform {
  public:
    Platform() = default;
    Platform(const Platform&) = delete;
    Platform& operator=(const Platform&) = delete;
    virtual ~Platform() = default;

    // Waits for the answer. Closing the box is Cancel where that is offered, else No, else Ok.
    virtual Answer messageBox(const MessageBox& box) = 0;

    // Activates the form as a modal dialog and returns once it is unloaded.
    virtual void showModal(Form& form) = 0;
    // Activates the form in a window of its own, or brings that window to the front.
    virtual void show(Form& form) = 0;

    // Pops the menu up at a place of a widget (as in MouseEvent), fires the click of the item picked, if any,
    // and returns once the menu is closed.
    virtual void popUpMenu(PopupMenu& menu, Widget& at, double x, double y) = 0;

    // Replaces the clipboard's content.
    virtual void setClipboardText(const std::string& text) = 0;

    // Date and time of a file's last modification in the general date form; raises File not found (53).
    virtual std::string fileDateText(const std::string& path) = 0;
    // Now, in the short date form and in the time form.
    virtual std::string dateText() = 0;
    virtual std::string timeText() = 0;

    virtual void setBusy(bool busy) = 0;
};

// The pointer is busy for as long as this object lives.
class BusyPointer {
  public:
    explicit BusyPointer(Platform& platform) : platform_(platform) { platform_.setBusy(true); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
    ~BusyPointer() { platform_.setBusy(false); }

  private:
    Platform& platform_;
};

}  // namespace dravik::ui
