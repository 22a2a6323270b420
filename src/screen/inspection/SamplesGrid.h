// The samples grid: the committed samples, the uncommitted ones or the character records, a row each.
#pragma once

#include <cstdint>
#include <string>

#include "screen/context/ScreenContext.h"
#include "tool/RecordTable.h"
#include "tool/Samples.h"

namespace dravik::screen {

class SamplesGrid {
  public:
    explicit SamplesGrid(ScreenContext& context) : context_(context) {}

    // Shows the records of the kind chosen in cboDisplay; an empty answer leaves the grid as it was.
    void FillSamplesArray();

    // Ctrl+Insert copies, Delete deletes.
    void grid_KeyDown(int KeyCode, int Shift);
    // A click on a heading: column 0 sorts by sample number, column 1 by character.
    void sortByHeading();
    // As FillSamplesArray; an empty answer empties the grid.
    void showAnew();
    // The selection to the clipboard: a tab behind every cell, CR LF behind every row.
    void copySelection();
    // Deletes the selected samples and refills. Every call names the same identifier: the tool moves the next
    // sample into its place.
    void deleteSelection();

  private:
    bool showsRecords() const;
    void deleteRows(tool::SampleKind kind, ActScope& act);

    ScreenContext& context_;
    std::int16_t sortedByCharacter_ = 0;
    tool::RecordTablePtr records_;  // the last answer, nothing for an empty one
};

}  // namespace dravik::screen
