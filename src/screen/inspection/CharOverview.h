// The character overview: 74 cells coloured by how many samples each character was trained with.
#pragma once

#include <string>
#include <vector>

#include "screen/context/InspectionControls.h"
#include "screen/context/ToolBinding.h"
#include "screen/context/modErrors.h"
#include "screen/inspection/SampleCounts.h"

namespace dravik::screen {

class CharOverview {
  public:
    CharOverview(const tool::ToolBinding& tool, modErrors& errors, OverviewControls& controls,
                 GridControls& numeric, SampleCounts& counts);

    // Repaints every cell from the character set and the trained counts.
    void UpdateCharDisplay();
    // Repaints the cells of the font's characters by trained count.
    void UpdateTrainStatus();
    // Shows the cells, or the samples grid in their place.
    void SetGraphicalView(bool bGraphical);
    // Rebuilds FontArray from the font's character records; an empty answer keeps the previous one.
    void SetFontArray();
    // The hovered cell's tool tip.
    void lblChar_MouseMove(ui::Label& cell);
    // Colours the legend.
    void InitColorKey();

    // The characters of the current font in the tool's order.
    const std::vector<std::string>& FontArray() const noexcept { return fontArray_; }
    // A copy, since what it is passed to may rebuild FontArray. Raises Subscript out of range (9) while
    // FontArray was never filled.
    std::string firstOfFontArray() const;

    OverviewControls& controls() noexcept { return controls_; }

  private:
    const tool::ToolBinding& tool_;
    modErrors& errors_;
    OverviewControls& controls_;
    GridControls& numeric_;
    SampleCounts& counts_;
    std::vector<std::string> fontArray_;
};

}  // namespace dravik::screen
