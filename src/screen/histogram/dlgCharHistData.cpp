// The procedures of the histogram form that take its data and place its bars.
#include <algorithm>

#include "base/Conversions.h"
#include "screen/histogram/dlgCharHist.h"

namespace dravik::screen {

void dlgCharHist::SetMode(std::int16_t mode) {
    procedures_.run("dlgCharHist.SetMode", "SetMode", [&] {
        model_.mode = mode;
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
    tlbMain.button("Font").setPressed(model_.mode == kFontHistogram);
    tlbMain.button("Char").setPressed(model_.mode != kFontHistogram);
}

void dlgCharHist::SetCharCombo() {
    procedures_.run("dlgCharHist.SetCharCombo", "SetCharCombo", [this] {
        cboChar.setItems(model_.chars);
        if (std::find(model_.chars.begin(), model_.chars.end(), character_) != model_.chars.end())
            cboChar.setText(character_);
    });
}

void dlgCharHist::SetLocalDataArray(const std::vector<double>& data) {
    procedures_.run("dlgCharHist.SetLocalDataArray", "SetLocalDataArray", [&] { model_.data = data; });
}

void dlgCharHist::SetLocalMaxArray(const std::vector<double>& max) {
    procedures_.run("dlgCharHist.SetLocalMaxArray", "SetLocalMaxArray", [&] { model_.max = max; });
}

void dlgCharHist::SetLocalCharArray(const std::vector<std::string>& chars) {
    procedures_.run("dlgCharHist.SetLocalCharArray", "SetLocalCharArray", [&] {
        model_.chars = chars;
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
        filled_ = true;
        character_ = chars.front();
        SetMode(kFontHistogram);
        SetLocalDataArray(data);
        SetLocalMaxArray(max);
        SetLocalCharArray(chars);
        model_.loadCharacters();
        const std::int16_t axisMaximum = toInt16(MaxValue(data));
        CreateHashMarks(axisMaximum);
        colourByThreshold();
        model_.placeCharacters(axisMaximum);
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
        if (data.empty()) {
            if (filled_) offerOthers(character, chars);
            return setMsg("No data");
        }
        filled_ = true;
        SetMode(kCharacterDistance);
        SetLocalDataArray(data);
        character_ = character;
        SetLocalCharArray(chars);
        sbr.panel("MaxDist").setText(std::to_string(data.size()));
        model_.loadBins();
        model_.countBins();
        CreateHashMarks(model_.bins.largestCount);
        model_.placeBins();
        setMsg("Created character histogram");
        m_bHistSet_ = true;
        control_.m_dlgHist_UserMsg("Created character histogram");
    });
    drawScene();
}

// A form that has shown a histogram lets the operator go on to another character.
void dlgCharHist::offerOthers(const std::string& character, const std::vector<std::string>& chars) {
    SetMode(kCharacterDistance);
    character_ = character;
    SetLocalCharArray(chars);
    m_bHistSet_ = true;
}

void dlgCharHist::CreateHashMarks(std::int16_t max) {
    procedures_.run("dlgCharHist.CreateHashMarks", "CreateHashMarks",
                    [&] { model_.drawing.placeHashMarks(max); });
}

void dlgCharHist::forgetHistogram() {
    model_.clear();
    m_bHistSet_ = false;
    overBar_ = false;
    highlighted_.reset();
    sbr.panel("Samples").setText("");
    sbr.panel("MaxDist").setText("");
}

void dlgCharHist::drawScene() {
    procedures_.run("", "DrawScene", [this] {
        model_.nameBars();
        chart.setScene(model_.drawing.scene());
        chart.setPointed(highlighted_ ? model_.drawing.placeInScene(*highlighted_) : -1);
    });
}

}  // namespace dravik::screen
