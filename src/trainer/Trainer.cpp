#include "trainer/Trainer.h"

#include <algorithm>
#include <utility>

#include "base/Failure.h"
#include "base/Text.h"
#include "engine/scene/Scene.h"
#include "tool/CaseRule.h"
#include "tool/IncludeRules.h"
#include "trainer/NearImages.h"
#include "trainer/ScreenPlatform.h"
#include "trainer/TypedDivision.h"

namespace dravik::trainer {
namespace {

constexpr char kProgramName[] = "Dravik Trainer";
constexpr char kStopped[] = "Stopped before the characters were found";

std::string counted(std::size_t count, const std::string& what) {
    return std::to_string(count) + (count == 1 ? " character " : " characters ") + what;
}

}  // namespace

struct Trainer::Parts {
    Parts(ui::Platform& platform, const JobFolder& jobs, ImageDecoder decoder, bool remembersFont)
        : folder(jobs),
          tool(std::make_shared<engine::EmbeddedTool>(folder, remembersFont)),
          opened(std::move(decoder)),
          screenPlatform(platform),
          control(screenPlatform, folder) {
        opened.decodeElsewhere = [this] { decode(); };
        // The histogram that was being created is seen now.
        screenPlatform.shown = [this] {
            ui::StatusPanel& message = control.screen().sbr.panel("Message");
            if (message.text() == "Creating histogram...") message.setText("");
        };
    }

    bool isTraining() { return control.screen().train.tmrTrain.enabled(); }

    // The text as Include hands it to the tool.
    std::string textToInclude() {
        const auto& typing = control.screen().sample;
        auto text = tool::textToInclude(typing.txtSampleInput.text());
        if (!typing.chkCase.checked() || text.empty()) return text;
        return tool::inCase(text, tool::fontCase(*tool));
    }

    void editTyped(std::size_t index, std::size_t replaced, const std::string& text) {
        auto& box = control.screen().sample.txtSampleInput;
        const std::vector<std::string> typed = characters(tool::textToInclude(box.text()));
        std::string all;
        for (std::size_t i = 0; i < typed.size(); ++i) {
            if (i == index) all += text;
            if (i < index || i >= index + replaced) all += typed[i];
        }
        box.setText(index >= typed.size() ? all + text : all);
    }

    void findPreview() {
        preview.clear();
        mismatch = 0;
        previewText.clear();
        if (opened.current() < 0) {
            previewText = "No image is open";
        } else if (!opened.problem().empty()) {
            previewText = opened.problem();
        } else if (isLooking()) {
            previewText = "Looking for characters...";
        } else if (stopped) {
            previewText = kStopped;
        } else {
            const auto& found = tool->found();
            const auto& boxes = tool->characterBoxes();
            const auto typed = characters(textToInclude());
            preview.reserve(found.size());
            for (std::size_t i = 0; i < found.size(); ++i)
                preview.push_back({found[i], i < typed.size() ? typed[i] : std::string(), boxes[i].place,
                                   labelling->doubt(i)});
            previewText = counted(found.size(), "found");
            if (typed.empty()) return;
            if (tool->division() && !adjustments->isCorrected())
                previewText = counted(found.size(), "found by the text") + " (" +
                              std::to_string(tool->foundScene()->characters()) + " without it)";
            mismatch = static_cast<int>(typed.size()) - static_cast<int>(found.size());
            const std::size_t doubts = labelling->doubts();
            if (!labelling->isProposed())
                previewText += ", " + std::to_string(typed.size()) + " typed";
            else
                previewText += doubts == 0 ? ", text proposed"
                                           : ", text proposed, " + std::to_string(doubts) + " in doubt";
        }
    }

    // Text that is only proposed comes from the characters as they are.
    void decideDivision() {
        if (opened.current() < 0 || !opened.problem().empty() || isLooking() || stopped) return;
        division->decide(labelling->isProposed() ? std::string() : textToInclude());
        deliverDivision(patience);
    }

    void deliverDivision(std::chrono::milliseconds within) {
        if (!division->busy()) return;
        division->deliver(within);
        workTimer.setEnabled(isWorking());
    }

