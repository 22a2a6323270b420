#include "trainer/window/GalleryForm.h"

#include <algorithm>
#include <map>
#include <utility>

#include "base/Conversions.h"
#include "base/FileSystem.h"
#include "base/NumberFormat.h"
#include "base/Text.h"
#include "engine/font/SampleOrigin.h"
#include "tool/Samples.h"

namespace dravik::trainer {
namespace {

using tool::SampleKind;

constexpr char kTakeBack[] = " \u2013 Edit > Undo (Ctrl+Z) brings this back";
constexpr std::size_t kMostNamed = 12;  // deleted samples
constexpr char kTip[] = "The selected samples are labelled anew with the character that you type";

std::string counted(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " sample" : " samples");
}

}  // namespace

GalleryForm::GalleryForm(Trainer& trainer, ShowPlace showPlace)
    : ui::Form("gallery", "Gallery"), trainer_(trainer), showPlace_(std::move(showPlace)) {
    lblCount.setUsesMnemonic(false);
    cboShown.setAccessibleName("Samples that are shown");
    pictures.setAccessibleName("Samples, the largest Distance first");
    pictures.setToolTip(kTip);
    cmdSource.setToolTip("Open the image that the sample is from, with its place");
    cmdDelete.setToolTip("Delete the selected samples");
    setLayout(ui::column({
        ui::row({ui::item(lblShown), ui::item(cboShown).atLeast(2000, 0), ui::item(lblCount).stretched(),
                 ui::item(cmdSource), ui::item(cmdDelete)}),
        ui::item(pictures).stretched(),
    }));
    resizable = true;

    cboShown.click.subscribe([this] {
        const int index = cboShown.listIndex();
        if (isFollowing_ || index < 0) return;
        if (index == 0)
            show({});
        else if (static_cast<std::size_t>(index) <= choices_.size())
            show({ShownSamples::Kind::Character, choices_[static_cast<std::size_t>(index - 1)]});
        else if (misread_ > 0 && static_cast<std::size_t>(index) == choices_.size() + 1)
            show({ShownSamples::Kind::Misread});
    });
    cmdDelete.click.subscribe([this] { deleteSelected(); });
    cmdSource.click.subscribe([this] { showSource(); });
    pictures.keyDown.subscribe([this](int key, int) {
        if (key == ui::kKeyDelete) deleteSelected();
    });
    pictures.opened.subscribe([this] { showSource(); });
    pictures.typed.subscribe([this](const std::string& text) { relabelSelected(text); });
    pictures.selectionChanged.subscribe([this] {
        showCount();
        tellGrid();
    });
    follow();
}

// What is pointed at elsewhere.
void GalleryForm::follow() {
    screen::DravikDlg& control = trainer_.control();
    screen::Screen& screen = control.screen();
    const auto refreshed = [this] { refresh(); };
    connections_.push_back(trainer_.acts().changed.connect(refreshed));
    connections_.push_back(trainer_.acts().moved.connect(refreshed));
    connections_.push_back(control.fontStateChanged.connect(refreshed));
    connections_.push_back(trainer_.checkChanged.connect(refreshed));
    connections_.push_back(control.barPointed().connect([this](const screen::PointedBar& bar) {
        const std::int32_t code = codeOf(bar.character);
        if (bar.wholeCharacter)
            show({ShownSamples::Kind::Character, code});
        else
            show({ShownSamples::Kind::Range, code, bar.lower, bar.upper});
    }));
    connections_.push_back(screen.numeric.grid.changed.connect([this](ui::Change change) {
        if (change == ui::Change::Selection) followGrid();
    }));
    for (const auto& cell : screen.overview.lblChar)
        connections_.push_back(
            cell->mouseDown.connect([this, label = cell.get()](const ui::MouseEvent& event) {
                if (event.button == ui::kRightButton && !label->caption().empty())
                    show({ShownSamples::Kind::Character, codeOf(label->caption())});
            }));
}

