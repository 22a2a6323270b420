// The operator's work in the real control while its files fail, and as if the host died there: what the
// control has said to be done is in the font when it is loaded the next time, or it was said in words that it
// is not.
#include "engine/embedded/EmbeddedTool.h"
#include "tool/Samples.h"
#include "windows/control/support/Bench.h"
#include "windows/control/support/FaultyDisk.h"

namespace dravik::test {
namespace {

using Kind = FaultyDisk::Kind;

constexpr long kSomePoints = 30;

struct Session {
    int included = 0;  // samples, as the control said
    std::string said;  // failures; without any the font is saved
    long operations = 0;
};

// What the status bar says after an include, 0 for a refusal.
int include(Bench& bench, const wchar_t* text) {
    const std::wstring before = bench.status();
    const std::size_t boxes = bench.script.messages().size();
    bench.type(text);
    bench.press(L"&Include");
    EXPECT_TRUE(bench.host->pumpUntil([&] {
        return bench.status() != before || bench.script.messages().size() != boxes;
    })) << utf8(before);
    bench.host->pump();
    const std::wstring after = bench.status();
    return after.find(L" samples included.") == std::wstring::npos ? 0 : std::stoi(after);
}

Session work(const std::string& folder, long at, Kind kind, DWORD error) {
    Session session;
    Bench bench("strict");
    const auto step = controlFile().make(CLSID_EmbeddedStep).as<IEmbeddedStep>();
    EXPECT_EQ(step->put_JobsFolder(Bstr(folder).get()), S_OK);
    bench.bind("HELLO", step);
    const FaultyDisk disk(GetModuleHandleW(L"DravikDlg.ocx"), wide(folder), at, kind, error);
    for (const wchar_t* text : {L"HELLO", L"OLEH"}) {
        bench.show(utf8(text));
        const int included = include(bench, text);
        session.included += included;
        if (included == 0) session.said += utf8(bench.status()) + " ";
    }
    if (session.included > 0) bench.script.expectBox(L"Font Changed", IDYES);
    bench.host->close();
    for (const std::string& one : bench.script.messages()) session.said += one + " ";
    bench.step = {};
    bench.host.reset();
    session.operations = disk.operations();
    return session;
}

void check(const std::string& folder, const Session& session) {
    engine::EmbeddedTool tool{JobFolder(folder)};
    tool.LoadFont("bench");
    const auto table = tool.GetSampleData(tool::kAllCommitted, tool::kSampleFields);
    const int samples = table ? table->upperRow() : 0;
    EXPECT_EQ(samples, session.included) << session.said;
    EXPECT_TRUE(tool.GetUncommittedSamples().empty());
    const auto recovered = tool.takeRecovered();
    if (session.said.empty()) {
        EXPECT_TRUE(recovered.empty());
        EXPECT_EQ(tool.summary("bench").samples, session.included);
    } else if (tool.summary("bench").samples != session.included) {
        EXPECT_EQ(recovered.size(), 1u) << "no word of what was found: " << session.said;
    }
}

TEST(FaultyDisk, LosesNothingOfWhatTheControlHasSaidToBeDone) {
    const auto run = [](long at, Kind kind, DWORD error) {
        SCOPED_TRACE(testing::Message()
                     << "operation " << at << ", kind " << static_cast<int>(kind) << ", error " << error);
        const TemporaryFolder folder;
        const Session session = work(folder.path() + "\\", at, kind, error);
        check(folder.path() + "\\", session);
        return session;
    };
    const Session usual = run(0, Kind::Fails, 0);
    EXPECT_EQ(usual.said, "");
    ASSERT_EQ(usual.included, 9);
    ASSERT_GT(usual.operations, 10);

    constexpr std::pair<Kind, DWORD> kWays[] = {{Kind::Fails, ERROR_DISK_FULL},
                                                {Kind::Fails, ERROR_ACCESS_DENIED},
                                                {Kind::Dies, ERROR_WRITE_FAULT},
                                                {Kind::DiesHalfWay, ERROR_WRITE_FAULT}};
    const long all = usual.operations * static_cast<long>(std::size(kWays));
    const long stride = std::getenv("DRAVIK_FAULTS_ALL") ? 1 : (all + kSomePoints - 1) / kSomePoints;
    long points = 0;
    for (long i = 0; i < all; i += stride, ++points) {
        const auto [kind, error] = kWays[static_cast<std::size_t>(i) % std::size(kWays)];
        run(1 + i / static_cast<long>(std::size(kWays)), kind, error);
    }
    std::cout << usual.operations << " operations, " << points << " points\n";
}

}  // namespace
}  // namespace dravik::test
