#include "screen/training/TrainingRun.h"

#include <array>
#include <cstdio>
#include <utility>

#include "base/Conversions.h"
#include "base/NumberFormat.h"

namespace dravik::screen {
namespace {

constexpr std::array<std::int32_t, 7> kTimeouts = {10, 20, 30, 60, 120, 180, 300};  // seconds, by list index
constexpr std::size_t kStandardTimeout = 3;

std::string rmsText(float rms) {
    // Through the decimal form of the single, so that 0.03 does not show the digits of its nearest double.
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.7g", static_cast<double>(rms));
    return formatNumber(leadingNumber(buffer), "0.00#######");
}

}  // namespace

TrainingRun::TrainingRun(tool::ToolBinding& tool, modErrors& errors, ui::Platform& platform,
                         TrainingControls& controls, FontControls& font, SampleControls& sample,
                         CharOverview& overview, FontSelection& selection)
    : tool_(tool),
      errors_(errors),
      platform_(platform),
      controls_(controls),
      font_(font),
      sample_(sample),
      overview_(overview),
      selection_(selection) {}

void TrainingRun::cboTimeout_Click() {
    errors_.procedures().run("Dravikdlg.cboTimeout_Click", "TimeoutSelect", [&] {
        // Below 10 the number is minutes; the unit word is not read.
        const double number = leadingNumber(controls_.cboTimeout.text());
        trainingTimeout_ = toInt32(number < 10 ? number * 60 : number);
        tool_->SetTrainTimeout(trainingTimeout_);
        errors_.UserMsg("");
    });
}

void TrainingRun::GetTrainTimeout() {
    errors_.procedures().run("Dravikdlg.GetTrainTimeout", "GetTrainTimeout", [&] {
        const std::int32_t seconds = tool_->GetTrainTimeout();
        std::size_t index = kStandardTimeout;
        for (std::size_t i = 0; i < kTimeouts.size(); ++i)
            if (kTimeouts[i] == seconds) index = i;
        controls_.cboTimeout.setText(controls_.cboTimeout.items()[index]);
    });
}

void TrainingRun::cmdTrain_Click() {
    errors_.procedures().run("Dravikdlg.cmdTrain_Click", "Train", [&] {
        errors_.UserMsg("");
        if (!tool_->GetUncommittedSamples().empty()) {
            const ui::Answer answer =
                platform_.messageBox({"This font contains uncommitted samples. Commit all samples now?",
                                      "Warning: Uncommitted Samples", ui::MessageBox::Buttons::YesNoCancel});
            if (answer == ui::Answer::Cancel) return;
            if (answer == ui::Answer::Yes) cmdInclude_Click();
        }
        controls_.cmdTrain.setEnabled(false);
        controls_.cmdSaveFont.setEnabled(false);
        controls_.cmdRevert.setEnabled(false);
        SetTrainState(true);
        elapsedSeconds_ = 0;
        tool_->StartTraining();
        controls_.tmrTrain.setEnabled(true);
    });
}

void TrainingRun::SetTrainState(bool training) {
    errors_.procedures().run("Dravikdlg.SetTrainState", "SetTrainState", [&] {
        controls_.cmdStop.setEnabled(training);
        sample_.txtSampleInput.setEnabled(!training);
        controls_.cboTimeout.setEnabled(!training);
        font_.cmdSelectFont.setEnabled(!training);
        sample_.cmdInclude.setEnabled(!training);
        controls_.cmdTrain.setEnabled(!training);
    });
}

void TrainingRun::tmrTrain_Timer() {
    if (std::exchange(polling_, true)) return;
    errors_.procedures().run("Dravikdlg.tmrTrain_Timer", "TrainTimer", [&] {
        if (!tool_->IsTrainingDone()) {
            controls_.lblStatus.setCaption(" RMS Error: " + rmsText(tool_->GetRmsError()));
            elapsedSeconds_ += controls_.tmrTrain.interval() / 1000.0;
            if (trainingTimeout_ != 0)
                controls_.prgTrain.setValue(static_cast<float>(elapsedSeconds_ * 100 / trainingTimeout_));
            return;
        }
        std::string rms;
        if (!tool_->IsTrainingAborted()) {
            rms = rmsText(tool_->GetRmsError());
            controls_.lblStatus.setCaption("Cycles: " + std::to_string(tool_->GetTrainCycles()) +
                                           ", RMS: " + rms);
            // What the run has learnt is not in the font's file yet: closing now asks whether to save it.
            tool_.setFontChanged(true);
        }
        errors_.procedures().trace("Dravikdlg.training done, RMS = " + rms);
        controls_.tmrTrain.setEnabled(false);
        controls_.cmdRevert.setEnabled(true);
        controls_.cmdSaveFont.setEnabled(true);
        controls_.cmdStop.setEnabled(false);
        controls_.cmdSaveFont.setFocus();
        controls_.prgTrain.setValue(100);
        errors_.UserMsg("Save Font or Revert");
    });
    polling_ = false;
}

void TrainingRun::cmdStop_Click() {
    errors_.procedures().run("Dravikdlg.cmdStop_Click", "Stop", [&] {
        tool_->StopTraining();
        controls_.tmrTrain.setEnabled(false);
        controls_.cmdStop.setEnabled(false);
        controls_.cmdTrain.setEnabled(true);
        sample_.cmdInclude.setEnabled(true);
        SetTrainState(false);
        errors_.UserMsg("Stopped training.");
    });
}

void TrainingRun::cmdRevert_Click() {
    errors_.procedures().run("Dravikdlg.cmdRevert_Click", "Revert", [&] {
        tool_->RevertFont(font_.lblSelectedFont.caption());
        SetTrainState(false);
        controls_.prgTrain.setValue(0);
        sample_.txtSampleInput.setFocus();
        errors_.UserMsg("Reverted font to previous training.");
    });
}

void TrainingRun::SaveFont() {
    errors_.procedures().run("Dravikdlg.SaveFont", "SaveFont", [&] {
        tool_->SaveFont(font_.lblSelectedFont.caption());
        tool_.setFontChanged(false);
        controls_.cmdRevert.setEnabled(false);
        overview_.UpdateTrainStatus();
        font_.lblFontDateTime.setCaption(selection_.FontTrainDate(font_.lblSelectedFont.caption()));
        SetTrainState(false);
        controls_.prgTrain.setValue(0);
        sample_.txtSampleInput.setFocus();
        lastStatusText_.clear();
        controls_.cmdSaveFont.setEnabled(false);
        errors_.UserMsg("Saved font");
    });
}

}  // namespace dravik::screen
