// The controls of the "Font" and "Training" groups.
#pragma once

#include "widgets/Bars.h"
#include "widgets/Button.h"
#include "widgets/Form.h"
#include "widgets/Label.h"
#include "widgets/ListControls.h"
#include "widgets/TextBox.h"
#include "widgets/Timer.h"

namespace dravik {

struct FontControls {
    Frame fraFont{"fraFont", "Font"};
    Label lblFontName{"lblFontName", "Font Name:"};
    Label lblSelectedFont{"lblSelectedFont", "Name"};
    Label lblFontDateTime{"lblFontDateTime", "DateTime"};
    Button cmdSelectFont{"cmdSelectFont", "Select Font"};
    Label LabelCharSet{"LabelCharSet", "Character Set:"};
    TextBox txtCharSet{"txtCharSet", "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-<,/*$>@"};
};

struct TrainingControls {
    Frame fraTrain{"fraTrain", "Training"};
    Button cmdTrain{"cmdTrain", "Learn"};
    Button cmdStop{"cmdStop", "Stop"};
    Button cmdSaveFont{"cmdSaveFont", "Save Font"};
    Button cmdRevert{"cmdRevert", "Revert"};
    Label lblTimeout{"lblTimeout", "Timeout"};
    ComboBox cboTimeout{"cboTimeout",
                        {"10 sec", "20 sec", "30 sec", "1 minute", "2 minutes", "3 minutes", "5 minutes"}};
    ProgressBar prgTrain{"prgTrain"};
    Label lblStatus{"lblStatus"};
    Timer tmrTrain{"tmrTrain", 100};
};

}  // namespace dravik
