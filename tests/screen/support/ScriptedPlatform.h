// A platform whose answers a test writes down in advance and which records what was asked of it. A question
// that nobody expected fails the test, and so does an answer that was never fetched.
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "ui/Platform.h"

namespace dravik::test {

using namespace ui;

class ScriptedPlatform : public Platform {
  public:
    ~ScriptedPlatform() override;

    // The answers of the message boxes to come, in order.
    std::deque<Answer> boxAnswers;
    std::vector<MessageBox> boxes;
    // Title and text of each box that came up.
    std::vector<std::string> told() const;
    std::function<void()> asking;  // while a box or a menu is up

    // What the operator does in the modal form of that name; the form must be unloaded when it returns.
    std::map<std::string, std::function<void(Form&)>> modalHandlers;

    // The forms shown that were not closed since.
    std::vector<Form*> open;
    // The open form of that name; raises Subscript out of range (9) when there is none.
    Form& opened(const std::string& name) const;

    // The items picked in the menus to come, in order; "" closes a menu without a pick.
    std::deque<std::string> menuPicks;
    // Of each menu that came up, the captions that could be picked.
    std::vector<std::vector<std::string>> menus;

    std::string clipboard;
    std::map<std::string, std::string> fileDates;  // by path
    int busyDepth = 0;
    int busyTimes = 0;  // how often the pointer became busy

    Answer messageBox(const MessageBox& box) override;
    void showModal(Form& form) override;
    void show(Form& form) override;
    void popUpMenu(PopupMenu& menu, Widget& at, double x, double y) override;
    void setClipboardText(const std::string& text) override { clipboard = text; }
    std::string fileDateText(const std::string& path) override;
    std::string dateText() override { return "11/21/2026"; }
    std::string timeText() override { return "3:04:05 PM"; }
    void setBusy(bool busy) override;
};

}  // namespace dravik::test
