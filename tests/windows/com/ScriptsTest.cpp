// Scripts and programs that find the server in the registry: those of the documentation, and the contract
// check.
#include "drivers/win32/ImageFile.h"
#include "windows/com/support/ComTest.h"

namespace dravik::test {
namespace {

struct Finished {
    int code = 0;
    std::string output;  // standard output and standard error
};

// Runs the command line to its end.
Finished runProcess(const std::wstring& commandLine) {
    FILE* pipe = _wpopen((L"\"" + commandLine + L" 2>&1\"").c_str(), L"rb");
    if (!pipe) throw std::runtime_error("the program does not start");
    Finished result;
    for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe))
        result.output += static_cast<char>(byte);
    result.code = _pclose(pipe);
    return result;
}

class ScriptsTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { ASSERT_EQ(controlFile()("DllRegisterServer"), S_OK); }
    static void TearDownTestSuite() { EXPECT_EQ(controlFile()("DllUnregisterServer"), S_OK); }

    // The script of the documentation, or of that file, with these arguments.
    static Finished script(const std::string& name, const std::vector<std::string>& arguments) {
        return runScript(source("docs/samples/" + name), arguments);
    }
    static Finished runScript(const std::string& file, const std::vector<std::string>& arguments) {
        std::string line = "cscript.exe //nologo \"" + file + "\"";
        for (const std::string& argument : arguments) line += " \"" + argument + "\"";
        return runProcess(wide(line));
    }
    // What the script of the documentation, or a copy of it, reads in an image of LATE and 2049 with a font
    // that it has taught kCharacters by this text.
    static constexpr char kCharacters[] = "0123456789ABCEHLT";
    static std::string learnt(const TemporaryFolder& folder, const std::string& file, const char* font,
                              const std::string& text) {
        test::writeImage(folder.path("set.png"), drawn({kCharacters}), GUID_ContainerFormatPng);
        test::writeImage(folder.path("part.png"), drawn({"LATE", "2049"}), GUID_ContainerFormatPng);
        return runScript(file,
                         {folder.path("jobs"), font, folder.path("set.png"), text, folder.path("part.png")})
            .output;
    }
    // Of a program that the build has made, with these arguments.
    static void expectEnd(const char* file, const std::wstring& arguments, int code,
                          const testing::Matcher<std::string>& output) {
        const Finished finished = runProcess(L"\"" + windowsPath(file) + L"\" " + arguments);
        EXPECT_EQ(finished.code, code) << file << ' ' << utf8(arguments);
        EXPECT_THAT(finished.output, output) << file << ' ' << utf8(arguments);
    }
    static inline const auto kKept = HasSubstr("\n11 rules kept, 0 broken");
    static std::string source(const std::string& path) {
        return fromPath(windowsPath(std::string(DRAVIK_SOURCE_DIR) + "/" + path));
    }
};

TEST_F(ScriptsTest, LearnAFontReadWithItAndListItsSamples) {
    const TemporaryFolder jobs;
    const std::string file = source("docs/samples/learn-and-read.vbs");
    EXPECT_EQ(learnt(jobs, file, "drawn", kCharacters), "LATE\r\n2049\r\n");
    EXPECT_EQ(learnt(jobs, file, "other", kCharacters + std::string(" ")),
              "17 characters found, 18 typed\r\n");
    const Finished listed = script("list-samples.js", {jobs.path("jobs"), "drawn"});
    EXPECT_EQ(std::count(listed.output.begin(), listed.output.end(), '\n'), 17) << listed.output;
    EXPECT_THAT(listed.output, StartsWith("0 0."));
    const Finished missing = script("list-samples.js", {jobs.path("jobs"), "none"});
    EXPECT_EQ(missing.code, 1);
    EXPECT_THAT(missing.output, StartsWith("Error 53: "));
}

