// The procedures of the histogram form that take its data and place its bars.
#include <algorithm>

#include "base/Conversions.h"
#include "base/NumberFormat.h"
#include "screen/histogram/dlgCharHist.h"

namespace dravik::screen {
namespace {

constexpr std::size_t kManyValues = 26;
constexpr int kSmallLabel = 8;
constexpr int kLargeLabel = 10;
constexpr double kCharBarWidth = 1;
constexpr double kBinBarWidth = 2;
constexpr double kBinLabelWidth = 4;
constexpr char kDistancePicture[] = "0.000";

// The upper bound decides, so it takes one value more than 26 for the small labels.
int labelPoints(const std::vector<double>& data) {
    return data.size() - 1 >= kManyValues ? kSmallLabel : kLargeLabel;
}

std::string samplesText(double count) {
    return numberText(count) + (count == 1 ? " sample" : " samples");
}

}  // namespace

void dlgCharHist::SetMode(std::int16_t mode) {
    procedures_.run("dlgCharHist.SetMode", "SetMode", [&] {
        mode_ = mode;
        const bool ofFont = mode == kFontHistogram;
        showModeButtons();
        cboChar.setEnabled(!ofFont);
        udThreshold.setVisible(ofFont);
        txtThreshold.setVisible(ofFont);
        txtThreshCaption.setVisible(ofFont);
        txtExceed.setVisible(ofFont);
        auto& samples = sbr.panel("SamplesCaption");
        samples.setText(ofFont ? "Samples" : "Bin Samples");
        samples.setToolTip(ofFont ? "Number of samples for the select character"
                                  : "Number of samples in the selected bin");
        auto& maxDist = sbr.panel("MaxDistCaption");
        maxDist.setText(ofFont ? "MaxDist" : "Total");
        maxDist.setToolTip(ofFont ? "Maximum Distance value for all samples for this character"
                                  : "Total samples for this character");
    });
}

void dlgCharHist::showModeButtons() {
    tlbMain.button("Font").setPressed(mode_ == kFontHistogram);
    tlbMain.button("Char").setPressed(mode_ != kFontHistogram);
}

void dlgCharHist::SetCharCombo() {
    procedures_.run("dlgCharHist.SetCharCombo", "SetCharCombo", [this] {
        cboChar.setItems(chars_);
        if (std::find(chars_.begin(), chars_.end(), character_) != chars_.end()) cboChar.setText(character_);
    });
}

void dlgCharHist::SetLocalDataArray(const std::vector<double>& data) {
    procedures_.run("dlgCharHist.SetLocalDataArray", "SetLocalDataArray", [&] { data_ = data; });
}

void dlgCharHist::SetLocalMaxArray(const std::vector<double>& max) {
    procedures_.run("dlgCharHist.SetLocalMaxArray", "SetLocalMaxArray", [&] { max_ = max; });
}

void dlgCharHist::SetLocalCharArray(const std::vector<std::string>& chars) {
    procedures_.run("dlgCharHist.SetLocalCharArray", "SetLocalCharArray", [&] {
        chars_ = chars;
        SetCharCombo();
    });
}

void dlgCharHist::SetFontHistogram(const std::vector<double>& data, const std::vector<std::string>& chars,
                                   const std::vector<double>& max) {
    procedures_.run("dlgCharHist.SetFontHistogram", "SetFontHistogram", [&] {
        forgetHistogram();
        if (data.empty()) return setMsg("No data");
        if (chars.empty()) return setMsg("No character array");
        if (chars.size() < data.size() || max.size() < data.size())
            throw Failure(RuntimeError::SubscriptOutOfRange);
        character_ = chars.front();
        SetMode(kFontHistogram);
        SetLocalDataArray(data);
        SetLocalMaxArray(max);
        SetLocalCharArray(chars);
        drawing_.load(data.size(), kCharBarWidth, kCharBarWidth, labelPoints(data));

        const std::int16_t axisMaximum = toInt16(MaxValue(data));
        const double pitch = kAxisLength / static_cast<double>(data.size());
        CreateHashMarks(axisMaximum);
        colourByThreshold();
        for (std::size_t i = 0; i < data.size(); ++i) {
            const double left = static_cast<double>(i + 1) * pitch - kCharBarWidth / 2;
            if (data[i] == 0) {
                // Deliberately no empty slot: a small square below the axis.
                drawing_.placeBar(i, left, 0, 1, true);
                drawing_.shpData[i].fill = ui::rgb(0, 0, 255);
            } else {
                const double top = data[i] * kAxisHeight / axisMaximum;
                drawing_.placeBar(i, left, top, top, true);
            }
            drawing_.placeLabel(i, chars[i]);
        }
        setMsg("Created font histogram");
        m_bHistSet_ = true;
    });
    drawScene();
}

void dlgCharHist::SetCharHistogram(const std::vector<double>& data, const std::string& character,
                                   const std::vector<std::string>& chars) {
    const std::string entry =
        "dlgCharHist.SetCharHistogram(" + character + "), # chars = " + std::to_string(data.size());
    procedures_.run(entry, "SetCharHistogram", [&] {
        forgetHistogram();
        if (character.empty()) return setMsg("No character selected");
        if (data.empty()) return setMsg("No data");
        SetMode(kCharacterDistance);
        SetLocalDataArray(data);
        character_ = character;
        SetLocalCharArray(chars);
        sbr.panel("MaxDist").setText(std::to_string(data.size()));
        drawing_.load(kBins, kBinBarWidth, kBinLabelWidth, labelPoints(data));

        bins_ = binDistances(data);
        CreateHashMarks(bins_.largestCount);
        for (std::size_t k = 0; k < bins_.counts.size(); ++k) {
            const double left = static_cast<double>(k) * kAxisLength / kBins + 2;
            const double top = bins_.counts[k] * kAxisHeight / bins_.largestCount;
            drawing_.placeBar(k, left, top, top, bins_.counts[k] > 0);
            drawing_.placeLabel(k, formatNumber(static_cast<double>(k + 1) * bins_.width, kDistancePicture));
        }
        setMsg("Created character histogram");
        m_bHistSet_ = true;
        control_.m_dlgHist_UserMsg("Created character histogram");
    });
    drawScene();
}

void dlgCharHist::CreateHashMarks(std::int16_t max) {
    procedures_.run("dlgCharHist.CreateHashMarks", "CreateHashMarks", [&] { drawing_.placeHashMarks(max); });
}

void dlgCharHist::forgetHistogram() {
    drawing_.clear();
    data_.clear();
    max_.clear();
    chars_.clear();
    bins_ = {};
    m_bHistSet_ = false;
    overBar_ = false;
    highlighted_.reset();
    sbr.panel("Samples").setText("");
    sbr.panel("MaxDist").setText("");
}

void dlgCharHist::nameBars() {
    for (std::size_t i = 0; i < drawing_.shpData.size(); ++i)
        if (drawing_.shpData[i].visible) drawing_.shpData[i].accessibleName = nameOfBar(i);
}

std::string dlgCharHist::nameOfBar(std::size_t index) const {
    if (mode_ == kCharacterDistance)
        return "Distance " + formatNumber(static_cast<double>(index) * bins_.width, kDistancePicture) +
               " to " + element(drawing_.lblX, index).caption + ", " +
               samplesText(element(bins_.counts, index));
    const double max = element(max_, index);
    return element(chars_, index) + ", " + samplesText(element(data_, index)) + ", largest Distance " +
           formatNumber(max, kDistancePicture) + (max >= threshold_ ? ", over the threshold" : "");
}

void dlgCharHist::drawScene() {
    procedures_.run("", "DrawScene", [this] {
        nameBars();
        chart.setScene(drawing_.scene());
    });
}

}  // namespace dravik::screen