void GalleryForm::followGrid() {
    screen::GridControls& numeric = trainer_.control().screen().numeric;
    if (!isShown_ || isFollowing_ || !samples_ || !numeric.grid.visible() ||
        numeric.cboDisplay.listIndex() != screen::kDisplayCommitted)
        return;
    const auto [top, bottom] = std::minmax({numeric.grid.row(), numeric.grid.rowSelection()});
    if (bottom - top >= kMostRows) return show({});
    ShownSamples wanted{ShownSamples::Kind::Numbers};
    for (int row = std::max(top, 1); row <= bottom && row < numeric.grid.rows(); ++row) {
        const auto place = static_cast<std::size_t>(toInt32(leadingNumber(numeric.grid.text(row, 0))));
        if (place < samples_->size()) wanted.serials.push_back(samples_->samples[place]->serial);
    }
    std::sort(wanted.serials.begin(), wanted.serials.end());
    show(std::move(wanted));
}

// A single sample that is chosen here is the grid's current row.
void GalleryForm::tellGrid() {
    screen::GridControls& numeric = trainer_.control().screen().numeric;
    const std::vector<int> selected = chosen();
    if (selected.size() != 1 || !numeric.grid.visible() ||
        numeric.cboDisplay.listIndex() != screen::kDisplayCommitted)
        return;
    const std::string number = std::to_string(source_->placeOf(selected.front()));
    int row = static_cast<int>(source_->placeOf(selected.front())) + 1;
    if (numeric.grid.text(row, 0) != number)  // sorted by character
        for (row = 1; row < numeric.grid.rows() && numeric.grid.text(row, 0) != number;) ++row;
    if (row >= numeric.grid.rows()) return;
    isFollowing_ = true;
    numeric.grid.select(row, numeric.grid.column(), row, numeric.grid.column());
    isFollowing_ = false;
}

void GalleryForm::setShown(bool shown) {
    if (std::exchange(isShown_, shown) == shown) return;
    refresh();
    shownChanged();
}

void GalleryForm::show(ShownSamples shown) {
    if (shown == shown_ && samples_) return;
    shown_ = std::move(shown);
    samples_.reset();
    refresh();
}

// Those that were selected stay so where they are still shown.
void GalleryForm::refresh() {
    if (!isShown_) return;
    // What was chosen among the samples of another font names none of these.
    std::string font = trainer_.tool().currentFont().value_or("");
    const bool isOther = std::exchange(font_, font) != font, shownBefore = samples_ != nullptr;
    if (isOther) shown_ = {};
    engine::SampleColumnsPtr samples = trainer_.tool().samples(SampleKind::Committed);
    const engine::HeldOutResult* check = trainer_.tool().heldOutCheck();
    const std::size_t misread = check ? check->misread.size() : 0;
    if (samples == samples_ && misread == misread_) return;
    misread_ = misread;
    if (misread == 0 && shown_.kind == ShownSamples::Kind::Misread) shown_ = {};
    std::vector<std::uint64_t> serials;
    const int current = pictures.current();
    if (!isOther)
        for (const int index : pictures.selected()) serials.push_back(source_->sample(index).serial);
    std::sort(serials.begin(), serials.end());
    samples_ = std::move(samples);
    takeSamples(samples_);
    source_ = shown_.kind == ShownSamples::Kind::All
                  ? all_
                  : std::make_shared<GallerySamples>(
                        samples_, shown_,
                        check ? std::span(check->misread) : std::span<const engine::MisreadSample>());
    pictures.setSource(source_);
    std::vector<int> selected;
    for (int index = 0; !serials.empty() && index < source_->count(); ++index)
        if (std::binary_search(serials.begin(), serials.end(), source_->sample(index).serial))
            selected.push_back(index);
    // Where they are no longer among those shown, as after a deletion, the one that comes up in their place.
    if (shownBefore && selected.empty() && !serials.empty() && current >= 0 && source_->count() > 0)
        selected.push_back(std::min(current, source_->count() - 1));
    pictures.select(selected);
    showChoices();
    showCount();
}

