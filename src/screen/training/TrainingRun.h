// A training run: started, polled ten times a second, stopped, and its result saved or reverted.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "screen/context/ScreenContext.h"
#include "screen/inspection/CharOverview.h"
#include "screen/training/FontSelection.h"

namespace dravik::screen {

class TrainingRun {
  public:
    TrainingRun(ScreenContext& context, CharOverview& overview, FontSelection& selection)
        : context_(context), overview_(overview), selection_(selection) {}

    void cboTimeout_Click();
    // Shows the tool's time limit in the list; one that the list does not have becomes a minute.
    void GetTrainTimeout();
    void cmdTrain_Click();
    void SetTrainState(bool training);
    // Does nothing while a poll is going on: a box that is open during one, or a tool that lets other events
    // through, would otherwise be joined by the next poll a tenth of a second later.
    void tmrTrain_Timer();
    void cmdStop_Click();
    void cmdRevert_Click();
    // Polls and offers nothing more of a run whose tool is no longer the bound one.
    void leave();
    void SaveFont();

    // Wired by the shell: the click of Include.
    std::function<void()> cmdInclude_Click;

  private:
    ScreenContext& context_;
    CharOverview& overview_;
    FontSelection& selection_;

    double elapsedSeconds_ = 0;
    std::int32_t trainingTimeout_ = 0;  // seconds
    std::string lastStatusText_;
    bool polling_ = false;
    ScreenState beforeRun_;  // when Learn was pressed
};

}  // namespace dravik::screen
