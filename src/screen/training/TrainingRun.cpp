#include "screen/training/TrainingRun.h"

#include <array>
#include <cmath>
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
    if (!std::isfinite(rms)) return formatNumber(static_cast<double>(rms), "0.00#######");
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.7g", static_cast<double>(rms));
    return formatNumber(leadingNumber(buffer), "0.00#######");
}

}  // namespace

void TrainingRun::cboTimeout_Click() {
    context_.procedures.run("Dravikdlg.cboTimeout_Click", "TimeoutSelect", [&] {
        // Below 10 the number is minutes; the unit word is not read.
        const double number = leadingNumber(context_.screen.train.cboTimeout.text());
        trainingTimeout_ = toInt32(number < 10 ? number * 60 : number);
        context_.tool->SetTrainTimeout(trainingTimeout_);
        context_.errors.UserMsg("");
    });
}

void TrainingRun::GetTrainTimeout() {
    context_.procedures.run("Dravikdlg.GetTrainTimeout", "GetTrainTimeout", [&] {
        const std::int32_t seconds = context_.tool->GetTrainTimeout();
        std::size_t index = kStandardTimeout;
        for (std::size_t i = 0; i < kTimeouts.size(); ++i)
            if (kTimeouts[i] == seconds) index = i;
        context_.screen.train.cboTimeout.setText(context_.screen.train.cboTimeout.items()[index]);
    });
}

void TrainingRun::cmdTrain_Click() {
    auto& train = context_.screen.train;
    context_.procedures.run("Dravikdlg.cmdTrain_Click", "Train", [&] {
        beforeRun_ = context_.state();
        context_.errors.UserMsg("");
        if (!context_.tool->GetUncommittedSamples().empty()) {
            const ui::Answer answer = context_.platform.messageBox(
                {"This font contains uncommitted samples. Commit all samples now?",
                 "Warning: Uncommitted Samples", ui::MessageBox::Buttons::YesNoCancel});
            if (answer == ui::Answer::Cancel) return;
            if (answer == ui::Answer::Yes) cmdInclude_Click();
        }
        train.cmdTrain.setEnabled(false);
        train.cmdSaveFont.setEnabled(false);
        train.cmdRevert.setEnabled(false);
        SetTrainState(true);
        elapsedSeconds_ = 0;
        context_.tool->StartTraining();
        train.tmrTrain.setEnabled(true);
    });
}

void TrainingRun::SetTrainState(bool training) {
    auto& train = context_.screen.train;
    context_.procedures.run("Dravikdlg.SetTrainState", "SetTrainState", [&] {
        train.cmdStop.setEnabled(training);
        context_.screen.sample.txtSampleInput.setEnabled(!training);
        train.cboTimeout.setEnabled(!training);
        context_.screen.font.cmdSelectFont.setEnabled(!training);
        context_.screen.sample.cmdInclude.setEnabled(!training);
        train.cmdTrain.setEnabled(!training);
    });
}

void TrainingRun::tmrTrain_Timer() {
    auto& train = context_.screen.train;
    if (std::exchange(polling_, true)) return;
    ActScope act(context_, OperatorAct::Kind::Learn);
    context_.procedures.run("Dravikdlg.tmrTrain_Timer", "TrainTimer", [&] {
        if (!context_.tool->IsTrainingDone()) {
            train.lblStatus.setCaption(" RMS Error: " + rmsText(context_.tool->GetRmsError()));
            elapsedSeconds_ += train.tmrTrain.interval() / 1000.0;
            if (trainingTimeout_ != 0)
                train.prgTrain.setValue(static_cast<float>(elapsedSeconds_ * 100 / trainingTimeout_));
            return;
        }
        std::string rms;
        if (!context_.tool->IsTrainingAborted()) {
            rms = rmsText(context_.tool->GetRmsError());
            train.lblStatus.setCaption("Cycles: " + std::to_string(context_.tool->GetTrainCycles()) +
                                       ", RMS: " + rms);
            // What the run has learnt is not in the font's file yet: closing now asks whether to save it.
            context_.tool.setFontChanged(true);
            act.begunIn(beforeRun_);
            act.changed();
        }
        context_.procedures.trace("Dravikdlg.training done, RMS = " + rms);
        train.tmrTrain.setEnabled(false);
        train.cmdRevert.setEnabled(true);
        train.cmdSaveFont.setEnabled(true);
        train.cmdStop.setEnabled(false);
        train.cmdSaveFont.setFocus();
        train.prgTrain.setValue(100);
        context_.errors.UserMsg("Save Font or Revert");
    });
    polling_ = false;
}

void TrainingRun::cmdStop_Click() {
    auto& train = context_.screen.train;
    context_.procedures.run("Dravikdlg.cmdStop_Click", "Stop", [&] {
        context_.tool->StopTraining();
        train.tmrTrain.setEnabled(false);
        train.cmdStop.setEnabled(false);
        train.cmdTrain.setEnabled(true);
        context_.screen.sample.cmdInclude.setEnabled(true);
        SetTrainState(false);
        context_.errors.UserMsg("Stopped training.");
    });
}

void TrainingRun::leave() {
    auto& train = context_.screen.train;
    if (!train.cmdStop.enabled() && !train.cmdRevert.enabled() && !train.cmdSaveFont.enabled()) return;
    train.tmrTrain.setEnabled(false);
    train.cmdSaveFont.setEnabled(false);
    train.cmdRevert.setEnabled(false);
    train.prgTrain.setValue(0);
    train.lblStatus.setCaption("");
    SetTrainState(false);
}

void TrainingRun::cmdRevert_Click() {
    ActScope act(context_, OperatorAct::Kind::Revert, context_.screen.font.lblSelectedFont.caption());
    context_.procedures.run("Dravikdlg.cmdRevert_Click", "Revert", [&] {
        context_.tool->RevertFont(context_.screen.font.lblSelectedFont.caption());
        act.changed();
        SetTrainState(false);
        context_.screen.train.prgTrain.setValue(0);
        context_.screen.sample.txtSampleInput.setFocus();
        context_.errors.UserMsg("Reverted font to previous training.");
    });
}

void TrainingRun::SaveFont() {
    auto& train = context_.screen.train;
    auto& font = context_.screen.font;
    ActScope act(context_, OperatorAct::Kind::Save, font.lblSelectedFont.caption());
    context_.procedures.run("Dravikdlg.SaveFont", "SaveFont", [&] {
        context_.tool->SaveFont(font.lblSelectedFont.caption());
        act.changed();
        context_.tool.setFontChanged(false);
        train.cmdRevert.setEnabled(false);
        overview_.UpdateTrainStatus();
        font.lblFontDateTime.setCaption(selection_.FontTrainDate(font.lblSelectedFont.caption()));
        SetTrainState(false);
        train.prgTrain.setValue(0);
        context_.screen.sample.txtSampleInput.setFocus();
        lastStatusText_.clear();
        train.cmdSaveFont.setEnabled(false);
        context_.errors.UserMsg("Saved font");
    });
}

}  // namespace dravik::screen
