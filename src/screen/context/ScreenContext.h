// What the procedures of the screen share: its controls, the bound tool, the platform, the jobs folder, the
// trace, the messages, and what it remembers of includes. Every subject of the screen works on the one
// context.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "base/JobFolder.h"
#include "screen/context/ActScope.h"
#include "screen/context/PointedBar.h"
#include "screen/context/Procedure.h"
#include "screen/context/Screen.h"
#include "screen/context/ScreenState.h"
#include "screen/context/ToolBinding.h"
#include "screen/context/TraceLog.h"
#include "screen/context/modErrors.h"
#include "ui/Platform.h"
#include "ui/Signal.h"

namespace dravik::screen {

struct IncludeState {
    std::string m_PendingInclude;  // the trimmed text of the include in progress
    std::string m_LastInclude;     // the text of the last completed include, which Undo removes
    std::string m_IncludedChars;   // every text included since the font was loaded, joined
    // How many committed samples are the last include's: none where its commit failed. Undo deletes no more.
    std::uint32_t committed = 0;
    std::string added;  // characters that it has brought to the font
};

struct ScreenContext {
    // The platform outlives the context.
    ScreenContext(ui::Platform& usedPlatform, JobFolder folder)
        : platform(usedPlatform), jobs(std::move(folder)) {}
    ScreenContext(const ScreenContext&) = delete;
    ScreenContext& operator=(const ScreenContext&) = delete;

    ui::Platform& platform;
    const JobFolder jobs;
    TraceLog log{platform, jobs};
    Screen screen;
    modErrors errors{log, screen.sbr};
    // Those of the control: they report where errors does.
    const Procedures procedures{log, [this](std::string_view source, const Failure& failure) {
                                    errors.ReportError(source, failure);
                                }};
    ToolBinding tool;
    IncludeState includes;

    ScreenState state();
    // While a run goes on, the buttons that it has enabled or disabled stay. Learn is left as it is, except
    // that it is disabled where a run awaits its decision.
    void setState(const ScreenState& state);

    // The operator has begun something; what changed the font by it has ended.
    ui::Signal<> actBegun;
    ui::Signal<const OperatorAct&> actEnded;
    ui::Signal<const PointedBar&> barPointed;
    ActScope* act = nullptr;  // the innermost one in progress
};

}  // namespace dravik::screen
