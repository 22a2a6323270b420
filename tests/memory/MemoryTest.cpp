// Memory that ends at any allocation: each act of the operator on the embedded tool is done once to count the
// allocations of all its threads, then once for each of them with that one failing. Afterwards the act is
// done or nothing of it is, in memory and for a program that finds the files as they are then, and it can be
// done again.
#include <execinfo.h>
#include <unistd.h>

#include "engine/ToolActs.h"
#include "faults/support/FontContent.h"
#include "memory/support/FailingMemory.h"
#include "support/Testing.h"
#include "tool/Samples.h"

namespace dravik::test {
namespace {

namespace fs = std::filesystem;
using tool::SampleKind;

// Names for which a string needs memory.
constexpr char kFirst[] = "font of the first line";
constexpr char kSecond[] = "font of the second line";
constexpr char kNew[] = "font of another line";

struct Act {
    const char* name;
    std::function<void(engine::EmbeddedTool&)> before;  // beyond kFirst of 6 samples, which is loaded
    std::function<void(engine::EmbeddedTool&)> act;
    bool canBeUndone = false;
};

void PrintTo(const Act& act, std::ostream* out) {
    *out << act.name;
}

void include(engine::EmbeddedTool& tool, const std::string& text) {
    teach(tool, text);
    tool.endAct({}, "included");
}

void learn(engine::EmbeddedTool& tool) {
    train(tool);
    if (tool.IsTrainingAborted()) throw Failure(RuntimeError::InternalError, "no result");
    tool.endAct({}, "trained");
}

std::vector<Act> acts() {
    using Tool = engine::EmbeddedTool;
    const auto nothing = [](Tool&) {};
    const auto includes = [](Tool& tool) { include(tool, "HTL"); };
    const auto ended = [](auto change) {
        return [change](Tool& tool) {
            change(tool);
            tool.endAct({}, {});
        };
    };
    const auto afterIncluding = [](auto act) {
        return [act](Tool& tool) {
            include(tool, "HTL");
            act(tool);
        };
    };
    return {
        {"Include", nothing, includes, true},
        {"DeleteASample", nothing, ended([](Tool& tool) { tool.DeleteSample(300002); }), true},
        {"DeleteManySamples", nothing, ended([](Tool& tool) {
             tool.deleteSamples(std::vector<std::int32_t>{300001, 300003, 300004});
         }),
         true},
        {"Relabel", nothing, ended([](Tool& tool) {
             tool.relabelSamples(std::vector<std::int32_t>{300001, 300003}, "X");
         }),
         true},
        {"SetCharacters", nothing, ended([](Tool& tool) {
             tool.SetCharacterSet({"A", "B", "H", "T"});
         }),
         true},
        {"Learn", nothing, learn, true},
        {"Undo", includes, [](Tool& tool) { tool.undo(); }},
        {"Redo", afterIncluding([](Tool& tool) { tool.undo(); }), [](Tool& tool) { tool.redo(); }},
        {"Save", includes, [](Tool& tool) { tool.SaveFont(kFirst); }},
        {"SaveTrained", learn, [](Tool& tool) { tool.SaveFont(kFirst); }},
        {"Revert", learn, [](Tool& tool) { tool.RevertFont(kFirst); }},
        {"Discard", includes, [](Tool& tool) { tool.discardUnsaved(kFirst); }},
        {"ChooseAnother", includes, [](Tool& tool) { tool.LoadFont(kSecond); }},
        {"NewOverOld", includes, [](Tool& tool) { tool.CreateFont(kSecond); }},
        {"Rename", includes, [](Tool& tool) { tool.RenameFont(kNew, kFirst); }},
        {"Duplicate", includes, [](Tool& tool) { tool.DuplicateFont(kNew, kFirst); }},
        {"DeleteAFont", includes, [](Tool& tool) { tool.DeleteFont(kFirst); }},
        {"BringBackADeletedFont", afterIncluding([](Tool& tool) { tool.DeleteFont(kFirst); }),
         [](Tool& tool) { tool.undo(); }},
        {"RestoreAVersion", afterIncluding([](Tool& tool) { tool.SaveFont(kFirst); }),
         [](Tool& tool) { tool.restoreVersion(tool.versions(kFirst).front(), kFirst); }},
    };
}

// Every font as it is shown, by its name.
using Fonts = std::map<std::string, std::string>;

class Memory : public testing::TestWithParam<Act> {
  protected:
    // A tool on a fresh copy of the fonts, with all done that comes before the act.
    std::unique_ptr<engine::EmbeddedTool> begin() const {
        fs::remove_all(folder.path("jobs"));
        fs::copy(folder.path("start"), folder.path("jobs"), fs::copy_options::recursive);
        auto tool = opened("jobs");
        tool->LoadFont(kFirst);
        GetParam().before(*tool);
        return tool;
    }
    std::unique_ptr<engine::EmbeddedTool> opened(const char* jobs) const {
        auto tool = std::make_unique<engine::EmbeddedTool>(JobFolder(folder.path(jobs)));
        tool->keepUnsaved();
        return tool;
    }
    Fonts fontsOf(engine::EmbeddedTool& tool) const {
        Fonts fonts;
        const std::string copy = folder.path("copy.nnd");
        for (const std::string& name : tool.GetFontList()) {
            tool.exportFont(name, copy);
            const engine::FontRecord font = engine::readFont(copy);
            fonts[name] = contentOf(font) + (font.training.empty() ? "" : " trained");
        }
        return fonts;
    }
    // What a program finds that is started when this one is killed now.
    Fonts fontsAfterAKill() const {
        fs::remove_all(folder.path("killed"));
        fs::copy(folder.path("jobs"), folder.path("killed"), fs::copy_options::recursive);
        return fontsOf(*opened("killed"));
    }
    // Why the act failed; "" when it did not.
    static std::string tryAct(engine::EmbeddedTool& tool, long at) {
        allocations = 0;
        failingAllocation = at;
        isCounting = true;
        try {
            GetParam().act(tool);
            isCounting = false;
            return "";
        } catch (...) {
            isCounting = false;
            return currentFailure().description();
        }
    }