    bool isWorking() const { return work.busy() || division->busy(); }

    // Why there is nothing to read, in words; "" when there is.
    std::string noteOfReading() {
        if (opened.current() < 0) return "No image is open";
        if (!opened.problem().empty()) return opened.problem();
        if (isLooking()) return "Looking for characters...";
        if (stopped) return kStopped;
        if (isTraining()) return "The font is being trained";
        if (!tool->currentFont()) return "No font is selected";
        if (!tool->isTrained()) return "The font is not trained yet";
        return {};
    }

    void startReading() {
        reading = {};
        reading.note = noteOfReading();
        if (isLooking()) return;
        work.cancel();
        doing = Doing::Nothing;
        if (opened.image().empty() || stopped) return;
        EmbeddedReading read;
        if (reading.note.empty()) {
            read = tool->readingWork();
            reading.note = "Reading...";
        }
        // Labels are proposed before any training, too.
        start(Doing::Reading, [this, read, candidates = tool->candidatesWork()](const std::stop_token& stop) {
            return [this, reads = read != nullptr,
                    characters = read ? read(stop) : std::vector<engine::ReadCharacter>(),
                    proposed = candidates(stop)]() mutable {
                if (reads) takeReading(characters);
                labelling->propose(std::move(proposed));
            };
        });
    }

    void takeReading(const std::vector<engine::ReadCharacter>& characters) {
        reading = {};
        reading.available = true;
        for (const auto& character : characters) {
            if (reading.lines.empty() || reading.lines.back().back().place.line != character.place.line)
                reading.lines.emplace_back();
            reading.lines.back().push_back(character);
        }
        if (reading.lines.empty()) reading.note = "No characters found";
        if (readingReady) readingReady();
    }

    bool isLooking() const { return doing == Doing::Decoding || doing == Doing::Finding; }

    void decode() {
        stopped = false;
        division->imageChanged();
        tool->shareImage(std::make_shared<engine::GreyImage>());
        goNear();
        start(Doing::Decoding,
              [this, decode = nearby.decoding(opened.path(opened.current()))](const std::stop_token&) {
                  return [this, decoded = decode()] { opened.setDecoded(decoded); };
              });
    }

    void goNear() {
        const int current = opened.current();
        std::vector<std::string> paths;
        for (const int index : {current, current + 1, current - 1})
            if (current >= 0 && index >= 0 && index < opened.count()) paths.push_back(opened.path(index));
        nearby.goTo(std::move(paths));
    }

    // The current image is decoded, or there is none.
    void findCharacters() {
        work.cancel();
        doing = Doing::Nothing;
        stopped = false;
        division->imageChanged();
        settings = adjustments->settings();
        const auto image = opened.sharedImage();
        if (image->empty()) return tool->shareImage(image);
        nearby.decodeAll();
        start(Doing::Finding, [this, image, settings = settings,
                               path = opened.path(opened.current())](const std::stop_token& stop) {
            const auto seen = std::make_shared<engine::Scene>(engine::findScene(image, settings, stop));
            return [this, image, path, seen, digest = digestOf(*image)] {
                tool->shareImage(image, seen);
                tool->setImageName(path, digest);
                labelling->imageFound(digest);
                adjustments->charactersFound();
                if (foundReady) foundReady();
            };
        });
    }

    // The font or its settings may be others: the characters are looked for anew then.
    void lookBySettings() {
        const bool mayLook = opened.current() >= 0 && !opened.isDecoding() && !opened.image().empty();
        if (mayLook && settings != adjustments->settings()) findCharacters();
    }

    using EmbeddedReading = engine::EmbeddedTool::ReadingWork;
    enum class Doing { Nothing, Decoding, Finding, Reading };

    void start(Doing what, NewestWork::Work body) {
        work.start(std::move(body));
        doing = what;
        workTimer.setEnabled(true);
        deliver(patience);
    }

