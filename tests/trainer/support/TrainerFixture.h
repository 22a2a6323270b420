// The trainer on the embedded tool with its window's models, as an operator works it by script: no window
// system, a folder of its own, images of dot print.
#pragma once

#include <initializer_list>

#include "base/Text.h"
#include "screen/support/ScriptedPlatform.h"
#include "tool/Samples.h"
#include "trainer/support/Workspace.h"
#include "trainer/window/TrainerWindow.h"

namespace dravik::test {

using namespace screen;
using namespace tool;

// The control of that name in a form.
template <class Kind>
Kind& in(ui::Form& form, const char* name) {
    return dynamic_cast<Kind&>(*form.find(name));
}

// Works the dialogs by script, says No to every question, and closes what a script leaves open.
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
        return box.buttons == MessageBox::Buttons::Ok ? Answer::Ok : Answer::No;
    }
    std::string fileDateText(const std::string&) override { return "today"; }
};

// Fires the ticks of a timer of the screen, where no window system does, until it is switched off.
inline void runTimer(Timer& timer) {
    while (timer.enabled()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(timer.interval()));
        timer.tick();
    }
}

// Chooses the files that it is told to.
struct FileChooser : trainer::WindowSystem {
    std::vector<std::string> choosePaths(const trainer::FileQuestion&) override { return chosen; }
    std::vector<std::string> clipboardImages(const std::string& newFile) override {
        if (pasted.empty()) return {};
        std::filesystem::copy_file(toPath(pasted), toPath(newFile));
        return {newFile};
    }
    std::string kept(const std::string& key) const override {
        const auto found = texts.find(key);
        return found == texts.end() ? std::string() : found->second;
    }
    void keep(const std::string& key, const std::string& text) override { texts[key] = text; }
    void showTheme(trainer::Theme shown) override { theme = shown; }
    std::string chooseNewFile(const trainer::FileQuestion&) override { return newFile; }
    bool showGuide() override { return hasGuide; }
    void closeWindow() override {}

    std::vector<std::string> chosen;
    std::map<std::string, std::string> texts;
    std::string pasted;  // a picture on the clipboard
    std::string newFile;
    trainer::Theme theme = trainer::Theme::Light;
    bool hasGuide = true;
};

class TrainerFixture : public testing::Test {
  protected:
    explicit TrainerFixture(bool remembersFont = false) : remembersFont_(remembersFont) { start(); }

    // The program ends as if it was killed, and starts again.
    void start() {
        window.reset();
        trainer.reset();
        trainer.emplace(platform, JobFolder(workspace.jobs()), readPgm, remembersFont_);
        window.emplace(*trainer, platform, system);
    }

    screen::Screen& screen() { return trainer->control().screen(); }
    std::string message() { return screen().sbr.panel("Message").text(); }
    ui::TextBox& box() { return screen().sample.txtSampleInput; }
    std::string text() { return box().text(); }
    void type(const std::string& typed) { box().setText(typed); }
    // As Enter in the text box does it.
    void enter() { screen().sample.cmdInclude.press(); }

    static void press(ui::Form& form, std::initializer_list<const char*> buttons) {
        for (const char* button : buttons) in<ui::Button>(form, button).press();
    }
    // Opens the font manager; the operator does this in it.
    void manager(std::function<void(ui::Form&)> act) {
        platform.script("dlgFontManager", std::move(act));
        window->actions.fontSelect.trigger();
    }
    void choose(const std::string& font) {
        manager([&](ui::Form& form) {
            in<ui::ListBox>(form, "lbFonts").setText(font);
            form.defaultButton->press();
        });
    }
    // Opens a drawing of the text, and makes it current.
    void draw(const std::string& drawn) {
        window->open({workspace.draw(drawn + ".pgm", drawn)});
        trainer->parts().setCurrent(trainer->parts().count() - 1);
    }
    void include(const std::string& drawn) {
        draw(drawn);
        type(drawn);
        enter();
    }
    // Of the characters that are found; "_" for one without a label.
    std::string labels() const {
        std::string all;
        for (const trainer::LabelledCharacter& one : trainer->preview())
            all += one.label.empty() ? "_" : one.label;
        return all;
    }
    // Of the font's samples.
    std::string labelsOfFont() {
        std::string all;
        const auto table = trainer->tool().GetSampleData(kAllCommitted, kSampleFields);
        for (int row = 1; table && row <= table->upperRow(); ++row) all += table->character(row);
        return all;
    }
    int committed() { return static_cast<int>(characterCount(labelsOfFont())); }

    Workspace workspace;
    Operator platform;
    FileChooser system;
    std::optional<trainer::Trainer> trainer;
    std::optional<trainer::TrainerWindow> window;

  private:
    const bool remembersFont_;
};

}  // namespace dravik::test
