// Include: the characters that the tool found in the current image become samples labelled with the typed
// text; they are checked, committed and remembered for Undo.
#pragma once

#include <cstdint>
#include "screen/context/ScreenContext.h"
#include "screen/samples/SampleCommit.h"
#include "screen/samples/SampleDeletion.h"
#include "tool/CaseRule.h"

namespace dravik::screen {

class Inclusion {
  public:
    Inclusion(ScreenContext& context, SampleCommit& commit, SampleDeletion& deletion, SamplesGrid& grid)
        : context_(context), commit_(commit), deletion_(deletion), grid_(grid) {}

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
    ScreenContext& context_;
    SampleCommit& commit_;
    SampleDeletion& deletion_;
    SamplesGrid& grid_;
};

}  // namespace dravik::screen
