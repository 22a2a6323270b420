// The platform as the training screen sees it inside the program: the program's own, but that the screen's
// question at the end is not asked, and a form can be worked without being shown. The program asks better
// before the end: of every unsaved font, with Cancel.
#pragma once

#include <functional>
#include <utility>

#include "ui/Platform.h"

namespace dravik::trainer {

class ScreenPlatform : public ui::Platform {
  public:
    // The platform outlives this one.
    explicit ScreenPlatform(ui::Platform& platform) : platform_(platform) {}

    // From now on questions are answered with No, unasked.
    void beginEnd() noexcept { ending_ = true; }
    // Questions are answered with Yes, unasked.
    void setAnswersYes(bool yes) noexcept { answersYes_ = yes; }

    // After a form of the screen has come up.
    std::function<void()> shown;

    ui::Answer messageBox(const ui::MessageBox& box) override {
        if (answersYes_) return box.buttons == ui::MessageBox::Buttons::Ok ? ui::Answer::Ok : ui::Answer::Yes;
        if (ending_ && box.buttons == ui::MessageBox::Buttons::YesNo) return ui::Answer::No;
        return platform_.messageBox(box);
    }
    void showModal(ui::Form& form) override {
        if (const auto work = std::exchange(workNext, nullptr))
            work(form);
        else
            platform_.showModal(form);
    }
    // Works the next modal form in the operator's place, unseen.
    std::function<void(ui::Form&)> workNext;
    void show(ui::Form& form) override {
        platform_.show(form);
        if (shown) shown();
    }
    void popUpMenu(ui::PopupMenu& menu, ui::Widget& at, double x, double y) override {
        platform_.popUpMenu(menu, at, x, y);
    }
    void setClipboardText(const std::string& text) override { platform_.setClipboardText(text); }
    std::string fileDateText(const std::string& path) override { return platform_.fileDateText(path); }
    std::string dateText() override { return platform_.dateText(); }
    std::string timeText() override { return platform_.timeText(); }
    void setBusy(bool busy) override { platform_.setBusy(busy); }

  private:
    ui::Platform& platform_;
    bool ending_ = false;
    bool answersYes_ = false;
};

}  // namespace dravik::trainer
