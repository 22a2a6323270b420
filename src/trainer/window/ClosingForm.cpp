#include "trainer/window/ClosingForm.h"

#include <algorithm>
#include <utility>

#include "base/Failure.h"

namespace dravik::trainer {

ClosingForm::ClosingForm(ui::Platform& platform, tool::FontHistory& history, bool training, AskFile askFile)
    : ui::Form("closingForm", "Unsaved Changes"),
      platform_(platform),
      history_(history),
      askFile_(std::move(askFile)) {
    lbFonts.setAccessibleName("Fonts with unsaved changes");
    lblTraining.setVisible(training);
    cmdKeep.setVisible(false);
    cmdKeep.setToolTip("Ends the program; the changes are there again, not saved, when it starts");
    setLayout(ui::column({
        ui::item(lblQuestion),
        ui::row({ui::item(lbFonts).stretched().atLeast(4200, 2400),
                 ui::column({ui::item(cmdSaveAll), ui::item(cmdSave), ui::item(cmdSaveCopy), ui::space(),
                             ui::item(cmdDiscard), ui::item(cmdKeep), ui::item(CancelButton)})})
            .stretched(),
        ui::item(lblTraining),
    }));
    defaultButton = &cmdSaveAll;
    cancelButton = &CancelButton;

    loading.subscribe([this] { showFonts(); });
    activated.subscribe([this] { cmdSaveAll.setFocus(); });
    cmdSaveAll.click.subscribe(
        [this] { forEach(lbFonts.items(), [this](const auto& font) { history_.saveUnsaved(font); }); });
    cmdSave.click.subscribe(
        [this] { forEach({lbFonts.text()}, [this](const auto& font) { history_.saveUnsaved(font); }); });
    cmdDiscard.click.subscribe(
        [this] { forEach(lbFonts.items(), [this](const auto& font) { history_.discardUnsaved(font); }); });
    cmdSaveCopy.click.subscribe([this] { saveCopy(); });
    cmdKeep.click.subscribe([this] { end(); });
    CancelButton.click.subscribe([this] { unload(); });
}

void ClosingForm::showFonts() {
    const std::string before = lbFonts.text();
    const auto fonts = history_.unsavedFonts();
    lbFonts.setItems(fonts);
    const auto found = std::find(fonts.begin(), fonts.end(), before);
    if (!fonts.empty())
        lbFonts.setListIndex(found == fonts.end() ? 0 : static_cast<int>(found - fonts.begin()));
    lblQuestion.setCaption(fonts.empty()       ? "End the program?"
                           : fonts.size() == 1 ? "This font has changes that are not saved. Save them?"
                                               : "These " + std::to_string(fonts.size()) +
                                                     " fonts have changes that are not saved. Save them?");
    cmdSaveAll.setCaption(fonts.empty() ? "&Stop and End" : fonts.size() == 1 ? "&Save" : "&Save All");
    cmdDiscard.setCaption(fonts.size() == 1 ? "&Discard" : "&Discard All");
    lbFonts.setVisible(!fonts.empty());
    cmdSave.setVisible(fonts.size() > 1);
    cmdSaveCopy.setVisible(!fonts.empty());
    cmdDiscard.setVisible(!fonts.empty());
}

void ClosingForm::forEach(const std::vector<std::string>& fonts,
                          const std::function<void(const std::string&)>& body) {
    std::string problems;
    for (const std::string& font : std::vector(fonts)) {
        try {
            body(font);
        } catch (...) {
            problems += font + ": " + currentFailure().description() + "\r\r";
        }
    }
    showFonts();
    const bool areKept = lbFonts.count() > 0;
    if (problems.empty()) {
        if (!areKept) end();
        return;
    }
    if (areKept)
        problems +=
            "The changes are kept. Save a copy elsewhere, try again, or end the program with Keep for Later: "
            "they are there again when it starts.";
    cmdKeep.setVisible(areKept);
    platform_.messageBox({problems, areKept ? "Not Saved" : "Perhaps Not on the Disk",
                          ui::MessageBox::Buttons::Ok, ui::MessageBox::Icon::Critical});
}

void ClosingForm::end() {
    mayEnd_ = true;
    unload();
}

void ClosingForm::saveCopy() {
    const std::string font = lbFonts.text();
    ui::MessageBox said;
    said.title = "Save Copy";
    try {
        const std::string file = askFile_(font);
        if (file.empty()) return;
        history_.exportFont(font, file);
        said.text = "A copy of " + font + " with its changes is in " + file +
                    ".\r\rThe font's own file is as it was.";
        said.icon = ui::MessageBox::Icon::Information;
    } catch (...) {
        said.text = currentFailure().description();
        said.icon = ui::MessageBox::Icon::Critical;
    }
    platform_.messageBox(said);
}

}  // namespace dravik::trainer
