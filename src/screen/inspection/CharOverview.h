// The character overview: 74 cells coloured by how many samples each character was trained with.
#pragma once

#include <string>
#include <vector>

#include "screen/context/ScreenContext.h"
#include "screen/inspection/SampleCounts.h"

namespace dravik::screen {

class CharOverview {
  public:
    CharOverview(ScreenContext& context, SampleCounts& counts) : context_(context), counts_(counts) {}

    // Repaints every cell from the character set and the trained counts.
    void UpdateCharDisplay();
    // Repaints the cells of the font's characters by trained count.
    void UpdateTrainStatus();
    // Rebuilds FontArray from the font's character records; no selected font and an empty answer keep the
    // previous one.
    void SetFontArray();
    // The hovered cell's tool tip.
    void lblChar_MouseMove(ui::Label& cell);
    // Shows the cells, or the samples grid in their place.
    void SetGraphicalView(bool bGraphical);
    // Colours the legend.
    void InitColorKey();

    // The characters of the current font in the tool's order.
    const std::vector<std::string>& FontArray() const noexcept { return fontArray_; }
    // A copy, since what it is passed to may rebuild FontArray. Raises Subscript out of range (9) while
    // FontArray was never filled.
    std::string firstOfFontArray() const;

  private:
    ScreenContext& context_;
    SampleCounts& counts_;
    std::vector<std::string> fontArray_;
};

}  // namespace dravik::screen
