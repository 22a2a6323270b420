// The controls of the lower half of the screen: the character overview, the samples grid and the toolbar
// above them.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "widgets/Form.h"
#include "widgets/Grid.h"
#include "widgets/Label.h"
#include "widgets/ListControls.h"
#include "widgets/Toolbar.h"

namespace dravik {

struct OverviewControls {
    OverviewControls();

    Toolbar tlbChars{"tlbChars"};
    Frame fraChar{"fraChar", "Characters"};
    // Cells and legend, each named with its index, as in "lblChar(12)".
    std::vector<std::unique_ptr<Label>> lblChar;
    std::vector<std::unique_ptr<Label>> lblKey;
    std::vector<std::unique_ptr<Label>> lblNote;
    Label lblNumTrained{"lblNumTrained", "Number of Trained Characters"};
    Label lblEmpty{"lblEmpty", "Empty"};

    // The frame's inside: the cells at their places, the legend beside them.
    Layout arrangement();
};

// The kinds of records that cboDisplay lists, by index.
constexpr int kDisplayCommitted = 0;
constexpr int kDisplayUncommitted = 1;
constexpr int kDisplayStatistics = 2;

struct GridControls {
    Label lblCharData{"lblCharData", "Character Data"};
    Label lblDisplay{"lblDisplay", "Display"};
    ComboBox cboDisplay{"cboDisplay", {"Committed Samples", "Uncommitted Samples", "Character Statistics"}};
    Grid grid{"grid"};
};

}  // namespace dravik