void GalleryForm::takeSamples(engine::SampleColumnsPtr samples) {
    if (samples == present_) return;
    present_ = std::move(samples);
    counts_.clear();
    for (const std::int32_t code : present_->codes) ++counts_[code];
    all_ = std::make_shared<GallerySamples>(present_, ShownSamples{});
}

void GalleryForm::showChoices() {
    std::vector<std::string> items{"all characters"};
    choices_.clear();
    int chosenItem = shown_.kind == ShownSamples::Kind::All ? 0 : -1;
    for (const auto& [code, count] : counts_) {
        choices_.push_back(code);
        items.push_back(characterOf(code) + "  (" + std::to_string(count) + ")");
        if (shown_.kind == ShownSamples::Kind::Character && shown_.code == code)
            chosenItem = static_cast<int>(choices_.size());
    }
    if (misread_ > 0) items.push_back("read wrong in the check  (" + std::to_string(misread_) + ")");
    if (shown_.kind == ShownSamples::Kind::Misread) chosenItem = static_cast<int>(items.size()) - 1;
    if (chosenItem < 0) {
        chosenItem = static_cast<int>(items.size());
        items.push_back(shown_.kind == ShownSamples::Kind::Range
                            ? characterOf(shown_.code) + ", Distance " + formatNumber(shown_.lower, "0.000") +
                                  " to " + formatNumber(shown_.upper, "0.000")
                        : shown_.kind == ShownSamples::Kind::Character ? characterOf(shown_.code) + "  (0)"
                                                                       : "the selected rows");
    }
    isFollowing_ = true;
    if (items != cboShown.items()) cboShown.setItems(std::move(items));
    cboShown.setListIndex(chosenItem);
    isFollowing_ = false;
}

void GalleryForm::showCount() {
    const std::size_t selected = pictures.selected().size();
    std::string text = counted(static_cast<std::size_t>(pictures.count()));
    if (pictures.count() > 1 && shown_.kind != ShownSamples::Kind::Misread) text += ", the worst first";
    if (selected > 1) text += "; " + std::to_string(selected) + " selected";
    lblCount.setCaption(std::move(text));
    cmdDelete.setEnabled(selected > 0);
    cmdSource.setEnabled(pictures.count() > 0);
}

std::vector<int> GalleryForm::chosen() const {
    return pictures.selected();
}

std::vector<std::int32_t> GalleryForm::identifiers() const {
    std::vector<std::int32_t> result;
    for (const int index : chosen())
        result.push_back(tool::sampleIdentifier(SampleKind::Committed,
                                                static_cast<std::int32_t>(source_->placeOf(index))));
    return result;
}

void GalleryForm::deleteSelected() {
    const std::vector<std::int32_t> samples = identifiers();
    if (samples.empty() || trainer_.isTraining()) return;
    std::string labels;
    for (const int index : chosen())
        labels += (labels.empty() ? "" : ", ") + characterOf(source_->sample(index).code);
    trainer_.acts().change(
        "", [&] { trainer_.tool().deleteSamples(samples); },
        "Deleted " + (samples.size() <= kMostNamed ? labels : counted(samples.size())) + kTakeBack);
}

void GalleryForm::relabelSelected(const std::string& character) {
    const std::vector<std::int32_t> samples = identifiers();
    if (samples.empty() || trainer_.isTraining()) return;
    trainer_.acts().change(
        "", [&] { trainer_.tool().relabelSamples(samples, character); },
        "Labelled " + counted(samples.size()) + " as " + character + kTakeBack);
}

void GalleryForm::showSource() {
    if (!source_ || pictures.current() < 0) return;
    const engine::Sample& sample = source_->sample(pictures.current());
    const std::string label = characterOf(sample.code);
    if (!sample.origin || !sample.origin->image)
        return trainer_.acts().say("It is not known which image this " + label + " is from");
    const std::string& image = sample.origin->image->name;
    if (!fileExists(image))
        return trainer_.acts().say("This " + label + " is from " + image + ", which is not there any more");
    showPlace_(image, sample.origin->box);
    // The next key is one for the sample.
    pictures.setFocus();
}

}  // namespace dravik::trainer
