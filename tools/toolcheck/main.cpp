// DravikToolCheck PROGID [--late-bound]: checks a registered font tool against the contract that the training
// screen relies on, and says of every rule whether the tool keeps it. Ends with 0 when it keeps all that
// could be checked, 1 when it breaks any, 2 when it cannot be checked.
//
// The tool has to have no fonts, since the check creates and deletes some. A tool that has a property
// JobsFolder is given an empty folder by it. Rules that need an image are checked with tools that have
// SetImage(Width, Height, Pixels), an array of grey levels row by row; with others they are left out.
#include <DravikLib.h>

#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "contract/DrawnText.h"
#include "contract/FontToolContract.h"
#include "contract/ForwardedTool.h"
#include "support/TemporaryFolder.h"
#include "windows/com/Boundary.h"
#include "windows/com/ComFontTool.h"
#include "windows/com/ComStep.h"
#include "windows/com/ComText.h"
#include "windows/com/LateBound.h"
#include "windows/com/ToolValues.h"
#include "windows/com/Variant.h"

namespace dravik {

using namespace com;
using namespace engine;
using namespace tool;
namespace {

std::wstring programIdentifier;
bool lateBound = false;

std::string name() {
    return utf8(programIdentifier);
}

// The call of the tool that was made last; below a broken promise it says where it showed.
std::string lastCall;

class NotedTool : public ForwardedTool {
  public:
    explicit NotedTool(std::unique_ptr<tool::FontTool> tool) : tool_(std::move(tool)) {}

  private:
    FontTool& on(const std::string& operation, const std::string& arguments) override {
        lastCall = operation + "(" + arguments + ")";
        return *tool_;
    }

    std::unique_ptr<tool::FontTool> tool_;
};

// The tool under check, new for every rule.
class RegisteredTool {
  public:
    RegisteredTool() {
        CLSID identifier;
        if (FAILED(CLSIDFromProgID(programIdentifier.c_str(), &identifier)))
            throw Failure(RuntimeError::FileNotFound, name() + " is not registered");
        com::check(CoCreateInstance(identifier, nullptr, CLSCTX_ALL, IID_IUnknown, object_.putVoid()));
        names_ = std::make_unique<com::LateBound>(object_.get());
        if (names_->has(L"JobsFolder")) names_->put(L"JobsFolder", com::Variant(com::Bstr(folder_.path())));
        if (!names_->has(L"GetSampleData") && (lateBound || !object_.as<IFontTool>()))
            throw Failure(RuntimeError::TypeMismatch,
                          lateBound
                              ? "It has no operations of a font tool's names"
                              : "It is no font tool: it has neither IFontTool nor operations of its names");
        tool_ = std::make_unique<NotedTool>(lateBound ? com::lateBoundFontToolOf(object_.get())
                                                      : com::fontToolOf(object_.get()));
        if (!tool_->GetFontList().empty())
            throw Failure(RuntimeError::InvalidProcedureCall,
                          "The tool has fonts already, which the check would overwrite");
        clean_ = true;
    }
    ~RegisteredTool() {
        if (!clean_) return;
        try {
            tool_->StopTraining();
            for (const std::string& name : tool_->GetFontList()) tool_->DeleteFont(name);
        } catch (const Failure&) {
            return;  // what is left shows as a font that the next rule finds
        }
    }
    RegisteredTool(const RegisteredTool&) = delete;
    RegisteredTool& operator=(const RegisteredTool&) = delete;

    tool::FontTool& tool() { return *tool_; }
    bool showsImages() { return names_->has(L"SetImage"); }
    void show(const std::string& text) {
        const engine::GreyImage image = drawn({text});
        std::vector<std::int32_t> levels;
        for (int y = 0; y < image.height(); ++y)
            for (const std::uint8_t level : image.row(y)) levels.push_back(level);
        std::array arguments = {com::Variant(std::int32_t{image.width()}),
                                com::Variant(std::int32_t{image.height()}),
                                com::listValue(levels, com::Elements::Variants)};
        names_->call(L"SetImage", arguments);
    }
    tool::StepPtr step() { return com::stepFromCom(object_.get()); }

