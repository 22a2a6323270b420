// The tool that the screen works on and what the screen knows of its font's state; shared by the procedures.
#pragma once

#include "base/Failure.h"
#include "tool/Step.h"

namespace dravik {

struct ToolBinding {
    StepPtr tool;               // the bound step, which is the tool; borrowed from the host
    bool m_ToolBound = false;   // a step of the right kind is bound
    bool m_FontChanged = false; // the font differs from its saved form

    // The bound tool; raises Object variable not set (91) when there is none.
    FontTool& operator*() const {
        if (!tool) throw Failure(RuntimeError::ObjectNotSet);
        return tool->fontTool();
    }
    FontTool* operator->() const { return &**this; }
};

}  // namespace dravik
