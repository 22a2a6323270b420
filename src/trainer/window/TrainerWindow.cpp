#include "trainer/window/TrainerWindow.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <utility>

#include "base/Failure.h"
#include "trainer/FontOpening.h"
#include "trainer/window/ClosingForm.h"
#include "trainer/window/Guidance.h"
#include "trainer/window/KeysForm.h"
#include "trainer/window/RestoreForm.h"

namespace dravik::trainer {
namespace {

constexpr char kThemeKey[] = "theme";
constexpr char kGalleryKey[] = "gallery", kHidden[] = "hidden", kShown[] = "shown";
constexpr char kOpeningText[] = "Opening the image...";
const std::string kOpenText = "Open part images or drop them here\n\nFile \u2192 Open Images... (Ctrl+O)";
constexpr char kNoFontText[] =
    "No font is selected: Font > New Font... (Ctrl+N) makes one, Select Font takes one";
constexpr char kOrRecentText[] = "\nFile \u2192 Open Recent: those of before";
// For so long the image before may stand in the place of one that is being opened.
constexpr std::chrono::milliseconds kUnnoticed{200};
constexpr std::pair<Theme, std::string_view> kThemes[] = {
    {Theme::System, "system"}, {Theme::Light, "light"}, {Theme::Dark, "dark"}};

}  // namespace

TrainerWindow::TrainerWindow(Trainer& trainer, ui::Platform& platform, WindowSystem& system)
    : actions(trainer.control().screen()),
      strip(trainer.parts()),
      gallery(trainer,
              [this](const std::string& image, const engine::Region& box) { showPlace(image, box); }),
      readAll(
          [this](const std::string& image) { showImage(image); },
          [this] {
              FileQuestion question{"Export Readings", {}, false, {{"CSV", {"*.csv"}}, {"JSON", {"*.json"}}}};
              question.fileName = "readings.csv";
              return system_.chooseNewFile(question);
          }),
      tools(trainer, platform, actions, view),
      trainer_(trainer),
      platform_(platform),
      system_(system),
      sources_(trainer.parts(), strip, actions, system, trainer.folder(),
               {[this](const std::string& text) { trainer_.acts().say(text); },
                [this](const std::vector<std::string>& lines) {
                    forgetProblems();
                    tell(lines);
                },
                [this](const std::string& line) {
                    std::erase(problems_, line);
                    textsChanged();
                },
                [this] { return typed_; }}),
      camera_(platform, system,
              {[this] {
                   showPart();
                   showPreview();
               },
               [this] { return sources_.newFile("camera"); },
               [this](const std::string& file) { sources_.openNew(file); },
               [this](const std::string& problem) { tell({problem}); }}),
      labelLists_(trainer, platform, system, actions,
                  [this](const std::vector<std::string>& lines) { tell(lines); }),
      page_(trainer, system) {
    OpenedParts& parts = trainer.parts();
    const auto on = [](Action& action, auto body) { action.triggered.subscribe(body); };
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
    on(actions.undo, [this] {
        if (tools.undoText())
            tools.undo();
        else
            trainer_.acts().undo();
    });
    on(actions.redo, [this] { trainer_.acts().redo(); });
    on(actions.stopReading, [this] {
        labelLists_.stopIncluding();
        trainer_.stopWorking();
    });
    on(actions.readAgain, [this] { trainer_.lookAgain(); });
    on(actions.keepText, [this] {
        trainer_.labelling().setKeepsText(!actions.keepText.checked());
        actions.keepText.setChecked(trainer_.labelling().keepsText());
    });
    connections_.push_back(labelLists_.changed.connect([this] { showPossible(); }));
    on(actions.fontNew, [this] { newFont(); });
    on(actions.fontSelect, [this] { selectFont(); });
    on(actions.fontSave, [this] { save(); });
    on(actions.fontSaveCopy, [this] { saveCopy(); });
    on(actions.fontRestore, [this] { restoreFont(); });
    on(actions.readAll, [this] { startReadAll(); });
    on(actions.fontAccuracy, [this] { page_.ask(); });
    on(actions.showGallery, [this] {
        gallery.setShown(!gallery.isShown());
        system_.keep(kGalleryKey, gallery.isShown() ? kShown : kHidden);
    });
    on(actions.keys, [this] { showKeys(); });
    on(actions.about, [this] { showAbout(); });
    on(actions.camera, [this] { camera_.show(); });
    on(actions.freeze, [this] { camera_.freezeOrGoOn(); });
    for (Action* action : {&actions.camera, &actions.freeze}) action->setVisible(system.hasCameras());
    on(actions.themeSystem, [this] { chooseTheme(Theme::System); });
    on(actions.themeLight, [this] { chooseTheme(Theme::Light); });
    on(actions.themeDark, [this] { chooseTheme(Theme::Dark); });

    const auto showReading = [this] {
        reading.setReading(trainer_.reading());
        std::vector<engine::ReadCharacter> all;
        for (const auto& line : trainer_.reading().lines) all.insert(all.end(), line.begin(), line.end());
        view.setReading(std::move(all));
    };
    connections_.push_back(parts.currentChanged.connect([this] { partChanged(); }));
    connections_.push_back(trainer.control().screen().sample.txtSampleInput.keyDown.connect(
        [this](int, int) { typed_ = true; }));
    connections_.push_back(parts.listChanged.connect([this] { showPossible(); }));
    connections_.push_back(
        gallery.shownChanged.connect([this] { actions.showGallery.setChecked(gallery.isShown()); }));
    connections_.push_back(view.changed.connect([this] { showPossible(); }));
    connections_.push_back(trainer.previewChanged.connect([this] { showPreview(); }));
    connections_.push_back(view.modeChanged.connect([this] {
        if (view.mode() == ViewMode::Look) giveFocus();
        trainer_.acts().say("");  // the mode has something to say in its place
        showActs();
    }));
    connections_.push_back(trainer.adjustments().charactersChanged.connect([this] { showActs(); }));
    connections_.push_back(trainer.readingChanged.connect(showReading));
    connections_.push_back(trainer.labelling().textWanted.connect([this] {
        // Whose place is shown was asked for in the gallery, where the next key goes.
        const bool isShown = place_ && place_->first == partTip();
        if (!strip.hasStepped() && !isShown && view.mode() == ViewMode::Look)
            trainer_.control().screen().sample.txtSampleInput.setFocus();
    }));
    strip.stateOf = [&labelling = trainer.labelling()](const std::string& path) {
        return labelling.state(path);
    };
    connections_.push_back(trainer.labelling().statesChanged.connect([this] { strip.statesChanged(); }));
    connections_.push_back(trainer.checkChanged.connect([this] { showCheck(); }));
    connections_.push_back(trainer.acts().changed.connect([this] { showActs(); }));
    connections_.push_back(trainer.workTimer().changed.connect([this] { showPossible(); }));
    connections_.push_back(trainer.workTimer().tick.connect([this] { showLongOpening(); }));
    // After the screen's own answer to the button.
    connections_.push_back(
        trainer.control().screen().font.cmdSelectFont.click.connect([this] { giveFocus(); }));
    showTheme(keptTheme());
    gallery.setShown(system.kept(kGalleryKey) == kShown);
    showPart();
    showPreview();
    showReading();
    showActs();
}

void TrainerWindow::arrangeFor(int height) {
    if (system_.kept(kGalleryKey).empty()) gallery.setShown(height >= kFirstHeight);
}

void TrainerWindow::giveFocus() {
    screen::Screen& screen = trainer_.control().screen();
    if (trainer_.tool().currentFont())
        screen.sample.txtSampleInput.setFocus();
    else
        screen.font.cmdSelectFont.setFocus();
}

Theme TrainerWindow::keptTheme() const {
    const std::string kept = system_.kept(kThemeKey);
    for (const auto& [theme, name] : kThemes)
        if (kept == name) return theme;
    return Theme::System;
}

void TrainerWindow::showTheme(Theme theme) {
    actions.themeSystem.setChecked(theme == Theme::System);
    actions.themeLight.setChecked(theme == Theme::Light);
    actions.themeDark.setChecked(theme == Theme::Dark);
    system_.showTheme(theme);
}

void TrainerWindow::showTheme(std::string_view name) {
    for (const auto& [theme, own] : kThemes)
        if (own == name) showTheme(theme);
}

void TrainerWindow::chooseTheme(Theme theme) {
    for (const auto& [each, name] : kThemes)
        if (each == theme) system_.keep(kThemeKey, std::string(name));
    showTheme(theme);
}

void TrainerWindow::showPreview() {
    if (camera_.liveImage())
        view.setCharacters({}, 0);
    else
        view.setCharacters(trainer_.preview(), trainer_.mismatch(), trainer_.labelling().pointedAt());
    textsChanged();
}

// Another image, or the current one is decoded.
void TrainerWindow::partChanged() {
    if (std::exchange(shownPath_, partTip()) != partTip()) {
        typed_ = false;
        camera_.showOpened();
    }
    showPart();
}

void TrainerWindow::showPart() {
    if (const engine::GreyImage* live = camera_.liveImage()) return view.setImage(live, {});
    const OpenedParts& parts = trainer_.parts();
    // The image before stays while the next one is being opened, which mostly takes less than one notices.
    if (parts.isDecoding() && !shownImage_->empty()) {
        opening_ = std::chrono::steady_clock::now();
        return;
    }
    opening_.reset();
    shownImage_ = parts.sharedImage();
    const std::string invitation = kOpenText + (actions.openRecent.enabled() ? kOrRecentText : "");
    view.setImage(shownImage_.get(), parts.current() < 0  ? invitation
                                     : parts.isDecoding() ? kOpeningText
                                                          : parts.problem());
    showMark();
}

void TrainerWindow::showMark() {
    const OpenedParts& parts = trainer_.parts();
    if (place_ && parts.current() >= 0 && parts.path(parts.current()) == place_->first)
        view.setMarked(place_->second);
    else
        place_.reset();
}

// One that is not open is opened.
void TrainerWindow::showImage(const std::string& image) {
    OpenedParts& parts = trainer_.parts();
    if (parts.current() >= 0 && parts.path(parts.current()) == image) return;
    tell(parts.open({image}).problems);
    for (int index = 0; index < parts.count(); ++index)
        if (parts.path(index) == image) parts.setCurrent(index);
}

void TrainerWindow::showPlace(const std::string& image, const engine::Region& box) {
    place_ = {image, box};
    showImage(image);
    showMark();
}

void TrainerWindow::startReadAll() {
    const OpenedParts& parts = trainer_.parts();
    std::vector<ReadAll::Task> tasks;
    for (int index = 0; index < parts.count(); ++index) {
        const std::string& path = parts.path(index);
        std::optional<std::string> expected = trainer_.labelling().labels().text(path);
        if (expected) std::erase(*expected, ' ');
        tasks.push_back({path, std::move(expected), trainer_.adjustments().settingsOf(path)});
    }
    readAll.start(
        std::make_unique<ReadAll>(std::make_shared<const engine::FontReader>(trainer_.tool().reader()),
                                  parts.decoder(), std::move(tasks)));
    platform_.show(readAll);
}

void TrainerWindow::showLongOpening() {
    if (!opening_ || std::chrono::steady_clock::now() - *opening_ < kUnnoticed) return;
    opening_.reset();
    shownImage_ = std::make_shared<engine::GreyImage>();
    if (!camera_.liveImage()) view.setImage(shownImage_.get(), kOpeningText);
}

// What can be done with the font, and what was done with it.
void TrainerWindow::showActs() {
    FontActs& acts = trainer_.acts();
    const bool training = trainer_.isTraining(), loaded = trainer_.tool().currentFont().has_value();
    const auto correction = tools.undoText();
    const auto undo = correction ? correction : acts.undoText(), redo = acts.redoText();
    actions.undo.setText(undo ? "&" + withoutAccessKeys(*undo) : kUndoText);
    actions.undo.setEnabled(undo.has_value());
    actions.redo.setText(redo ? "&" + withoutAccessKeys(*redo) : kRedoText);
    actions.redo.setEnabled(redo.has_value());
    actions.fontNew.setEnabled(!training);
    actions.fontSelect.setEnabled(!training);
    actions.fontSave.setEnabled(trainer_.control().screen().train.cmdSaveFont.enabled() || acts.isUnsaved());
    actions.fontSaveCopy.setEnabled(loaded);
    actions.fontAccuracy.setEnabled(loaded && !training);
    showReadAllPossible();
    actions.fontRestore.setEnabled(!training);
    tellRecovered(acts.takeRecovered());
    textsChanged();
}

void TrainerWindow::showReadAllPossible() {
    actions.readAll.setEnabled(trainer_.parts().count() > 0 && trainer_.tool().isTrained() &&
                               !trainer_.isTraining());
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
    actions.stopReading.setEnabled(trainer_.isWorking() || labelLists_.isIncluding());
    actions.saveLabels.setEnabled(parts.count() > 0);
    actions.includeLabelled.setEnabled(parts.count() > 0 && !labelLists_.isIncluding());
    showReadAllPossible();
    actions.readAgain.setEnabled(current >= 0 && !trainer_.isWorking());
    textsChanged();
}

void TrainerWindow::showCheck() {
    checkText_ = trainer_.checkText();
    engine::EmbeddedTool& tool = trainer_.tool();
    if (const engine::HeldOutResult* check = tool.heldOutCheck(); check && !checkText_.empty())
        if (const std::string next = guidanceText(*tool.samples(tool::SampleKind::Committed), *check);
            !next.empty())
            checkText_ += "\n" + next;
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
    const std::string note = trainer_.isLooking() ? std::string() : tools.note();
    return (previewWarns() ? "\u26A0 " : "") + trainer_.previewText() + (note.empty() ? "" : ", " + note);
}

std::string TrainerWindow::viewDescription() const {
    if (!view.image()) return view.message();
    const std::string selection = tools.selectionText();
    return selection.empty() ? trainer_.previewText() : selection;
}

std::string TrainerWindow::noticeText() const {
    const std::string& notice = trainer_.acts().notice();
    if (!notice.empty()) return notice;
    const std::string hint = tools.modeHint();
    const bool lacksFont = trainer_.parts().count() > 0 && !trainer_.tool().currentFont();
    return hint.empty() && lacksFont ? kNoFontText : hint;
}

void TrainerWindow::open(const std::vector<std::string>& paths) {
    forgetProblems();
    std::vector<std::string> images;
    std::vector<std::string> fonts;
    for (const std::string& path : paths) (isFontFile(path) ? fonts : images).push_back(path);
    if (!images.empty()) sources_.open(images);
    for (const std::string& font : fonts) tell(openFontFile(trainer_, platform_, font));
}

void TrainerWindow::tell(const std::vector<std::string>& lines) {
    problems_.insert(problems_.end(), lines.begin(), lines.end());
    if (problems_.size() > kMostProblemLines) {
        const std::size_t more = problems_.size() - (kMostProblemLines - 1);
        problems_.resize(kMostProblemLines - 1);
        problems_.push_back("... and " + std::to_string(more) + " more");
    }
    textsChanged();
}

// Before what could not be opened: it stays until it is dismissed.
void TrainerWindow::tellRecovered(const std::vector<std::string>& lines) {
    problems_.insert(problems_.begin() + static_cast<std::ptrdiff_t>(recovered_), lines.begin(), lines.end());
    recovered_ = std::min(recovered_ + lines.size(), kMostProblemLines - 1);
    tell({});
}

void TrainerWindow::forgetProblems() {
    problems_.resize(recovered_);
}

void TrainerWindow::dismissProblems() {
    problems_.clear();
    recovered_ = 0;
    textsChanged();
}

void TrainerWindow::showGuide() {
    if (!system_.showGuide())
        platform_.messageBox(
            {"The operator guide is not installed beside this program, or there is no browser to show it.",
             "Operator Guide", ui::MessageBox::Buttons::Ok, ui::MessageBox::Icon::Information});
}

void TrainerWindow::save() {
    ui::Button& button = trainer_.control().screen().train.cmdSaveFont;
    if (button.enabled())
        button.press();
    else
        trainer_.acts().save();
}

std::string TrainerWindow::askForCopy(const std::string& font) {
    FileQuestion question{"Save Copy of " + font, {}, false, {{"Fonts", {"*.nnd"}}, {"All files", {"*"}}}};
    question.fileName = font + ".nnd";
    return system_.chooseNewFile(question);
}

void TrainerWindow::saveCopy() {
    const auto font = trainer_.tool().currentFont();
    if (!font) return;
    const std::string file = askForCopy(*font);
    if (file.empty()) return;
    try {
        trainer_.history().exportFont(*font, file);
        trainer_.acts().say("A copy of " + *font + " is in " + file);
    } catch (...) {
        trainer_.acts().say("The copy could not be written: " + currentFailure().description());
    }
}

void TrainerWindow::newFont() {
    trainer_.newFont();
    trainer_.control().screen().sample.txtSampleInput.setFocus();
}

void TrainerWindow::selectFont() {
    trainer_.acts().leaveDecision();
    trainer_.control().screen().font.cmdSelectFont.press();
}

void TrainerWindow::restoreFont() {
    RestoreForm form(platform_, trainer_.history().versions(""), trainer_.control().selectedFont(),
                     [this](const tool::FontVersion& version, const std::string& name) {
                         trainer_.acts().restore(version, name);
                     });
    platform_.showModal(form);
}

void TrainerWindow::showKeys() {
    KeysForm form;
    platform_.showModal(form);
}

void TrainerWindow::showAbout() {
    platform_.messageBox(
        {"Dravik Trainer " DRAVIK_VERSION "\r\rBuilds and maintains OCR fonts from part images.\r\rFonts: " +
             trainer_.folder().fontsFolder(),
         "About Dravik Trainer", ui::MessageBox::Buttons::Ok, ui::MessageBox::Icon::Information});
}

bool TrainerWindow::close() {
    if (ended_) return true;
    const bool training = trainer_.isTraining();
    if (training || !trainer_.history().unsavedFonts().empty()) {
        ClosingForm form(platform_, trainer_.history(), training,
                         [this](const std::string& font) { return askForCopy(font); });
        platform_.showModal(form);
        if (!form.mayEnd()) {
            showActs();
            return false;
        }
    }
    end();
    return true;
}

void TrainerWindow::end() {
    if (std::exchange(ended_, true)) return;
    trainer_.end();
}

std::vector<ui::Timer*> TrainerWindow::timers() {
    return {&trainer_.checkTimer(), &trainer_.workTimer(), &trainer_.labelling().keepTimer(),
            &labelLists_.timer(),   &strip.decodeTimer(),  &sources_.watchTimer()};
}

}  // namespace dravik::trainer