  private:
    TemporaryFolder folder_;
    com::ComPtr<IUnknown> object_;
    std::unique_ptr<com::LateBound> names_;
    std::unique_ptr<tool::FontTool> tool_;
    bool clean_ = false;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Tool, FontToolContract, RegisteredTool);

TEST(Step, IsADravikStepWithASelectedFont) {
    RegisteredTool tool;
    const tool::StepPtr step = tool.step();
    EXPECT_EQ(step->programIdentifier(), kDravikStep);
    EXPECT_NO_THROW(step->datum(kSelectedFontDatum));
    EXPECT_THROW(step->datum("NoDatumOfThisName"), Failure);
}

TEST(Fonts, AreMadeCopiedRenamedAndDeletedWithoutAnImage) {
    RegisteredTool bench;
    tool::FontTool& tool = bench.tool();
    tool.CreateFont("One");
    EXPECT_TRUE(tool.GetCharacterSet().empty());
    tool.SetCharacterSet({"B", "A"});
    EXPECT_THAT(tool.GetCharacterSet(), testing::ElementsAre("B", "A"));
    EXPECT_TRUE(tool.GetUncommittedSamples().empty());
    EXPECT_EQ(tool.GetSampleData(kAllUncommitted, kSampleFields), nullptr);
    EXPECT_EQ(tool.GetSampleData(kAllCommitted, kSampleFields), nullptr);
    tool.SetTrainTimeout(180);
    EXPECT_EQ(tool.GetTrainTimeout(), 180);
    tool.SaveFont("One");
    tool.DuplicateFont("Two", "One");
    tool.RenameFont("Three", "One");
    EXPECT_THAT(tool.GetFontList(), testing::UnorderedElementsAre("Two", "Three"));
    tool.LoadFont("Two");
    EXPECT_THAT(tool.GetCharacterSet(), testing::ElementsAre("B", "A"));
    tool.DeleteFont("Three");
    EXPECT_THAT(tool.GetFontList(), testing::ElementsAre("Two"));
    EXPECT_THROW(tool.LoadFont("Three"), Failure);
}

// One line for each rule, and below it what the tool did instead.
class Lines : public testing::EmptyTestEventListener {
  public:
    int kept = 0;
    int broken = 0;

  private:
    void OnTestPartResult(const testing::TestPartResult& result) override {
        if (!result.failed()) return;
        problems_.push_back(result.summary() + (lastCall.empty() ? "" : "\nAfter the call " + lastCall));
    }
    void OnTestStart(const testing::TestInfo&) override { lastCall.clear(); }
    void OnTestEnd(const testing::TestInfo& rule) override {
        std::printf("%s  %s\n", problems_.empty() ? "kept  " : "BROKEN", rule.name());
        for (const std::string& problem : problems_) std::printf("%s\n", problem.c_str());
        ++(problems_.empty() ? kept : broken);
        problems_.clear();
    }

    std::vector<std::string> problems_;
};

int checkTool() {
    bool showsImages = false;
    try {
        RegisteredTool tool;
        showsImages = tool.showsImages();
    } catch (const Failure& failure) {
        std::fprintf(stderr, "%s cannot be checked: %s\n", utf8(programIdentifier).c_str(),
                     failure.description().c_str());
        return 2;
    }
    if (!showsImages) GTEST_FLAG_SET(filter, "Step.*:Fonts.*");
    auto& listeners = testing::UnitTest::GetInstance()->listeners();
    delete listeners.Release(listeners.default_result_printer());
    auto* lines = new Lines;
    listeners.Append(lines);
    const int result = RUN_ALL_TESTS();
    std::printf("%d rules kept, %d broken\n", lines->kept, lines->broken);
    if (!showsImages) std::printf("The tool has no SetImage: rules that need an image were not checked\n");
    return result == 0 && lines->broken == 0 ? 0 : 1;
}

}  // namespace
}  // namespace dravik

int wmain(int count, wchar_t** arguments) {
    for (int i = 1; i < count; ++i) {
        const std::wstring_view argument = arguments[i];
        if (argument == L"--late-bound") {
            dravik::lateBound = true;
        } else if (!dravik::programIdentifier.empty() || argument.starts_with(L'-')) {
            dravik::programIdentifier.clear();  // not understood
            break;
        } else {
            dravik::programIdentifier = argument;
        }
    }
    if (dravik::programIdentifier.empty()) {
        std::fprintf(stderr, "usage: DravikToolCheck PROGID [--late-bound]\n");
        return 2;
    }
    testing::InitGoogleTest();
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 2;
    const int result = dravik::checkTool();
    CoUninitialize();
    return result;
}
