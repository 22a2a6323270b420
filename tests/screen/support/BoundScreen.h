// The training screen bound to a recording tool with one font, as most tests start.
#pragma once

#include "screen/shell/DravikDlg.h"
#include "screen/support/RecordingTool.h"
#include "screen/support/ScriptedPlatform.h"
#include "screen/support/TracedJobs.h"
#include "support/Testing.h"

namespace dravik::test {

// How often a control was given the focus.
class FocusCount {
  public:
    explicit FocusCount(Widget& of)
        : watch_(of.changed.connect([this](Change change) { count_ += change == Change::Focus; })) {}
    operator int() const { return count_; }

  private:
    int count_ = 0;
    Connection watch_;
};

class BoundScreen : public testing::Test {
  protected:
    BoundScreen() {
        tool->fonts = {"ocrb"};
        tool->characterSet = {"A", "B", "C"};
    }

    // Closes the page as an operator does who wants nothing saved.
    void TearDown() override {
        if (control.m_FontChanged()) platform.boxAnswers = {Answer::No};
        control.UserControl_Terminate();
        platform.boxAnswers.clear();
    }

    // Binds the tool as set up so far and forgets the calls that took.
    void bind() {
        control.setStep(tool);
        tool->calls.clear();
    }

    Screen& screen() { return control.screen(); }
    std::string message() { return screen().sbr.panel("Message").text(); }
    void include(const std::string& text) {
        screen().sample.txtSampleInput.setText(text);
        screen().sample.cmdInclude.press();
    }
    // Opens the menu of a character's cell and picks from it, or nothing.
    void rightClick(const std::string& caption, const std::string& pick) {
        platform.menuPicks = {pick};
        cell(caption).mouseDown({kRightButton, 0, 30, 45});
    }
    ToolButton& toolButton(const std::string& key) { return screen().overview.tlbChars.button(key); }
    // The overview cell of a character.
    Label& cell(const std::string& caption) {
        for (const auto& label : screen().overview.lblChar)
            if (label->caption() == caption) return *label;
        throw Failure(RuntimeError::SubscriptOutOfRange, "no cell " + caption);
    }

    TracedJobs jobs;
    ScriptedPlatform platform;
    std::shared_ptr<RecordingTool> tool = std::make_shared<RecordingTool>();
    DravikDlg control{platform, jobs.folder()};
};

}  // namespace dravik::test
