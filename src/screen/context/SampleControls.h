// The controls of the "Text or Character to Include" group.
#pragma once

#include "ui/Button.h"
#include "ui/Form.h"
#include "ui/TextBox.h"

namespace dravik::screen {

struct SampleControls {
    ui::Frame fraSample{"fraSample", "Text or Character to Include"};
    ui::TextBox txtSampleInput{"txtSampleInput"};
    ui::CheckBox chkCase{"chkCase", "Maintain Case"};
    ui::Button cmdInclude{"cmdInclude", "&Include"};
};

}  // namespace dravik::screen
