// Include: the characters that the tool found in the current image become samples labelled with the typed
// text; they are checked, committed and remembered for Undo.
#pragma once

#include "screen/context/IncludeState.h"
#include "screen/context/SampleControls.h"
#include "screen/samples/SampleCommit.h"
#include "screen/samples/SampleDeletion.h"
#include "tool/CaseRule.h"

namespace dravik::screen {

class Inclusion {
  public:
    Inclusion(tool::ToolBinding& tool, modErrors& errors, ui::Platform& platform, SampleControls& controls,
              TrainingControls& train, IncludeState& includes, SampleCommit& commit, SampleDeletion& deletion,
              CharOverview& overview, SamplesGrid& grid);

    void Include();
    void AddSamples();
    // Mixed when no tool is bound. Only A-Z and a-z count.
    tool::CharacterCase CharSetCase();
    // True when the uncommitted samples are as many as the typed characters and hold no invalid value;
    // otherwise the operator has been told. False after a failure.
    bool ReadyToCommit();

    void chkCase_Click();
    void txtSampleInput_Change();

  private:
    tool::ToolBinding& tool_;
    modErrors& errors_;
    ui::Platform& platform_;
    SampleControls& controls_;
    TrainingControls& train_;
    IncludeState& includes_;
    SampleCommit& commit_;
    SampleDeletion& deletion_;
    CharOverview& overview_;
    SamplesGrid& grid_;
};

}  // namespace dravik::screen
