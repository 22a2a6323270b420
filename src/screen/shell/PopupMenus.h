// The pop-up menus of the character cells and of the samples grid: one place that opens them and acts on the
// pick.
#pragma once

#include <string>

#include "screen/context/ScreenContext.h"
#include "screen/context/dlgContextPopup.h"
#include "screen/inspection/CharOverview.h"
#include "screen/inspection/SampleCounts.h"
#include "screen/inspection/SamplesGrid.h"
#include "screen/samples/SampleDeletion.h"
#include "screen/shell/ChildForms.h"

namespace dravik::screen {

class PopupMenus {
  public:
    PopupMenus(ScreenContext& context, SampleCounts& counts, SampleDeletion& deletion, CharOverview& overview,
               SamplesGrid& grid, ChildForms& forms)
        : context_(context),
          counts_(counts),
          deletion_(deletion),
          overview_(overview),
          grid_(grid),
          forms_(forms) {}

    // A right click on a cell whose character belongs to the font opens its menu.
    void lblChar_MouseDown(int Index, const ui::MouseEvent& event);
    // A left click on a heading sorts; a right click opens the grid's menu.
    void grid_MouseDown(const ui::MouseEvent& event);

  private:
    void act(MenuPick pick, ui::Label& cell);
    void excludeCharacter(const std::string& character);
    void deleteCharacter(const std::string& character);
    bool confirmed(const std::string& question, const std::string& character);

    ScreenContext& context_;
    SampleCounts& counts_;
    SampleDeletion& deletion_;
    CharOverview& overview_;
    SamplesGrid& grid_;
    ChildForms& forms_;
};

}  // namespace dravik::screen
