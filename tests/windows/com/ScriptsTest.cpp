// Scripts and programs that find the server in the registry: those of the documentation, and the contract
// check.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Paths.h"
#include "contract/DrawnText.h"
#include "support/TemporaryFolder.h"
#include "windows/com/ComText.h"
#include "windows/com/support/ChildProcess.h"
#include "windows/com/support/ControlFile.h"
#include "windows/com/support/ImageFile.h"

namespace dravik {

using namespace com;
using namespace engine;
namespace {

using test::ControlFile;
using test::Finished;
using test::runProcess;

class ScriptsTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { ASSERT_EQ(ControlFile()("DllRegisterServer"), S_OK); }
    static void TearDownTestSuite() { EXPECT_EQ(ControlFile()("DllUnregisterServer"), S_OK); }

    // The script of the documentation with these arguments.
    static Finished script(const std::string& name, const std::vector<std::string>& arguments) {
        std::string line = "cscript.exe //nologo " + quoted(source("docs/samples/" + name));
        for (const std::string& argument : arguments) line += " " + quoted(argument);
        return runProcess(wide(line));
    }
    // A program that the build has made, with these arguments.
    static Finished program(const char* file, const wchar_t* arguments) {
        return runProcess(L"\"" + ControlFile::windowsPath(file) + L"\" " + arguments);
    }
    static std::string source(const std::string& path) {
        return fromPath(ControlFile::windowsPath(std::string(DRAVIK_SOURCE_DIR) + "/" + path));
    }
    static std::string quoted(const std::string& text) { return "\"" + text + "\""; }
};

TEST_F(ScriptsTest, LearnAFontReadWithItAndListItsSamples) {
    const TemporaryFolder jobs;
    const std::string characters = "0123456789ABCEHLT";
    test::writeImage(jobs.path("set.png"), drawn({characters}), GUID_ContainerFormatPng);
    test::writeImage(jobs.path("part.png"), drawn({"LATE", "2049"}), GUID_ContainerFormatPng);
    const Finished learnt = script("learn-and-read.vbs", {jobs.path("jobs"), "drawn", jobs.path("set.png"),
                                                          characters, jobs.path("part.png")});
    EXPECT_EQ(learnt.output, "LATE\r\n2049\r\n");
    const Finished miscounted =
        script("learn-and-read.vbs",
               {jobs.path("jobs"), "other", jobs.path("set.png"), characters + " ", jobs.path("part.png")});
    EXPECT_EQ(miscounted.output, "17 characters found, 18 typed\r\n");
    const Finished listed = script("list-samples.js", {jobs.path("jobs"), "drawn"});
    EXPECT_EQ(std::count(listed.output.begin(), listed.output.end(), '\n'), 17) << listed.output;
    EXPECT_THAT(listed.output, testing::StartsWith("0 0."));
    const Finished missing = script("list-samples.js", {jobs.path("jobs"), "none"});
    EXPECT_EQ(missing.code, 1u);
    EXPECT_THAT(missing.output, testing::StartsWith("Error 53: "));
}

TEST_F(ScriptsTest, ContractCheckTellsWhetherARegisteredToolKeepsIt) {
    for (const wchar_t* how : {L"Dravik.EmbeddedStep.1", L"Dravik.EmbeddedStep --late-bound"}) {
        const Finished checked = program(DRAVIK_TOOL_CHECK, how);
        EXPECT_EQ(checked.code, 0u) << checked.output;
        EXPECT_THAT(checked.output, testing::HasSubstr("kept    DeletionMovesLaterSamplesDown"));
        EXPECT_THAT(checked.output, testing::HasSubstr("\n11 rules kept, 0 broken"));
    }
    const Finished unknown = program(DRAVIK_TOOL_CHECK, L"No.Such.Tool");
    EXPECT_EQ(unknown.code, 2u);
    EXPECT_THAT(unknown.output, testing::HasSubstr("No.Such.Tool is not registered"));
    // A class that is no font tool.
    const Finished other = program(DRAVIK_TOOL_CHECK, L"Scripting.Dictionary");
    EXPECT_EQ(other.code, 2u);
    EXPECT_THAT(other.output, testing::HasSubstr("no font tool"));
}

TEST_F(ScriptsTest, ToolWrittenInAScriptIsBoundToTheControl) {
    EXPECT_EQ(script("bind-tool.vbs", {}).output,
              "&H80004005 DravikPage.DravikPage: Given step is not Dravik Tool\r\n"
              "Bound to Step.DravikTool.1\r\n"
              "unknown\r\n");
}

TEST_F(ScriptsTest, ProgramBindsAStepAndSeesWhyOneIsRefused) {
    const Finished bound = program(DRAVIK_BIND_STEP, L"Dravik.EmbeddedStep");
    EXPECT_EQ(bound.output, "bound\r\n");
    EXPECT_EQ(bound.code, 0u);
    const Finished refused = program(DRAVIK_BIND_STEP, L"Scripting.Dictionary");
    EXPECT_EQ(refused.code, 1u);
    EXPECT_THAT(refused.output, testing::HasSubstr("ProgId"));
}

}  // namespace
}  // namespace dravik
