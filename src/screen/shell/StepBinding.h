// Binding a job step: which step is accepted, and filling the screen from the tool that it is.
#pragma once

#include <functional>

#include "screen/context/ScreenContext.h"
#include "screen/inspection/CharOverview.h"
#include "screen/inspection/SamplesGrid.h"
#include "screen/training/FontSelection.h"
#include "screen/training/TrainingRun.h"

namespace dravik::screen {

class StepBinding {
  public:
    StepBinding(ScreenContext& context, CharOverview& overview, SamplesGrid& grid, FontSelection& selection,
                TrainingRun& run)
        : context_(context), overview_(overview), grid_(grid), selection_(selection), run_(run) {}

    // Raises Failure 0x80004005 to the host, changing nothing, when the step is of another kind. No step, and
    // one that fails when it is asked, are reported on the status bar; the step before stays bound, and the
    // answer is false.
    bool setStep(tool::StepPtr step);
    // Fills the screen from the bound tool.
    void FillItems();
    // The character set of the tool's font, which is not taken for an edit.
    void showCharacterSet();
    void showTrainDate();

    // Wired by the shell. Another step is about to take the place of the one bound.
    std::function<void()> stepLeft;
    // The font shown is another one, or is shown afresh.
    std::function<void()> filled;

  private:
    // False after the operator was told why not; raises the refusal of another kind.
    bool isUsable(const tool::StepPtr& step);
    // What was included, and the run that is polled, are the other step's.
    void leaveStep();
    // Finds the step's selected font and loads it; without one the screen shows "<None>".
    void loadSelectedFont(const std::vector<std::string>& fonts);

    ScreenContext& context_;
    CharOverview& overview_;
    SamplesGrid& grid_;
    FontSelection& selection_;
    TrainingRun& run_;
};

}  // namespace dravik::screen