    void check(long at, const Fonts& before, const Fonts& after) const {
        auto tool = begin();
        const std::string problem = tryAct(*tool, at);
        const Fonts left = fontsOf(*tool), killed = fontsAfterAKill();
        if (problem.empty()) {
            EXPECT_EQ(left, after) << "it ended well and did not do it";
            EXPECT_EQ(killed, after) << "it is lost with the program";
            return;
        }
        EXPECT_TRUE(left == before || left == after)
            << "half done: " << problem << testing::PrintToString(left);
        EXPECT_TRUE(killed == before || killed == after) << "half done on the disk: " << problem;
        // What the program does after a failure: what was found is thrown away, what was done is an act.
        for (std::size_t count = tool->GetUncommittedSamples().size(); count-- > 0;)
            tool->DeleteSample(tool::sampleIdentifier(SampleKind::Uncommitted, static_cast<int>(count)));
        tool->endAct({}, {});
        if (left == before) {
            EXPECT_EQ(tryAct(*tool, 0), "") << "not done when tried again, after: " << problem;
            EXPECT_EQ(fontsOf(*tool), after) << "after: " << problem;
        }
        EXPECT_EQ(fontsAfterAKill(), after) << "after: " << problem;
        if (!GetParam().canBeUndone) return;
        tool->undo();
        EXPECT_EQ(fontsOf(*tool), before) << "taken back, it is another font, after: " << problem;
    }

    // In memory where there is such a folder, as nothing here is about the disk.
    static TemporaryFolder madeFolder() {
        if (fs::exists("/dev/shm")) setenv("TMPDIR", "/dev/shm", 1);
        return {};
    }
    const TemporaryFolder folder = madeFolder();
};

long pointNow = 0;

[[noreturn]] void tellTermination() {
    isCounting = false;
    std::cerr << "ended at allocation " << pointNow << std::endl;
    std::array<void*, 64> frames{};
    backtrace_symbols_fd(frames.data(), backtrace(frames.data(), 64), STDERR_FILENO);
    std::abort();
}

TEST_P(Memory, ThatEndsLeavesAnActDoneOrNotDone) {
    std::set_terminate(tellTermination);
    {
        auto tool = opened("start");
        for (const char* font : {kSecond, kFirst}) {
            tool->CreateFont(font);
            tool->SetCharacterSet({"A", "B", "H"});
            include(*tool, "ABHABH");
            tool->SaveFont(font);
        }
        // What is found unsaved when it is opened.
        tool->LoadFont(kSecond);
        include(*tool, "L");
    }
    // The first change begins a journal.
    fs::remove(folder.path("start/Fonts/") + kFirst + ".nnd.journal");
    Fonts before, after;
    long all = 0;
    {
        auto tool = begin();
        before = fontsOf(*tool);
        ASSERT_EQ(tryAct(*tool, 0), "");
        all = allocations;
        after = fontsOf(*tool);
    }
    ASSERT_GT(all, 0);
    for (pointNow = 1; pointNow <= all && !HasFailure(); ++pointNow) {
        const testing::ScopedTrace trace(__FILE__, __LINE__, "allocation " + std::to_string(pointNow));
        try {
            check(pointNow, before, after);
        } catch (...) {
            ADD_FAILURE() << currentFailure().description();
        }
    }
    std::cout << GetParam().name << ": " << all << " points\n";
}

INSTANTIATE_TEST_SUITE_P(Acts, Memory, testing::ValuesIn(acts()), testing::PrintToStringParamName());

}  // namespace
}  // namespace dravik::test
