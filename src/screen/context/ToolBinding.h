// The tool that the screen works on and what the screen knows of its font's state; shared by the procedures.
#pragma once

#include <cstdint>
#include <functional>

#include "base/Failure.h"
#include "tool/Step.h"

namespace dravik::screen {

// m_FontIndex while the step's font is not yet known.
constexpr std::int16_t kFontUnknown = -1;

struct ToolBinding {
    tool::StepPtr tool;        // the bound step, which is the tool; borrowed from the host
    bool m_ToolBound = false;  // a step of the right kind is bound
    // Index of the selected font in the tool's font list.
    std::int16_t m_FontIndex = kFontUnknown;
    bool fontLoaded = false;  // the tool has loaded the font that the screen shows
    std::function<void()> fontChangedSet;

    // The bound tool; raises Object variable not set (91) when there is none.
    tool::FontTool& operator*() const {
        if (!tool) throw Failure(RuntimeError::ObjectNotSet);
        return tool->fontTool();
    }
    tool::FontTool* operator->() const { return &**this; }

    // The font differs from its saved form.
    bool m_FontChanged() const noexcept { return fontChanged_; }
    void setFontChanged(bool fontChanged) {
        fontChanged_ = fontChanged;
        if (fontChangedSet) fontChangedSet();
    }

  private:
    bool fontChanged_ = false;
};

}  // namespace dravik::screen
