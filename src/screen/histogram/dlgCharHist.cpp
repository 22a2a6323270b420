#include "screen/histogram/dlgCharHist.h"

#include <algorithm>
#include <utility>

#include "base/Conversions.h"
#include "base/NumberFormat.h"
#include "screen/context/Pictures.h"
#include "screen/context/modGlobals.h"

namespace dravik::screen {
namespace {

constexpr int kDefaultThreshold = 4;
// A division: tenths times 0.1 would miss a Distance of exactly 0.3, 0.6 or 0.7 by the last bit.
constexpr double kThresholdParts = 10;
constexpr char kThresholdPicture[] = "0.000";

}  // namespace

dlgCharHist::dlgCharHist(TraceLog& log, ui::Platform& platform, HistogramControl& control)
    : ui::Form("dlgCharHist", "Character Histogram"),
      procedures_(
          log, [this](std::string_view source, const Failure& failure) { reportFailure(source, failure); }),
      platform_(platform),
      log_(log),
      control_(control) {
    createControls();
    loading.subscribe([this] { Form_Load(); });
    unloading.subscribe([this] { Form_Unload(); });
    activated.subscribe([this] { chart.setFocus(); });
    udThreshold.valueChanged.subscribe([this] { udThreshold_Change(); });
    tlbMain.buttonClick.subscribe([this](ui::ToolButton& button) { tlbMain_ButtonClick(button); });
    cboChar.gotFocus.subscribe([this] { cboChar_GotFocus(); });
    cboChar.lostFocus.subscribe([this] { cboChar_LostFocus(); });
    cboChar.click.subscribe([this] { cboChar_Click(); });
    chart.mouseMove.subscribe([this](const ui::MouseEvent& event) { Form_MouseMove(event); });
    chart.mouseDown.subscribe([this](const ui::MouseEvent& event) { Form_MouseDown(event); });
    chart.keyDown.subscribe([this](int key, int shift) { Form_KeyDown(key, shift); });
    tmrGraphics.tick.subscribe([this] { tmrGraphics_Timer(); });
    tmrVarState.tick.subscribe([this] { tmrVarState_Timer(); });
}

void dlgCharHist::createControls() {
    tlbMain.add("Font", "Font", ui::ToolButton::Style::Check, pictures::histogram())
        .setToolTip("View entire font histogram");
    tlbMain.add("Char", "Char", ui::ToolButton::Style::Check, pictures::character())
        .setToolTip("View character histogram");
    for (auto* box : {&txtCharCaption, &txtThreshCaption, &txtThreshold, &txtExceed}) {
        box->setLocked(true);
        box->setBackColor(ui::kButtonFaceColor);
    }
    cboChar.setAccessibleName("Character");
    txtThreshold.setAccessibleName("Threshold");
    udThreshold.setAccessibleName("Threshold in tenths");
    chart.setAccessibleName("Histogram");

    sbr.add("SamplesCaption", "Samples", 1200);
    sbr.add("Samples", "", 900).setToolTip("Number of samples in this data set");
    sbr.add("MaxDistCaption", "MaxDist", 1000);
    sbr.add("MaxDist", "", 900);
    sbr.add("MsgCaption", "Message", 1000);
    sbr.add("Msg", "", 3000, true);

    setLayout(ui::column({
        ui::item(tlbMain),
        ui::row({ui::item(txtCharCaption).atLeast(1100), ui::item(cboChar).atLeast(900),
                 ui::item(txtThreshCaption).atLeast(1100), ui::item(txtThreshold).atLeast(750),
                 ui::item(udThreshold), ui::item(txtExceed).stretched()}),
        ui::item(chart).stretched().atLeast(10800, 5400),
        ui::item(sbr),
    }));
    timers = {&tmrGraphics, &tmrVarState};
    resizable = true;
}

void dlgCharHist::reportFailure(std::string_view source, const Failure& failure) {
    const std::string name(source);
    const std::string text = source == "Form_Unload"
                                 ? "Error in dlgCharHist:Form_Unload - " + failure.description()
                                 : "Err " + std::to_string(failure.number()) + " in dlgCharHist." + name +
                                       ": " + failure.description();
    setMsg(text);
    procedures_.trace("# dlgCharHist error: " + text);
}

void dlgCharHist::Form_Load() {
    procedures_.run("dlgCharHist.Form_Load", "Form_Load", [this] {
        if (g_bTrace) tmrVarState.setEnabled(true);
        chart.setScale(kHistogramScale);
        model_.drawing.drawAxis();
        drawScene();
        udThreshold.setValue(kDefaultThreshold);
        txtThreshold.setText("0.400");
        model_.threshold = udThreshold.value() / kThresholdParts;
        tmrGraphics.setEnabled(true);
        handled_ = pointer_;
    });
}

void dlgCharHist::Form_Unload() {
    procedures_.run("dlgCharHist.Form_Unload", "Form_Unload", [this] {
        tmrGraphics.setEnabled(false);
        tmrVarState.setEnabled(false);
        if (deletions_ > 0) control_.m_dlgHist_UserMsg("Samples were deleted. Learn required.");
    });
}

void dlgCharHist::udThreshold_Change() {
    procedures_.run("dlgCharHist.udThreshold_Change", "Threshold_Change", [this] {
        tmrGraphics.setEnabled(true);
        // The bars under the new threshold have not been handled yet, even where the pointer rests.
        handled_.reset();
        model_.threshold = udThreshold.value() / kThresholdParts;
        txtThreshold.setText(formatNumber(model_.threshold, kThresholdPicture));
    });
}

void dlgCharHist::tlbMain_ButtonClick(const ui::ToolButton& button) {
    procedures_.run("dlgCharHist.tlbMain_ButtonClick", "Toolbar", [&] {
        if (!button.pressed()) return;
        m_bHistSet_ = false;
        tmrGraphics.setEnabled(false);
        if (button.key == "Font") {
            control_.m_dlgHist_ShowFontHist(character_);
        } else if (button.key == "Char") {
            showCharHistogramFromToolbar();
        }
        // Nothing may have come of it; the buttons tell what is shown.
        showModeButtons();
    });
}

void dlgCharHist::showCharHistogramFromToolbar() {
    if (model_.mode != kCharacterDistance) {
        const auto found = std::find(model_.chars.begin(), model_.chars.end(), character_);
        if (found != model_.chars.end()) {
            const double samples = model_.samplesOf(static_cast<std::size_t>(found - model_.chars.begin()));
            if (samples == 1) return setMsg("1 sample. Character histogram not available.");
            if (samples == 0) return setMsg("0 samples. No character histogram to display");
        }
    }
    control_.m_dlgHist_ShowDistHist(character_);
}

// Hovering must not change the choice while the list is open.
void dlgCharHist::cboChar_GotFocus() {
    procedures_.run("dlgCharHist.cboChar_GotFocus", "CharCombo", [this] { tmrGraphics.setEnabled(false); });
}

void dlgCharHist::cboChar_LostFocus() {
    procedures_.run("dlgCharHist.cboChar_LostFocus", "CharCombo", [this] { tmrGraphics.setEnabled(true); });
}

void dlgCharHist::cboChar_Click() {
    const std::string entry =
        std::string("dlgCharHist.cboChar_Click, m_bHistSet = ") + (m_bHistSet_ ? "True" : "False");
    procedures_.run(entry, "CharCombo", [this] {
        if (!m_bHistSet_ || model_.mode != kCharacterDistance) return;
        m_bHistSet_ = false;
        tmrGraphics.setEnabled(false);
        control_.m_dlgHist_ShowDistHist(cboChar.text());
    });
}

}  // namespace dravik::screen
