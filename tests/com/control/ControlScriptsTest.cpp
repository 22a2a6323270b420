// The documentation's samples that need the control, which is registered for them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "activex/com/ComText.h"
#include "com/support/ChildProcess.h"
// Behind the Windows headers
#include "base/Paths.h"

namespace dravik {
namespace {

using test::Finished;
using test::runProcess;

class ControlScriptsTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { ASSERT_EQ(runProcess(L"regsvr32 /s \"" + control() + L"\"").code, 0u); }
    static void TearDownTestSuite() {
        EXPECT_EQ(runProcess(L"regsvr32 /u /s \"" + control() + L"\"").code, 0u);
    }
    static std::wstring windowsPath(const std::string& path) {
        return std::filesystem::absolute(toPath(path)).make_preferred().wstring();
    }
    static std::wstring control() { return windowsPath(DRAVIK_CONTROL); }
    static Finished script(const std::string& name) {
        return runProcess(L"cscript.exe //nologo \"" +
                          windowsPath(std::string(DRAVIK_SOURCE_DIR) + "/docs/samples/" + name) + L"\"");
    }
};

TEST_F(ControlScriptsTest, ToolWrittenInAScriptIsBound) {
    EXPECT_EQ(script("bind-tool.vbs").output,
              "&H80004005 DravikPage.DravikPage: Given step is not Dravik Tool\r\n"
              "Bound to Step.DravikTool.1\r\n"
              "unknown\r\n");
}

TEST_F(ControlScriptsTest, ProgramBindsAStepAndSeesWhyOneIsRefused) {
    const std::wstring program = L"\"" + windowsPath(DRAVIK_BIND_STEP) + L"\" ";
    const Finished bound = runProcess(program + L"Dravik.EmbeddedStep");
    EXPECT_EQ(bound.output, "bound\r\n");
    EXPECT_EQ(bound.code, 0u);
    const Finished refused = runProcess(program + L"Scripting.Dictionary");
    EXPECT_EQ(refused.code, 1u);
    EXPECT_THAT(refused.output, testing::HasSubstr("ProgId"));
}

}  // namespace
}  // namespace dravik
