// The controls of the lower half of the screen: the character overview, the samples grid and the toolbar
// above them.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include "ui/Form.h"
#include "ui/Grid.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/Toolbar.h"

namespace dravik::screen {

struct OverviewControls {
    OverviewControls();

    ui::Toolbar tlbChars{"tlbChars"};
    ui::Frame fraChar{"fraChar", "Characters"};
    // Cells and legend, each named with its index, as in "lblChar(12)".
    std::vector<std::unique_ptr<ui::Label>> lblChar;
    std::vector<std::unique_ptr<ui::Label>> lblKey;
    std::vector<std::unique_ptr<ui::Label>> lblNote;
    ui::Label lblNumTrained{"lblNumTrained", "Number of Trained Characters"};
    ui::Label lblEmpty{"lblEmpty", "Empty"};

    // The frame's inside: the cells at their places, the legend beside them.
    ui::Layout arrangement();
};

// The kinds of records that cboDisplay lists, by index.
constexpr int kDisplayCommitted = 0;
constexpr int kDisplayUncommitted = 1;
constexpr int kDisplayStatistics = 2;

struct GridControls {
    ui::Label lblCharData{"lblCharData", "Character Data"};
    ui::Label lblDisplay{"lblDisplay", "Display"};
    ui::ComboBox cboDisplay{"cboDisplay",
                            {"Committed Samples", "Uncommitted Samples", "Character Statistics"}};
    ui::Grid grid{"grid"};
};

}  // namespace dravik::screen
