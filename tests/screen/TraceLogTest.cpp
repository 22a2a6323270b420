#include "screen/context/TraceLog.h"

#include "screen/support/ProcedureTest.h"

namespace dravik::test {
namespace {

class TraceLogTest : public ProcedureTest {
  protected:
    std::string file() { return content(jobs.folder().traceLog()); }
};

TEST_F(TraceLogTest, TheFirstEntryOfAThreadThatTracesStartsAFreshFile) {
    log.trace("Dravikdlg.SaveFont");
    EXPECT_FALSE(std::filesystem::exists(jobs.folder().traceLog()));
    std::ofstream(jobs.folder().traceLog()) << "old";
    g_bTrace = true;
    log.trace("Dravikdlg.SaveFont");
    g_bTrace = false;
    log.trace("not written");
    g_bTrace = true;
    log.trace("dlgCharArray.Form_Load");
    EXPECT_EQ(file(),
              "#\tDate\tTime\tEntry\r\n"
              "0\t11/21/2026\t3:04:05 PM\tDravikdlg.SaveFont\r\n"
              "1\t11/21/2026\t3:04:05 PM\tdlgCharArray.Form_Load\r\n");
    log.DlgEventLog("again", true);
    EXPECT_EQ(file(), "#\tDate\tTime\tEntry\r\n2\t11/21/2026\t3:04:05 PM\tagain\r\n");
}

TEST_F(TraceLogTest, EachThreadNumbersItsOwnEntries) {
    g_bTrace = true;
    log.trace("first");
    log.trace("second");
    std::thread([&] {
        EXPECT_FALSE(g_bTrace);
        g_bTrace = true;
        TraceLog(platform, jobs.folder()).trace("other");
    }).join();
    EXPECT_EQ(jobs.entries(), std::vector<std::string>{"other"}) << "its first entry starts the file";
    log.trace("third");
    EXPECT_EQ(jobs.entries(), (std::vector<std::string>{"other", "third"}));
    EXPECT_NE(file().find("\r\n2\t"), std::string::npos);
}

TEST_F(TraceLogTest, AFailureIsShownForEachEntryAndTheCallerGoesOn) {
    std::filesystem::remove_all(jobs.folder().folder());
    g_bTrace = true;
    platform.boxAnswers = {Answer::Ok, Answer::Ok};
    bool ran = false;
    context.procedures.run("Dravikdlg.FillItems", "FillItems", [&] { ran = true; });
    EXPECT_TRUE(ran);
    log.trace("second");
    EXPECT_THAT(platform.told(),
                ElementsAre("DlgEventLog: Last entry was Dravikdlg.FillItems", StartsWith("DlgEventLog: ")));
}

TEST_F(TraceLogTest, ErrorReportsAreShownAndTraced) {
    g_bTrace = true;
    context.procedures.run("Dravikdlg.cmdRevert_Click", "Revert",
                           [] { throw std::runtime_error("wires crossed"); });
    EXPECT_EQ(message(), "Revert Err 51 wires crossed");
    context.procedures.run("", "Learn", [] { throw std::bad_alloc(); });
    EXPECT_EQ(message(), "Learn Err 7 Out of memory");
    errors.UserMsg("Saved font");
    EXPECT_EQ(jobs.entries(),
              (std::vector<std::string>{
                  "Dravikdlg.cmdRevert_Click", "# Dravikdlg error: Revert Err 51 wires crossed",
                  "# Dravikdlg error: Learn Err 7 Out of memory", "Dravikdlg.UserMsg = Saved font"}));
}

TEST_F(TraceLogTest, AReportThatFailsItselfLeavesNoException) {
    const Procedures procedures(log, [](std::string_view, const Failure&) { throw std::bad_alloc(); });
    EXPECT_NO_THROW(procedures.run("", "Revert", [] { throw Failure(RuntimeError::Overflow); }));
}

}  // namespace
}  // namespace dravik::test
