#include "screen/support/BoundScreen.h"

namespace dravik::test {
namespace {

class SamplesGridTest : public BoundScreen {
  protected:
    SamplesGridTest() {
        tool->addCommitted("B", {0.1, 0.25});
        tool->addCommitted("A", {0.0005});
        tool->trained = {{"A", 1, {}}, {"B", 2, {}}};
        bind();
    }

    Grid& grid() { return screen().numeric.grid; }
    void display(int kind) { screen().numeric.cboDisplay.setListIndex(kind); }
    // By its rows from here to there.
    void remove(int from, int to) {
        grid().select(from, 0, to, 0);
        grid().keyDown(kKeyDelete, 0);
    }
    void click(int button, int row, int column) {
        grid().setMouseCell(row, column);
        grid().mouseDown(MouseEvent{button, 0, 0, 0});
    }
    std::string column(int index) {
        std::string all;
        for (int row = 1; row < grid().rows(); ++row) all += grid().text(row, index) + " ";
        return all;
    }
};

TEST_F(SamplesGridTest, ShowsNumbersCharactersAndFormattedFields) {
    EXPECT_EQ(grid().rows(), 4);
    EXPECT_EQ(grid().columns(), 54);
    EXPECT_EQ(grid().text(0, 0) + grid().text(0, 1), "");
    EXPECT_NE(grid().text(0, 2), "");
    const char* const columns[] = {"0 1 2 ", "B B A ", "0.100 0.250 0.001 "};
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(column(i), columns[i]);
        EXPECT_EQ(grid().align(i), i < 2 ? CellAlign::Center : CellAlign::Right);
    }
    display(kDisplayStatistics);
    EXPECT_EQ(grid().columns(), 53);
    EXPECT_EQ(column(2), "1.000 2.000 ");
    display(kDisplayUncommitted);
    EXPECT_EQ(column(2), "1.000 2.000 ") << "an empty answer leaves the grid as it was";
}

TEST_F(SamplesGridTest, TheOrderChosenSurvivesARefill) {
    click(kLeftButton, 0, 1);
    EXPECT_EQ(column(0), "2 0 1 ");
    display(kDisplayCommitted);
    EXPECT_EQ(column(0), "2 0 1 ");
    click(kLeftButton, 0, 2);
    click(kLeftButton, 2, 0);
    EXPECT_EQ(column(0), "2 0 1 ") << "only the headings of the first two columns sort";
    grid().select(2, 5, 2, 5);
    display(kDisplayCommitted);
    EXPECT_EQ(grid().column(), 1) << "the column that decides is the current one";
    click(kLeftButton, 0, 0);
    EXPECT_EQ(column(0), "0 1 2 ");
    EXPECT_EQ(grid().column(), 0);
}

TEST_F(SamplesGridTest, CopyPutsATabBehindEveryCell) {
    grid().select(2, 2, 1, 1);
    grid().keyDown(kKeyInsert, kCtrlMask);
    EXPECT_EQ(platform.clipboard, "B\t0.100\t\r\nB\t0.250\t\r\n");
    platform.clipboard = "kept";
    grid().keyDown(kKeyInsert, kShiftMask);
    EXPECT_EQ(platform.clipboard, "kept");

    tool->setAnswer(kAllCommitted, {{"No", "Code", "7"}});
    display(kDisplayCommitted);
    EXPECT_EQ(grid().text(0, 2), "7") << "headings are texts, whatever they read";
    grid().keyDown(kKeyInsert, kCtrlMask);
    EXPECT_EQ(platform.clipboard, "") << "there is no record to copy";
}

TEST_F(SamplesGridTest, DeleteNamesTheSameSampleOncePerSelectedRow) {
    remove(2, 3);
    EXPECT_EQ(tool->count("DeleteSample(300001)"), 2);
    EXPECT_EQ(tool->committed.size(), 1u);
    EXPECT_EQ(grid().rows(), 2);
    EXPECT_TRUE(control.m_FontChanged());
    EXPECT_EQ(message(), "Deleted samples. Learn again to update graphical display.");

    tool->uncommitted.assign(5, {"A", 0, {}});
    display(kDisplayUncommitted);
    remove(3, 5);
    EXPECT_EQ(tool->count("DeleteSample(200002)"), 3);
}

TEST_F(SamplesGridTest, AFailedDeletionIsReportedUnderTheKeyAndTheRowsAreShownAnew) {
    tool->onCall = [&](const std::string&) {
        if (tool->count("DeleteSample(300000)") == 2) tool->failAt("DeleteSample", 70, "Permission denied");
    };
    remove(1, 2);
    EXPECT_EQ(message(), "grid_KeyDown Err 70 Permission denied");
    EXPECT_TRUE(control.m_FontChanged());
    EXPECT_EQ(column(1), "B A ") << "the first of the two is gone";
}

TEST_F(SamplesGridTest, RowsThatNameNoSampleDeleteNothing) {
    const auto pressesDeleteInVain = [&](const char* what) {
        tool->calls.clear();
        grid().keyDown(kKeyDelete, 0);
        EXPECT_THAT(tool->changes(), IsEmpty()) << what;
        EXPECT_FALSE(control.m_FontChanged()) << what;
        EXPECT_EQ(message(), "Deleted samples. Learn again to update graphical display.");
    };
    grid().select(3, 0, 1, 0);
    pressesDeleteInVain("an upward selection");
    grid().select(1, 0, 1, 0);
    display(kDisplayStatistics);
    pressesDeleteInVain("the statistics");
    display(kDisplayUncommitted);
    pressesDeleteInVain("a kind without records: those of before stay shown");
    tool->setAnswer(kAllCommitted, {{"No", "C"}});
    display(kDisplayCommitted);
    pressesDeleteInVain("headings only");
    tool->answers.clear();
    display(kDisplayCommitted);
    grid().setRedraw(false);
    pressesDeleteInVain("the font is gone");
}

}  // namespace
}  // namespace dravik::test
