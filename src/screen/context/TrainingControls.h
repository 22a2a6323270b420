// The controls of the "Font" and "Training" groups.
#pragma once

#include "ui/Bars.h"
#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/ListControls.h"
#include "ui/TextBox.h"
#include "ui/Timer.h"

namespace dravik::screen {

struct FontControls {
    ui::Frame fraFont{"fraFont", "Font"};
    ui::Label lblFontName{"lblFontName", "Font Name:"};
    ui::Label lblSelectedFont{"lblSelectedFont", "Name"};
    ui::Label lblFontDateTime{"lblFontDateTime", "DateTime"};
    ui::Button cmdSelectFont{"cmdSelectFont", "Select Font"};
    ui::Label LabelCharSet{"LabelCharSet", "Character Set:"};
    ui::TextBox txtCharSet{"txtCharSet", "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-<,/*$>@"};
};

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

}  // namespace dravik::screen
