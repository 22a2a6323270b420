// Every control of the training screen and how they are arranged.
#pragma once

#include "inspection/InspectionControls.h"
#include "samples/SampleControls.h"
#include "training/TrainingControls.h"
#include "widgets/Bars.h"

namespace dravik {

struct Screen {
    Screen();

    Form form{"DravikDlg", "Dravik"};
    FontControls font;
    SampleControls sample;
    TrainingControls train;
    OverviewControls overview;
    GridControls numeric;
    StatusBar sbr{"sbr"};

    // Without function, kept for hosts that look the controls up by name.
    Frame fraControls{"fraControls", "Obsolete &Controls"};
    Button cmdTest{"cmdTest", "&Test"};
    Grid grid2{"grid2"};
};

}  // namespace dravik
