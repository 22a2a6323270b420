// Every control of the training screen and how they are arranged.
#pragma once

#include <memory>
#include <vector>

#include "ui/Bars.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Grid.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/TextBox.h"
#include "ui/Timer.h"
#include "ui/Toolbar.h"

namespace dravik::screen {

// Of the cells of included characters.
constexpr ui::Color kIncludedColor = ui::rgb(128, 128, 255);

// The "Font" group.
struct FontControls {
    ui::Frame fraFont{"fraFont", "Font"};
    ui::Label lblFontName{"lblFontName", "Font Name:"};
    ui::Label lblSelectedFont{"lblSelectedFont", "Name"};
    ui::Label lblFontDateTime{"lblFontDateTime", "DateTime"};
    ui::Button cmdSelectFont{"cmdSelectFont", "Select Font"};
    ui::Label LabelCharSet{"LabelCharSet", "Character Set:"};
    ui::TextBox txtCharSet{"txtCharSet", "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-<,/*$>@"};
};

// The "Training" group.
struct TrainingControls {
    ui::Frame fraTrain{"fraTrain", "Training"};
    ui::Button cmdTrain{"cmdTrain", "Learn"};
    ui::Button cmdStop{"cmdStop", "Stop"};
    ui::Button cmdSaveFont{"cmdSaveFont", "Save Font"};
    ui::Button cmdRevert{"cmdRevert", "Revert"};
    ui::Label lblTimeout{"lblTimeout", "Timeout"};
    ui::ComboBox cboTimeout{
        "cboTimeout", {"10 sec", "20 sec", "30 sec", "1 minute", "2 minutes", "3 minutes", "5 minutes"}};
    ui::ProgressBar prgTrain{"prgTrain"};
    ui::Label lblStatus{"lblStatus"};
    ui::Timer tmrTrain{"tmrTrain", 100};
};

// The "Text or Character to Include" group.
struct SampleControls {
    ui::Frame fraSample{"fraSample", "Text or Character to Include"};
    ui::TextBox txtSampleInput{"txtSampleInput"};
    ui::CheckBox chkCase{"chkCase", "Maintain Case"};
    ui::Button cmdInclude{"cmdInclude", "&Include"};
};

// The toolbar and the cells of the character overview.
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

// The samples grid, which is shown in place of the cells.
struct GridControls {
    ui::Label lblCharData{"lblCharData", "Character Data"};
    ui::Label lblDisplay{"lblDisplay", "Display"};
    ui::ComboBox cboDisplay{"cboDisplay",
                            {"Committed Samples", "Uncommitted Samples", "Character Statistics"}};
    ui::Grid grid{"grid"};
};

struct Screen {
    Screen();

    // Shows the cells, or the samples grid in their place.
    void SetGraphicalView(bool bGraphical);

    ui::Form form{"DravikDlg", "Dravik"};
    FontControls font;
    SampleControls sample;
    TrainingControls train;
    OverviewControls overview;
    GridControls numeric;
    ui::StatusBar sbr{"sbr"};

    // Without function, kept for hosts that look the controls up by name.
    ui::Frame fraControls{"fraControls", "Obsolete &Controls"};
    ui::Button cmdTest{"cmdTest", "&Test"};
    ui::Grid grid2{"grid2"};
};

}  // namespace dravik::screen