    // What is delivered may start the next work, for which the same patience counts.
    void deliver(std::chrono::milliseconds within) {
        if (std::exchange(delivering, true)) return;
        const auto until = std::chrono::steady_clock::now() + within;
        try {
            while (work.busy()) {
                const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
                    until - std::chrono::steady_clock::now());
                const Doing before = std::exchange(doing, Doing::Nothing);
                if (!work.deliver(std::max(left, std::chrono::milliseconds(0)))) {
                    doing = before;
                    break;
                }
            }
        } catch (...) {
            workFailed(currentFailure());
        }
        delivering = false;
        workTimer.setEnabled(isWorking());
        holdInclude();
    }

    void workFailed(const Failure& failure) {
        work.cancel();
        doing = Doing::Nothing;
        stopped = true;
        reading = {};
        reading.note = previewText = failure.description();
        preview.clear();
    }

    // Include waits for an image and its characters: what it would do without them is look for them while the
    // window stands still. The screen may enable it meanwhile; it is enabled again when it would be now.
    void holdInclude() {
        auto& include = control.screen().sample.cmdInclude;
        const bool holds = isLooking() || stopped || (opened.current() < 0 && tool->image().empty());
        if (holds) include.setEnabled(false);
        if (std::exchange(holdsInclude, holds) && !holds)
            include.setEnabled(!control.selectedFont().empty() &&
                               control.screen().sample.txtSampleInput.enabled());
    }

    std::string findCheck(bool& goesOn) {
        if (isTraining()) return {};
        goesOn = tool->isChecking();
        if (goesOn) return "Held-out check is going on...";
        const engine::HeldOutResult* result = tool->heldOutCheck();
        return result ? engine::heldOutText(*result) : std::string();
    }

    const JobFolder folder;
    const std::shared_ptr<engine::EmbeddedTool> tool;
    OpenedParts opened;
    ScreenPlatform screenPlatform;
    screen::DravikDlg control;
    std::optional<FontActs> acts;
    std::optional<Labelling> labelling;
    std::optional<ImageAdjustments> adjustments;
    std::optional<TypedDivision> division;
    engine::SegmentationSettings settings;  // by which the characters were looked for last

    std::vector<LabelledCharacter> preview;
    int mismatch = 0;
    std::string previewText;
    Reading reading;
    std::string checkText;
    ui::Timer checkTimer{"tmrCheck", 100};

    NearImages nearby{opened.decoder()};
    NewestWork work;
    Doing doing = Doing::Nothing;
    bool delivering = false;
    bool stopped = false;  // by the operator, before the characters were found
    bool holdsInclude = false;
    std::chrono::milliseconds patience = std::chrono::hours(1);
    ui::Timer workTimer{"tmrWork", 15};
    std::function<void()> foundReady, readingReady;
    std::string lastTitle;
    std::vector<ui::Connection> connections;
};

