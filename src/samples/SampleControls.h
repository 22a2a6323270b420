// The controls of the "Text or Character to Include" group.
#pragma once

#include "widgets/Button.h"
#include "widgets/Form.h"
#include "widgets/TextBox.h"

namespace dravik {

struct SampleControls {
    Frame fraSample{"fraSample", "Text or Character to Include"};
    TextBox txtSampleInput{"txtSampleInput"};
    CheckBox chkCase{"chkCase", "Maintain Case"};
    Button cmdInclude{"cmdInclude", "&Include"};
};

}  // namespace dravik
