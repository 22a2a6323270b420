// The toolbar of the character overview: one place that acts on its buttons by their keys.
#pragma once

#include <functional>
#include <string>

#include "inspection/CharOverview.h"
#include "samples/SampleDeletion.h"
#include "support/modErrors.h"

namespace dravik {

class ToolbarButtons {
  public:
    ToolbarButtons(modErrors& errors, CharOverview& overview, SampleDeletion& deletion)
        : errors_(errors), overview_(overview), deletion_(deletion) {}

    void tlbChars_ButtonClick(ToolButton& button);

    // Wired by the shell.
    std::function<void(const std::string& character)> showFontHistogram;
    std::function<void(const std::string& character)> showCharArray;

  private:
    modErrors& errors_;
    CharOverview& overview_;
    SampleDeletion& deletion_;
};

}  // namespace dravik