TEST_F(ScriptsTest, ContractCheckTellsWhetherARegisteredToolKeepsIt) {
    for (const wchar_t* how : {L"Dravik.EmbeddedStep.1", L"Dravik.EmbeddedStep --late-bound"})
        expectEnd(DRAVIK_TOOL_CHECK, how, 0,
                  AllOf(HasSubstr("kept    DeletionMovesLaterSamplesDown"), kKept));
    expectEnd(DRAVIK_TOOL_CHECK, L"No.Such.Tool", 2, HasSubstr("No.Such.Tool is not registered"));
    expectEnd(DRAVIK_TOOL_CHECK, L"Scripting.Dictionary", 2, HasSubstr("no font tool"));
}

// The complete tools of the documentation, in C++ and as a scriptlet: registered as their comments say, they
// keep the contract, the control takes them as a step, and a script trains and reads with them.
TEST_F(ScriptsTest, SampleToolsKeepTheContractAndWorkAsAStep) {
    const auto registered = [](const std::wstring& name, const std::wstring& registration, auto&& use) {
        EXPECT_EQ(runProcess(L"regsvr32.exe /s " + registration).code, 0) << utf8(name);
        expectEnd(DRAVIK_TOOL_CHECK, name, 0, kKept);
        expectEnd(DRAVIK_BIND_STEP, name, 0, "bound\r\n");
        use();
        EXPECT_EQ(runProcess(L"regsvr32.exe /s /u " + registration).code, 0) << utf8(name);
        expectEnd(DRAVIK_TOOL_CHECK, name, 2, HasSubstr("is not registered"));
    };
    const std::wstring scriptlet = wide(source("docs/samples/small-tool.wsc"));
    registered(L"Sample.ScriptTool", L"/n \"/i:" + scriptlet + L"\" scrobj.dll", [] {});
    registered(L"Sample.SmallTool", L"\"" + windowsPath(DRAVIK_SMALL_TOOL) + L"\"", [] {
        expectEnd(DRAVIK_TOOL_CHECK, L"Sample.SmallTool --late-bound", 0, kKept);
        const TemporaryFolder folder;
        std::ifstream script(toPath(source("docs/samples/learn-and-read.vbs")));
        std::string text{std::istreambuf_iterator<char>(script), {}};
        const std::string embedded = "Dravik.EmbeddedStep";
        text.replace(text.find(embedded), embedded.size(), "Sample.SmallTool");
        std::ofstream(toPath(folder.path("learn.vbs"))) << text;
        EXPECT_EQ(learnt(folder, folder.path("learn.vbs"), "drawn", kCharacters), "LATE\r\n2049\r\n");
    });
}

TEST_F(ScriptsTest, ToolWrittenInAScriptIsBoundToTheControl) {
    EXPECT_EQ(script("bind-tool.vbs", {}).output,
              "&H80004005 DravikPage.DravikPage: Given step is not Dravik Tool\r\n"
              "Bound to Step.DravikTool.1\r\n"
              "unknown\r\n");
}

TEST_F(ScriptsTest, ProgramBindsAStepAndSeesWhyOneIsRefused) {
    expectEnd(DRAVIK_BIND_STEP, L"Dravik.EmbeddedStep", 0, "bound\r\n");
    expectEnd(DRAVIK_BIND_STEP, L"Scripting.Dictionary", 1, HasSubstr("no step"));
}

TEST_F(ScriptsTest, ContainersCloseByThemselvesAndSayWhenNothingWasShown) {
    for (const char* container : {DRAVIK_SHOW_CONTROL, DRAVIK_SHOW_IN_ATL})
        expectEnd(container, L"Dravik.EmbeddedStep --seconds 1", 0, "");
    expectEnd(DRAVIK_SHOW_CONTROL, L"Scripting.Dictionary --seconds 1", 1,
              "The control cannot be shown with that step\r\n");
    expectEnd(DRAVIK_SHOW_IN_ATL, L"Scripting.Dictionary --seconds 1", 1, testing::_);
    expectEnd(DRAVIK_SHOW_CONTROL, L"", 2, testing::_);
}

}  // namespace
}  // namespace dravik::test
