// Every control of the training screen and how they are arranged.
#pragma once

#include "screen/context/InspectionControls.h"
#include "screen/context/SampleControls.h"
#include "screen/context/TrainingControls.h"
#include "ui/Bars.h"

namespace dravik::screen {

struct Screen {
    Screen();

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
