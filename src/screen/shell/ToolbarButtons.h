// The toolbar of the character overview: one place that acts on its buttons by their keys.
#pragma once

#include "screen/context/ScreenContext.h"
#include "screen/inspection/CharOverview.h"
#include "screen/samples/SampleDeletion.h"
#include "screen/shell/ChildForms.h"

namespace dravik::screen {

class ToolbarButtons {
  public:
    ToolbarButtons(ScreenContext& context, CharOverview& overview, SampleDeletion& deletion,
                   ChildForms& forms)
        : context_(context), overview_(overview), deletion_(deletion), forms_(forms) {}

    void tlbChars_ButtonClick(ui::ToolButton& button);

  private:
    ScreenContext& context_;
    CharOverview& overview_;
    SampleDeletion& deletion_;
    ChildForms& forms_;
};

}  // namespace dravik::screen