Trainer::Trainer(ui::Platform& platform, const JobFolder& folder, ImageDecoder decoder, bool remembersFont)
    : parts_(std::make_unique<Parts>(platform, folder, std::move(decoder), remembersFont)) {
    auto& parts = *parts_;
    // Who ends the program is asked before; however else it ends, the changes are there again.
    parts.tool->keepUnsaved();
    parts.control.setStep(parts.tool);
    parts.acts.emplace(parts.control, *parts.tool, *parts.tool,
                       [tool = parts.tool] { return tool->currentFont(); });
    parts.labelling.emplace(
        Labelling::Around{parts.screenPlatform, parts.control, *parts.tool, parts.opened, *parts.acts},
        folder.labelsFile());
    parts.adjustments.emplace(*parts.tool, *parts.acts, parts.opened);
    parts.division.emplace(*parts.tool, *parts.adjustments);
    parts.labelling->beforeInclude = [&parts] { parts.division->finish(); };

    const auto refreshPreview = [this, &parts] {
        try {
            parts.decideDivision();
            parts.findPreview();
        } catch (...) {
            parts.preview.clear();
            parts.mismatch = 0;
            parts.previewText = currentFailure().description();
        }
        previewChanged();
    };
    const auto refreshReading = [this, &parts] {
        try {
            parts.startReading();
        } catch (...) {
            parts.reading = {};
            parts.reading.note = currentFailure().description();
        }
        readingChanged();
    };
    parts.readingReady = [this] { readingChanged(); };
    parts.foundReady = [=] {
        refreshPreview();
        refreshReading();
    };
    const auto refreshTitle = [this, &parts] {
        auto now = title();
        if (now == parts.lastTitle) return;
        parts.lastTitle = std::move(now);
        titleChanged();
    };
    const auto refreshCheck = [this, &parts] {
        std::string now;
        bool goesOn = false;
        try {
            now = parts.findCheck(goesOn);
        } catch (...) {
            now = currentFailure().description();
        }
        parts.checkTimer.setEnabled(goesOn);
        if (now == parts.checkText) return;
        parts.checkText = std::move(now);
        checkChanged();
    };
    const auto refreshFont = [=, &parts] {
        parts.adjustments->fontShown();
        parts.lookBySettings();
        refreshTitle();
        refreshPreview();
        refreshReading();
        refreshCheck();
    };
    parts.connections.push_back(parts.checkTimer.tick.connect(refreshCheck));

    auto& connections = parts.connections;
    connections.push_back(parts.opened.currentChanged.connect([=, &parts] {
        parts.labelling->imageComesUp();
        if (!parts.opened.isDecoding()) parts.findCharacters();
        parts.holdInclude();
        refreshPreview();
        refreshReading();
    }));
    connections.push_back(parts.opened.listChanged.connect([&parts] {
        parts.goNear();
        if (!parts.opened.isDecoding()) parts.nearby.decodeAll();
    }));
    connections.push_back(parts.adjustments->settingsChanged.connect(refreshFont));
    connections.push_back(parts.adjustments->charactersChanged.connect([=] {
        refreshPreview();
        refreshReading();
    }));
    connections.push_back(parts.division->changed.connect([=] {
        refreshPreview();
        refreshReading();
    }));
    connections.push_back(parts.workTimer.tick.connect([&parts] {
        parts.deliver({});
        parts.deliverDivision({});
    }));
    connections.push_back(
        parts.control.screen().sample.cmdInclude.changed.connect([&parts](ui::Change change) {
            if (change == ui::Change::Enabled && parts.holdsInclude) parts.holdInclude();
        }));
    // These come after the screen's own procedures, which subscribed first.
    auto& screen = parts.control.screen();
    connections.push_back(parts.labelling->changed.connect(refreshPreview));
    connections.push_back(screen.sample.chkCase.click.connect(refreshPreview));
    connections.push_back(parts.control.fontStateChanged.connect(refreshFont));
    connections.push_back(screen.train.tmrTrain.changed.connect(refreshFont));
    connections.push_back(screen.train.cmdStop.click.connect(refreshFont));
    connections.push_back(screen.train.cmdSaveFont.click.connect(refreshFont));
    connections.push_back(screen.train.cmdRevert.click.connect(refreshFont));
    connections.push_back(parts.acts->changed.connect(refreshTitle));
    connections.push_back(parts.acts->moved.connect(refreshFont));
    refreshFont();
    parts.holdInclude();
}

Trainer::~Trainer() {
    end();
}

screen::DravikDlg& Trainer::control() noexcept {
    return parts_->control;
}

bool Trainer::isTraining() const noexcept {
    return parts_->isTraining();
}

engine::EmbeddedTool& Trainer::tool() noexcept {
    return *parts_->tool;
}

FontActs& Trainer::acts() noexcept {
    return *parts_->acts;
}

Labelling& Trainer::labelling() noexcept {
    return *parts_->labelling;
}

const Labelling& Trainer::labelling() const noexcept {
    return *parts_->labelling;
}

tool::FontHistory& Trainer::history() noexcept {
    return *parts_->tool;
}

OpenedParts& Trainer::parts() noexcept {
    return parts_->opened;
}

ImageAdjustments& Trainer::adjustments() noexcept {
    return *parts_->adjustments;
}

const JobFolder& Trainer::folder() const noexcept {
    return parts_->folder;
}

void Trainer::setPatience(std::chrono::milliseconds patience) {
    parts_->patience = patience;
}

ui::Timer& Trainer::workTimer() noexcept {
    return parts_->workTimer;
}

bool Trainer::isLooking() const noexcept {
    return parts_->isLooking();
}

