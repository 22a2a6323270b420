// The toolbar of the character overview: one place that acts on its buttons by their keys.
#pragma once

#include "inspection/CharOverview.h"
#include "samples/SampleDeletion.h"
#include "shell/ChildForms.h"
#include "support/modErrors.h"

namespace dravik {

class ToolbarButtons {
  public:
    ToolbarButtons(modErrors& errors, CharOverview& overview, SampleDeletion& deletion, ChildForms& forms)
        : errors_(errors), overview_(overview), deletion_(deletion), forms_(forms) {}

    void tlbChars_ButtonClick(ToolButton& button);

  private:
    modErrors& errors_;
    CharOverview& overview_;
    SampleDeletion& deletion_;
    ChildForms& forms_;
};

}  // namespace dravik
