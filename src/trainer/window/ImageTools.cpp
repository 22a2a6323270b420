#include "trainer/window/ImageTools.h"

#include <cmath>
#include <utility>

#include "trainer/window/ImageSettingsForm.h"

namespace dravik::trainer {
namespace {

// Others than the font's answer that are offered have at least this confidence, and are so many at most.
constexpr double kLeastOffered = 0.01;
constexpr std::size_t kMostOffered = 6;

// In a menu "&" marks an access key.
std::string caption(const std::string& character, double confidence) {
    return (character == "&" ? "&&" : character) + "    " + std::to_string(std::lround(100 * confidence)) +
           " %";
}

}  // namespace

ImageTools::ImageTools(Trainer& trainer, ui::Platform& platform, WindowActions& actions, PartViewModel& view)
    : trainer_(trainer), platform_(platform), actions_(actions), view_(view) {
    connectActions();
    ImageAdjustments& adjustments = trainer.adjustments();
    connections_.push_back(view.regionDrawn.connect([this] { setRegion(view_.region().region()); }));
    connections_.push_back(view.characterPicked.connect(
        [this](int character, ViewPoint place) { showMenuOf(character, place); }));
    view.boxes.corrected = [this](const BoxChange& change) { takeCorrection(change); };
    const auto show = [this] { showState(); };
    connections_.push_back(view.changed.connect(show));
    connections_.push_back(view.modeChanged.connect(show));
    connections_.push_back(trainer.previewChanged.connect(show));
    connections_.push_back(adjustments.settingsChanged.connect(show));
    connections_.push_back(adjustments.charactersChanged.connect(show));
    connections_.push_back(trainer.parts().currentChanged.connect([this] {
        ownRegion_ = trainer_.adjustments().hasOwnRegion();
        showState();
    }));
    actions.readingOnImage.setChecked(true);
    showState();
}

void ImageTools::connectActions() {
    const auto on = [](Action& action, auto body) { action.triggered.subscribe(body); };
    on(actions_.region, [this] { toggle(ViewMode::Region); });
    on(actions_.regionForImage, [this] { toggleOwnRegion(); });
    on(actions_.clearRegion, [this] { setRegion(std::nullopt); });
    on(actions_.imageSettings, [this] { openSettings(); });
    on(actions_.correctCharacters, [this] { toggle(ViewMode::Boxes); });
    on(actions_.splitCharacter, [this] { view_.boxes.split(); });
    on(actions_.joinCharacters, [this] { view_.boxes.join(); });
    on(actions_.addCharacter, [this] {
        view_.setMode(ViewMode::Boxes);
        view_.boxes.add(view_.proposal(ViewMode::Boxes));
    });
    on(actions_.removeCharacter, [this] { view_.boxes.remove(); });
    on(actions_.restoreCharacters, [this] { trainer_.adjustments().restoreFound(); });
    on(actions_.readingOnImage, [this] {
        actions_.readingOnImage.setChecked(!actions_.readingOnImage.checked());
        view_.setShowsReading(actions_.readingOnImage.checked());
    });
}

void ImageTools::toggle(ViewMode mode) {
    view_.setMode(view_.mode() == mode ? ViewMode::Look : mode);
    showState();
}

void ImageTools::showState() {
    const ImageAdjustments& adjustments = trainer_.adjustments();
    const auto settings = adjustments.settings();
    if (view_.region().region() != settings.region && !view_.isDragging()) view_.setRegion(settings.region);
    view_.boxes.usualAngle = settings.region ? settings.region->angle : 0;
    const bool hasImage = view_.image() != nullptr, corrects = view_.mode() == ViewMode::Boxes;
    const int selected = view_.boxes.selected();
    actions_.region.setEnabled(hasImage);
    actions_.region.setChecked(view_.mode() == ViewMode::Region);
    actions_.regionForImage.setEnabled(hasImage);
    actions_.regionForImage.setChecked(ownRegion_);
    actions_.clearRegion.setEnabled(hasImage && settings.region.has_value());
    actions_.imageSettings.setEnabled(!trainer_.isTraining());
    actions_.correctCharacters.setEnabled(hasImage && !trainer_.isLooking());
    actions_.correctCharacters.setChecked(corrects);
    actions_.addCharacter.setEnabled(hasImage && !trainer_.isLooking());
    for (Action* action : {&actions_.splitCharacter, &actions_.joinCharacters, &actions_.removeCharacter})
        action->setEnabled(corrects && selected >= 0);
    actions_.restoreCharacters.setEnabled(adjustments.isCorrected());
}

void ImageTools::setRegion(const std::optional<engine::RotatedBox>& region) {
    trainer_.adjustments().setRegion(region, ownRegion_);
}

void ImageTools::toggleOwnRegion() {
    ownRegion_ = !ownRegion_;
    const auto region = trainer_.adjustments().settings().region;
    if (region)
        setRegion(region);
    else
        showState();
}

std::optional<std::string> ImageTools::undoText() const {
    const auto words = view_.mode() == ViewMode::Boxes ? trainer_.adjustments().undoWords() : std::nullopt;
    return words ? std::optional("Undo " + *words) : std::nullopt;
}

void ImageTools::undo() {
    const auto* kept = trainer_.adjustments().keptLabels();
    const auto labels = kept ? *kept : ImageAdjustments::Labels{};
    trainer_.adjustments().undoCorrection();
    ui::TextBox& box = trainer_.control().screen().sample.txtSampleInput;
    if (labels.before != labels.after && box.text() == labels.after) box.edit(labels.before);
}

std::string ImageTools::note() const {
    const ImageAdjustments& adjustments = trainer_.adjustments();
    if (trainer_.parts().current() < 0) return {};
    if (adjustments.isCorrected()) return "corrected by hand";
    if (adjustments.hasOwnRegion() && adjustments.settings().region) return "in the region of this image";
    return adjustments.settings().region ? "in the region" : "";
}

std::string ImageTools::modeHint() const {
    switch (view_.mode()) {
        case ViewMode::Region:
            return "Drag a frame around the print, or use Enter, arrows, Shift and Ctrl; Escape ends";
        case ViewMode::Boxes:
            return "Click a character: S splits, J joins with the next, A adds, Delete removes; Escape ends";
        case ViewMode::Look:
            break;
    }
    return {};
}

std::string ImageTools::selectionText() const {
    const int selected = view_.mode() == ViewMode::Boxes ? view_.boxes.selected() : -1;
    const auto& characters = trainer_.preview();
    if (selected < 0 || selected >= static_cast<int>(characters.size())) return {};
    const std::string& label = characters[static_cast<std::size_t>(selected)].label;
    const engine::ReadCharacter* read = view_.readingOf(selected);
    return "character " + std::to_string(selected + 1) + " of " + std::to_string(characters.size()) +
           (label.empty() ? "" : ", labelled " + label) +
           (read ? ", read as " + engine::shownCharacter(*read) : "");
}

void ImageTools::takeCorrection(const BoxChange& change) {
    const auto& before = trainer_.preview();
    // A proposed text is proposed anew.
    const bool labelled = !trainer_.labelling().isProposed() && trainer_.mismatch() == 0 && !before.empty() &&
                          !before.front().label.empty();
    trainer_.adjustments().correct(view_.boxes.boxes(), change.words);
    if (!labelled) return;
    const std::string text = trainer_.control().screen().sample.txtSampleInput.text();
    labelsFollow(change);
    trainer_.adjustments().keepLabels({text, trainer_.control().screen().sample.txtSampleInput.text()});
}

void ImageTools::openSettings() {
    ImageSettingsForm form(trainer_.adjustments().settings());
    form.accepted = [this](const engine::SegmentationSettings& settings) {
        trainer_.adjustments().set(settings, ownRegion_);
    };
    platform_.showModal(form);
}

void ImageTools::showMenuOf(int character, ViewPoint place) {
    if (!view_.popUp) return;
    const auto index = static_cast<std::size_t>(character);
    ui::PopupMenu menu("characterMenu", "Character");
    if (const engine::ReadCharacter* read = view_.readingOf(character)) {
        const auto offer = [&](const std::string& text, double confidence) {
            menu.add("take" + text, caption(text, confidence)).click.subscribe([this, index, text] {
                takeInstead(index, text);
            });
        };
        offer(read->character, read->confidence);
        for (const engine::Alternative& other : read->alternatives)
            if (other.confidence >= kLeastOffered && menu.items().size() < kMostOffered)
                offer(other.character, other.confidence);
        menu.add("separator", "-");
    }
    const auto act = [&](Action& action) {
        menu.add(action.name(), action.face().text).click.subscribe([this, &action, character] {
            view_.setMode(ViewMode::Boxes);
            view_.boxes.select(character);
            showState();
            action.trigger();
        });
    };
    act(actions_.splitCharacter);
    act(actions_.joinCharacters);
    act(actions_.removeCharacter);
    view_.popUp(menu, place);
}

// Characters that are not typed yet get what is read there first, so that the text stands where it belongs.
void ImageTools::takeInstead(std::size_t character, const std::string& text) {
    const std::size_t count = trainer_.preview().size();
    for (std::size_t i = 0; i < count; ++i) {
        if (!trainer_.preview()[i].label.empty()) continue;
        const engine::ReadCharacter* read = view_.readingOf(static_cast<int>(i));
        trainer_.insertTyped(i, read ? read->character : "?");
    }
    trainer_.replaceTyped(character, text);
}

// Where every character had its label before, the labels go along.
void ImageTools::labelsFollow(const BoxChange& change) {
    for (std::size_t i = change.added; i < change.removed; ++i)
        trainer_.replaceTyped(change.at + change.added, "");
    if (change.added <= change.removed) return;
    const std::vector<std::string> seen = trainer_.suggestions();
    for (std::size_t i = change.removed; i < change.added; ++i) {
        const std::size_t place = change.at + i;
        trainer_.insertTyped(place, place < seen.size() ? seen[place] : "?");
    }
}

}  // namespace dravik::trainer
