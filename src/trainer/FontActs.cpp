#include "trainer/FontActs.h"

#include <algorithm>
#include <set>
#include <utility>

#include "base/Failure.h"
#include "base/Text.h"
#include "base/TimeText.h"
#include "screen/context/Screen.h"
#include "screen/context/ScreenState.h"
#include "tool/Samples.h"

namespace dravik::trainer {
namespace {

using screen::OperatorAct;
using screen::ScreenState;

constexpr char kTakeBack[] = " \u2013 Edit > Undo (Ctrl+Z) brings this back";

}  // namespace

FontActs::FontActs(screen::DravikDlg& control, tool::FontTool& tool, tool::FontHistory& history,
                   CurrentFont currentFont)
    : control_(control), tool_(tool), history_(history), currentFont_(std::move(currentFont)) {
    connections_.push_back(control.actBegun().connect([this] { forgetFailure(); }));
    connections_.push_back(control.failureReported().connect([this](const std::string& text) {
        failure_ = text;
        say(text);
    }));
    connections_.push_back(control.actEnded().connect([this](const OperatorAct& act) { record(act); }));
    connections_.push_back(control.fontStateChanged.connect([this] { fontMayHaveChanged(); }));
    auto& display = control.screen().numeric.cboDisplay;
    connections_.push_back(display.click.connect([this, &display] {
        // An include chooses the uncommitted ones, too, which nobody sees while the characters are shown.
        if (emptyTable() && display.visible()) say("The font has no " + lowerCase(display.text()));
    }));
    auto& timer = control.screen().train.tmrTrain;
    connections_.push_back(timer.changed.connect([this] { changed(); }));
    fontMayHaveChanged();
}

bool FontActs::isTraining() const {
    return control_.screen().train.tmrTrain.enabled();
}

std::optional<std::string> FontActs::undoText() const {
    const auto words = isTraining() ? std::nullopt : history_.undoWords();
    return words ? std::optional("Undo " + *words) : std::nullopt;
}

std::optional<std::string> FontActs::redoText() const {
    const auto words = isTraining() ? std::nullopt : history_.redoWords();
    return words ? std::optional("Redo " + *words) : std::nullopt;
}

// Of a point of which none was kept, as after acts of the commands.
ScreenState FontActs::plainState() const {
    ScreenState state = control_.state();
    state.m_LastInclude.clear();
    state.m_IncludedChars.clear();
    state.markedChars.clear();
    state.addedChars.clear();
    state.figures.clear();
    state.message.clear();
    state.undoEnabled = false;
    state.awaitsDecision = state.saveEnabled = state.revertEnabled = false;
    state.includeEnabled = true;
    return state;
}

void FontActs::undo() {
    step(history_.undoWords(), "Undo", "Undone: ", &tool::FontHistory::undo);
}

void FontActs::redo() {
    step(history_.redoWords(), "Redo", "Done again: ", &tool::FontHistory::redo);
}

void FontActs::step(const std::optional<std::string>& words, const char* source, const char* done,
                    std::string (tool::FontHistory::*move)()) {
    if (!words || isTraining()) return;
    try {
        moving();
        ScreenState state = screen::decodeScreenState((history_.*move)()).value_or(plainState());
        // What was said then would stand beside what is said of this step.
        if (!state.awaitsDecision) state.message.clear();
        const auto font = currentFont_();
        if (font.value_or("") != control_.selectedFont()) control_.showFont(font.value_or(""));
        control_.refreshAfterHistory(state, isUnsaved());
        say(done + *words);
        moved();
    } catch (...) {
        control_.tellFailure(source, currentFailure());
        changed();
    }
}

void FontActs::change(const std::string& words, const std::function<void()>& body,
                      const std::string& notice) {
    std::optional<Failure> failure;
    try {
        moving();
        body();
    } catch (...) {
        failure = currentFailure();
    }
    try {
        ScreenState state = control_.state();
        state.includeEnabled = true;
        control_.refreshAfterHistory(state, isUnsaved());
        history_.endAct(words, screen::encode(state));
    } catch (...) {
        if (!failure) failure = currentFailure();
    }
    if (failure) control_.tellFailure("Change", *failure);
    say(failure ? std::string() : notice);
    moved();
}

bool FontActs::isUnsaved() const {
    const auto font = currentFont_();
    const auto fonts = history_.unsavedFonts();
    return font && std::find(fonts.begin(), fonts.end(), *font) != fonts.end();
}

void FontActs::save() {
    const auto font = currentFont_();
    if (!font) return;
    try {
        history_.saveUnsaved(*font);
        control_.refreshAfterHistory(control_.state(), false);
        say("Saved " + *font);
    } catch (...) {
        const Failure failure = currentFailure();
        const bool isUnsaved = this->isUnsaved();
        if (!isUnsaved) control_.refreshAfterHistory(control_.state(), false);
        control_.tellFailure("SaveFont", failure);
        say(isUnsaved
                ? *font + " could not be saved; its changes are kept. Font > Save Copy... writes it elsewhere"
                : "Saved " + *font + ", which may not have reached the disk");
    }
}

void FontActs::restore(const tool::FontVersion& version, const std::string& name) {
    history_.restoreVersion(version, name);
    show(name);
    say("Restored " + name + " as it was on " + localTimeText(version.when));
}

void FontActs::importFont(const std::string& file, const std::string& name) {
    history_.importFont(file, name);
    show(name);
    say("Copied " + file + " as the font " + name);
}

void FontActs::show(const std::string& name) {
    leaveDecision();
    control_.showFont(name);
    moved();
}

void FontActs::leaveDecision() {
    ScreenState state = control_.state();
    if (!state.awaitsDecision) return;
    state.awaitsDecision = false;
    state.includeEnabled = true;
    control_.refreshAfterHistory(state, isUnsaved());
}

std::vector<std::string> FontActs::takeRecovered() {
    std::vector<std::string> lines;
    for (const tool::RecoveredChanges& found : history_.takeRecovered())
        lines.push_back(tool::recoveredText(found));
    return lines;
}

void FontActs::record(const OperatorAct& act) {
    const std::string failure = std::exchange(failure_, {});
    guardScreen(act);
    if (act.kind == OperatorAct::Kind::UndoOfInclude && failure.empty()) removeUnused(act.before.addedChars);
    ScreenState state = control_.state();
    state.includeEnabled = true;  // it may be held at the moment, until the image's characters are found
    history_.endAct(act.kind == OperatorAct::Kind::Save ? "" : screen::actName(act), screen::encode(state));
    const std::string deleted = screen::deletedText(act);
    if (!deleted.empty()) emptyTable();
    say(!failure.empty() ? failure : deleted.empty() ? "" : deleted + kTakeBack);
    failure_ = failure;
}

// What a failure in the middle of an act leaves on the screen must not lead the next one astray.
void FontActs::guardScreen(const OperatorAct& act) {
    if (act.kind == OperatorAct::Kind::Include) {
        // Learn would offer to include the image once more for the sake of samples left over.
        for (std::size_t left = tool_.GetUncommittedSamples().size(); left > 0; --left)
            tool_.DeleteSample(tool::sampleIdentifier(tool::SampleKind::Uncommitted, 0));
        if (act.characters.empty()) {
            // Nothing was included: Undo would delete the samples of an include before.
            ScreenState before = act.before;
            before.message = act.after.message;
            control_.refreshAfterHistory(before, isUnsaved());
        }
    }
    const auto table = tool_.GetSampleData(tool::kAllCommitted, tool::kSampleFields);
    if (!isTraining() && (!table || table->upperRow() < 1))
        control_.screen().train.cmdTrain.setEnabled(false);
}

// The screen's own Undo takes samples back and leaves the characters in the font that their include brought.
void FontActs::removeUnused(const std::string& brought) {
    const auto table = tool_.GetSampleData(tool::kAllCommitted, tool::kSampleFields);
    std::set<std::string> used;
    for (int row = 1; table && row <= table->upperRow(); ++row) used.insert(table->character(row));
    tool::CharacterSet set = tool_.GetCharacterSet();
    if (std::erase_if(set, [&](const std::string& character) {
            return contains(brought, character) && !used.contains(character);
        }) == 0)
        return;
    tool_.SetCharacterSet(set);
    control_.refreshAfterHistory(control_.state(), isUnsaved());
}

// The screen leaves rows of samples in the table when there are none to show instead, and nothing can be done
// to those. True when there were some.
bool FontActs::emptyTable() {
    const auto& numeric = control_.screen().numeric;
    const int shown = numeric.cboDisplay.listIndex();
    if (numeric.grid.rows() < 2 || shown == screen::kDisplayStatistics) return false;
    const auto table =
        tool_.GetSampleData(shown == screen::kDisplayCommitted ? tool::kAllCommitted : tool::kAllUncommitted,
                            tool::kSampleFields);
    if (table && !table->isEmpty()) return false;
    control_.refreshAfterHistory(control_.state(), isUnsaved());
    return true;
}

// The state before the first act, to which undo goes back.
void FontActs::fontMayHaveChanged() {
    auto font = control_.selectedFont();
    if (font != shownFont_) {
        // Of the run of another font.
        control_.screen().train.lblStatus.setCaption("");
        control_.screen().train.prgTrain.setValue(0);
    }
    if (font != shownFont_ && !font.empty() && currentFont_()) {
        ScreenState state = control_.state();
        state.includeEnabled = true;
        history_.endAct("", screen::encode(state));
        notice_.clear();
    }
    shownFont_ = std::move(font);
    changed();
}

void FontActs::forgetFailure() {
    const bool isShown = !failure_.empty() && notice_.starts_with(failure_);
    failure_.clear();
    if (isShown) say("");
}

void FontActs::say(std::string notice) {
    // What failed in the present act stays in view.
    if (!failure_.empty() && !notice.empty() && notice.find(failure_) == std::string::npos)
        notice = failure_ + " \u2013 " + notice;
    notice_ = std::move(notice);
    changed();
}

}  // namespace dravik::trainer
