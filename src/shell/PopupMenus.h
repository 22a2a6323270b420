// The pop-up menus of the character cells and of the samples grid: one place that opens them and acts on the
// pick.
#pragma once

#include <string>

#include "inspection/CharOverview.h"
#include "inspection/SamplesGrid.h"
#include "inspection/dlgContextPopup.h"
#include "samples/SampleCounts.h"
#include "samples/SampleDeletion.h"
#include "shell/ChildForms.h"
#include "support/modErrors.h"
#include "tool/ToolBinding.h"
#include "training/TrainingControls.h"

namespace dravik {

class PopupMenus {
  public:
    PopupMenus(const ToolBinding& tool, modErrors& errors, Platform& platform, TrainingControls& train,
               SampleCounts& counts, SampleDeletion& deletion, CharOverview& overview, SamplesGrid& grid,
               ChildForms& forms);

    // A right click on a cell whose character belongs to the font opens its menu.
    void lblChar_MouseDown(int Index, const MouseEvent& event);
    // A left click on a heading sorts; a right click opens the grid's menu.
    void grid_MouseDown(const MouseEvent& event);

  private:
    void act(MenuPick pick, Label& cell);
    void excludeCharacter(const std::string& character);
    void deleteCharacter(const std::string& character);
    bool confirmed(const std::string& question, const std::string& character);

    const ToolBinding& tool_;
    modErrors& errors_;
    Platform& platform_;
    TrainingControls& train_;
    SampleCounts& counts_;
    SampleDeletion& deletion_;
    CharOverview& overview_;
    SamplesGrid& grid_;
    ChildForms& forms_;
};

}  // namespace dravik
