#include "trainer/window/ImageSettingsForm.h"

#include <charconv>
#include <cmath>
#include <string>

#include "base/Text.h"

namespace dravik::trainer {
namespace {

using engine::SegmentationSettings;

constexpr char kHint[] = "Pixels from the image's corner; the angle in degrees clockwise, around the middle.";
constexpr char kWrong[] = "A figure is missing or out of range.";

std::string textOf(float value) {
    const float rounded = std::round(value * 10) / 10;
    std::array<char, 32> digits{};
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), rounded).ptr};
}

}  // namespace

ImageSettingsForm::ImageSettingsForm(const SegmentationSettings& settings)
    : ui::Form("imageSettingsForm", "Image Settings") {
    cboPolarity.setItems({"Automatic", "Dark on light", "Light on dark"});
    cboKind.setItems({"Automatic", "Solid strokes", "Dots"});
    cboPolarity.setAccessibleName("Polarity");
    cboKind.setAccessibleName("Kind of print");
    txtSmallest.setAccessibleName("Smallest height");
    std::vector<ui::Layout> figures;
    for (std::size_t i = 0; i < txtRegion.size(); ++i) {
        const std::string& text = lblRegion[i].caption();
        txtRegion[i].setAccessibleName(text.substr(1));
        figures.push_back(ui::item(lblRegion[i]));
        figures.push_back(ui::item(txtRegion[i]).atLeast(900, 0));
    }
    setLayout(ui::column({
        ui::table({{ui::item(lblPolarity), ui::item(cboPolarity).atLeast(3000, 0)},
                   {ui::item(lblKind), ui::item(cboKind).atLeast(3000, 0)},
                   {ui::item(lblSmallest), ui::item(txtSmallest)}}),
        ui::item(lblSmallestHint),
        ui::item(chkRegion),
        ui::row(std::move(figures)),
        ui::item(lblHint),
        ui::row({ui::item(cmdAutomatic), ui::space(), ui::item(OKButton), ui::item(CancelButton)}),
    }));
    defaultButton = &OKButton;
    cancelButton = &CancelButton;

    loading.subscribe([this, settings] { show(settings); });
    activated.subscribe([this] { cboPolarity.setFocus(); });
    chkRegion.click.subscribe([this] { showPossible(); });
    txtSmallest.textChanged.subscribe([this] { showPossible(); });
    for (ui::TextBox& text : txtRegion) text.textChanged.subscribe([this] { showPossible(); });
    cmdAutomatic.click.subscribe([this] { show({}); });
    OKButton.click.subscribe([this] {
        const auto settings = entered();
        if (!settings) return;
        unload();
        if (accepted) accepted(*settings);
    });
    CancelButton.click.subscribe([this] { unload(); });
}

void ImageSettingsForm::show(const SegmentationSettings& settings) {
    const engine::PrintSettings& print = settings.print;
    cboPolarity.setListIndex(static_cast<int>(print.polarity));
    cboKind.setListIndex(static_cast<int>(print.kind));
    txtSmallest.setText(print.smallestHeight > 0 ? std::to_string(print.smallestHeight) : "");
    chkRegion.setChecked(settings.region.has_value());
    if (const auto& region = settings.region) {
        const std::array<float, 5> values = {region->centreX - region->width / 2,
                                             region->centreY - region->height / 2, region->width,
                                             region->height, region->angle};
        for (std::size_t i = 0; i < values.size(); ++i) txtRegion[i].setText(textOf(values[i]));
    }
    shownRegion_ = settings.region;
    shownText_ = regionText();
    showPossible();
}

std::string ImageSettingsForm::regionText() const {
    std::string text;
    for (const ui::TextBox& figure : txtRegion) text += (text.empty() ? "" : ",") + trimmed(figure.text());
    return text;
}

std::optional<SegmentationSettings> ImageSettingsForm::entered() const {
    SegmentationSettings settings;
    settings.print.polarity = static_cast<engine::Polarity>(cboPolarity.listIndex());
    settings.print.kind = static_cast<engine::PrintKind>(cboKind.listIndex());
    const std::string smallest = trimmed(txtSmallest.text());
    int& height = settings.print.smallestHeight;
    const auto parsed = std::from_chars(smallest.data(), smallest.data() + smallest.size(), height);
    if (!smallest.empty() && (parsed.ec != std::errc{} || parsed.ptr != smallest.data() + smallest.size() ||
                              height < 0 || height > engine::kMostSmallestHeight))
        return std::nullopt;
    if (!chkRegion.checked()) return settings;
    const std::string text = regionText();
    settings.region = shownRegion_ && text == shownText_ ? shownRegion_ : engine::regionNamed(text);
    return settings.region ? std::optional(settings) : std::nullopt;
}

void ImageSettingsForm::showPossible() {
    for (ui::TextBox& text : txtRegion) text.setEnabled(chkRegion.checked());
    const bool good = entered().has_value();
    lblHint.setCaption(good ? kHint : kWrong);
    OKButton.setEnabled(good);
}

}  // namespace dravik::trainer
