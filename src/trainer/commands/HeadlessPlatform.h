// A platform without a display: it answers the screen's questions by rule, lets a script work its dialogs,
// and keeps what was asked, so that a command can say why the screen refused something.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "ui/Platform.h"

namespace dravik::trainer {

class HeadlessPlatform : public ui::Platform {
  public:
    struct Question {
        ui::MessageBox box;
        ui::Answer answer;
    };

    // What happens when a form of that name is shown modally; the form is closed afterwards in any case. A
    // form without a script is closed at once, as if the operator had cancelled it.
    void script(const std::string& formName, std::function<void(ui::Form&)> steps);

    // Everything asked since the last forget(), oldest first.
    const std::vector<Question>& asked() const noexcept { return asked_; }
    void forget() { asked_.clear(); }

    // Characters that the font lacks are added to its set. Nothing else is agreed to: samples that are not
    // committed stay so, nothing is overwritten, an unsaved font is left unsaved.
    ui::Answer messageBox(const ui::MessageBox& box) override;
    void showModal(ui::Form& form) override;
    void show(ui::Form& form) override;
    void popUpMenu(ui::PopupMenu& menu, ui::Widget& at, double x, double y) override;
    void setClipboardText(const std::string& text) override;
    // Dates are local time, year first, as in "2026-03-31 14:05:09": the form that sorts.
    std::string fileDateText(const std::string& path) override;
    std::string dateText() override;
    std::string timeText() override;
    void setBusy(bool busy) override;

  private:
    std::map<std::string, std::function<void(ui::Form&)>> scripts_;
    std::vector<Question> asked_;
};

}  // namespace dravik::trainer
