#include "trainer/window/TrainerWindow.h"

#include <utility>

#include "base/Failure.h"
#include "base/Paths.h"
#include "trainer/window/KeysForm.h"

namespace dravik::trainer {
namespace {

std::vector<FileFilter> imageFilters() {
    FileFilter images{"Images", {}};
    for (const auto extension : imageExtensions()) images.patterns.push_back("*" + std::string(extension));
    return {std::move(images), {"All files", {"*"}}};
}

}  // namespace

TrainerWindow::TrainerWindow(Trainer& trainer, ui::Platform& platform, WindowSystem& system)
    : actions(trainer.control().screen()),
      strip(trainer.parts()),
      trainer_(trainer),
      platform_(platform),
      system_(system) {
    OpenedParts& parts = trainer.parts();
    const auto on = [](Action& action, auto body) { action.triggered.subscribe(body); };
    on(actions.openImages, [this] { choose({"Open Part Images", {}, false, imageFilters()}); });
    on(actions.openFolder, [this] { choose({"Open Folder of Part Images", {}, true, {}}); });
    on(actions.closeImage, [&parts] { parts.close(parts.current()); });
    on(actions.closeAll, [&parts] { parts.closeAll(); });
    on(actions.quit, [this] { system_.closeWindow(); });
    on(actions.previous, [&parts] { parts.previous(); });
    on(actions.next, [&parts] { parts.next(); });
    on(actions.zoomIn, [this] { view.zoomIn(); });
    on(actions.zoomOut, [this] { view.zoomOut(); });
    on(actions.fit, [this] { view.fit(); });
    on(actions.actualSize, [this] { view.showActualSize(); });
    on(actions.guide, [this] { showGuide(); });
    on(actions.keys, [this] { showKeys(); });
    on(actions.about, [this] { showAbout(); });

    const auto showPreview = [this] {
        view.setCharacters(trainer_.preview(), trainer_.mismatch());
        textsChanged();
    };
    const auto showReading = [this] { reading.setReading(trainer_.reading()); };
    connections_.push_back(parts.currentChanged.connect([this] { showPart(); }));
    connections_.push_back(parts.listChanged.connect([this] { showPossible(); }));
    connections_.push_back(view.changed.connect([this] { showPossible(); }));
    connections_.push_back(trainer.previewChanged.connect(showPreview));
    connections_.push_back(trainer.readingChanged.connect(showReading));
    connections_.push_back(trainer.checkChanged.connect([this] { textsChanged(); }));
    showPart();
    showPreview();
    showReading();
}

void TrainerWindow::showPart() {
    const OpenedParts& parts = trainer_.parts();
    view.setImage(&parts.image(),
                  parts.current() < 0
                      ? "Open part images or drop them here\n\nFile \u2192 Open Images... (Ctrl+O)"
                      : parts.problem());
}

void TrainerWindow::showPossible() {
    const OpenedParts& parts = trainer_.parts();
    const int current = parts.current();
    actions.closeImage.setEnabled(current >= 0);
    actions.closeAll.setEnabled(parts.count() > 0);
    actions.previous.setEnabled(current > 0);
    actions.next.setEnabled(current >= 0 && current + 1 < parts.count());
    for (Action* action : {&actions.zoomIn, &actions.zoomOut, &actions.fit, &actions.actualSize})
        action->setEnabled(view.image() != nullptr);
    actions.fit.setChecked(view.fits());
    textsChanged();
}

std::string TrainerWindow::partName() const {
    const OpenedParts& parts = trainer_.parts();
    const int current = parts.current();
    if (current < 0) return {};
    return std::to_string(current + 1) + " of " + std::to_string(parts.count()) + "   " + parts.name(current);
}

std::string TrainerWindow::partTip() const {
    const OpenedParts& parts = trainer_.parts();
    return parts.current() < 0 ? std::string() : parts.path(parts.current());
}

std::string TrainerWindow::scaleText() const {
    return view.image() ? std::to_string(view.percent()) + " %" : std::string();
}

std::string TrainerWindow::previewText() const {
    return (previewWarns() ? "\u26A0 " : "") + trainer_.previewText();
}

std::string TrainerWindow::viewDescription() const {
    return view.image() ? trainer_.previewText() : view.message();
}

void TrainerWindow::open(const std::vector<std::string>& paths) {
    problems_ = trainer_.parts().open(paths);
    if (problems_.size() >= kMostProblemLines) {
        const std::size_t more = problems_.size() - (kMostProblemLines - 1);
        problems_.resize(kMostProblemLines - 1);
        problems_.push_back("... and " + std::to_string(more) + " more");
    }
    textsChanged();
}

void TrainerWindow::dismissProblems() {
    problems_.clear();
    textsChanged();
}

void TrainerWindow::choose(FileQuestion question) {
    question.folder = system_.keptFolder();
    const std::vector<std::string> paths = system_.choosePaths(question);
    if (paths.empty()) return;
    system_.keepFolder(question.asksForFolder ? paths.front()
                                              : fromPath(toPath(paths.front()).parent_path()));
    open(paths);
}

void TrainerWindow::showGuide() {
    if (!system_.showGuide())
        platform_.messageBox(
            {"The operator guide is not installed beside this program, or there is no browser to show it.",
             "Operator Guide"});
}

void TrainerWindow::showKeys() {
    KeysForm form;
    platform_.showModal(form);
}

void TrainerWindow::showAbout() {
    platform_.messageBox({"Dravik Trainer " DRAVIK_VERSION
                          "\r\rBuilds and maintains OCR fonts from part images.\r\rFonts: " +
                              trainer_.folder().fontsFolder(),
                          "About Dravik Trainer"});
}

void TrainerWindow::end() {
    if (std::exchange(ended_, true)) return;
    trainer_.control().UserControl_Terminate();
}

std::vector<ui::Timer*> TrainerWindow::timers() {
    return {&trainer_.checkTimer(), &strip.decodeTimer()};
}

}  // namespace dravik::trainer
