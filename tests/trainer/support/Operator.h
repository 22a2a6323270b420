// The operator of a trainer under test: works the dialogs by script, says No to every question, and closes
// what a script leaves open.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "screen/support/ScriptedPlatform.h"
#include "ui/Timer.h"

namespace dravik::test {

class Operator : public ScriptedPlatform {
  public:
    void script(const std::string& formName, std::function<void(Form&)> steps) {
        modalHandlers[formName] = [steps = std::move(steps)](Form& form) {
            steps(form);
            if (form.loaded()) form.unload();
        };
    }

    Answer messageBox(const MessageBox& box) override {
        boxes.push_back(box);
        if (onMessageBox) onMessageBox();
        return box.buttons == MessageBox::Buttons::Ok ? Answer::Ok : Answer::No;
    }
    std::string fileDateText(const std::string&) override { return "today"; }

    std::function<void()> onMessageBox;  // while one is shown
};

// Fires the ticks of a timer of the screen, where no window system does, until it is switched off.
void runTimer(Timer& timer);

}  // namespace dravik::test
