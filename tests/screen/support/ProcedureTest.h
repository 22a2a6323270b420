// What a procedure works with, without the screen: a recording tool, a scripted platform, the trace and the
// message panel.
#pragma once

#include "screen/context/ScreenContext.h"
#include "screen/support/RecordingTool.h"
#include "screen/support/ScriptedPlatform.h"
#include "screen/support/TracedJobs.h"
#include "support/Testing.h"

namespace dravik::test {

class ProcedureTest : public testing::Test {
  protected:
    ProcedureTest() { context.tool.tool = tool; }
    std::string message() { return sbr.panel("Message").text(); }
    static std::string content(const std::filesystem::path& file) {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    TracedJobs jobs;
    ScriptedPlatform platform;
    ScreenContext context{platform, jobs.folder()};
    TraceLog& log = context.log;
    StatusBar& sbr = context.screen.sbr;
    modErrors& errors = context.errors;
    std::shared_ptr<RecordingTool> tool = std::make_shared<RecordingTool>();
    ToolBinding& binding = context.tool;
};

}  // namespace dravik::test