bool Trainer::isWorking() const noexcept {
    return parts_->isWorking();
}

void Trainer::stopWorking() {
    if (!isWorking()) return;
    const bool looked = isLooking();
    parts_->division->cancel();
    if (!parts_->work.busy()) return parts_->workTimer.setEnabled(false);
    parts_->work.cancel();
    parts_->workTimer.setEnabled(false);
    parts_->doing = Parts::Doing::Nothing;
    if (parts_->opened.isDecoding()) {
        parts_->opened.setDecoded({parts_->opened.sharedImage(), "Stopped before the image was decoded"});
    } else {
        parts_->stopped = looked;
        parts_->findPreview();
        parts_->reading = {};
        parts_->reading.note = looked ? kStopped : "Stopped before the characters were read";
        previewChanged();
        readingChanged();
    }
    parts_->holdInclude();
}

void Trainer::lookAgain() {
    OpenedParts& opened = parts_->opened;
    if (opened.current() < 0) return;
    parts_->nearby.forget(opened.path(opened.current()));
    opened.setCurrent(opened.current());
}

const std::vector<LabelledCharacter>& Trainer::preview() const noexcept {
    return parts_->preview;
}

int Trainer::mismatch() const noexcept {
    return parts_->mismatch;
}

void Trainer::replaceTyped(std::size_t index, const std::string& text) {
    parts_->editTyped(index, 1, text);
}

void Trainer::insertTyped(std::size_t index, const std::string& text) {
    parts_->editTyped(index, 0, text);
}

std::vector<std::string> Trainer::suggestions() {
    std::vector<std::string> result;
    for (const engine::SuggestedCharacter& one : parts_->tool->suggest())
        result.push_back(one.best().character);
    return result;
}

std::string Trainer::previewText() const {
    return parts_->previewText;
}

const std::string& Trainer::checkText() const noexcept {
    return parts_->checkText;
}

ui::Timer& Trainer::checkTimer() noexcept {
    return parts_->checkTimer;
}

void Trainer::checkFont() {
    engine::EmbeddedTool& tool = *parts_->tool;
    if (!isTraining() && !tool.isChecking() && !tool.heldOutCheck()) tool.startCheck();
    parts_->checkTimer.setEnabled(true);
}

const Reading& Trainer::reading() const noexcept {
    return parts_->reading;
}

std::string Trainer::title() const {
    // A font that could not be loaded stands on the screen all the same.
    if (!parts_->tool->currentFont() || parts_->control.selectedFont().empty()) return kProgramName;
    return parts_->control.selectedFont() + (parts_->acts->isUnsaved() ? "* - " : " - ") + kProgramName;
}

std::string Trainer::includeAsLabelled() {
    parts_->screenPlatform.setAnswersYes(true);
    std::string reason;
    try {
        reason = parts_->labelling->includeUnasked();
    } catch (...) {
        reason = currentFailure().description();
    }
    parts_->screenPlatform.setAnswersYes(false);
    return reason;
}

// The font manager makes it, without being shown but for what it has to say of a failure.
void Trainer::newFont() {
    parts_->acts->leaveDecision();
    parts_->screenPlatform.workNext = [this](ui::Form& manager) {
        manager.load();
        const auto before = std::pair(parts_->tool->GetFontList(), parts_->tool->currentFont());
        const auto press = [&](const char* button) {
            dynamic_cast<ui::Button&>(*manager.find(button)).press();
        };
        press("cmdNewFont");
        const auto& said = dynamic_cast<ui::StatusBar&>(*manager.find("sbr")).panel("Text").text();
        if (said.starts_with("NewFont err "))
            parts_->screenPlatform.showModal(manager);
        else
            press(before == std::pair(parts_->tool->GetFontList(), parts_->tool->currentFont())
                      ? "CancelButton"
                      : "OKButton");
    };
    parts_->control.screen().font.cmdSelectFont.press();
    parts_->screenPlatform.workNext = nullptr;
}

void Trainer::end() {
    parts_->screenPlatform.beginEnd();
    parts_->control.UserControl_Terminate();
}

}  // namespace dravik::trainer
