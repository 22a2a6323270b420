#include "screen/support/BoundScreen.h"

namespace dravik::test {
namespace {

class PopupMenusTest : public BoundScreen {
  protected:
    PopupMenusTest() {
        tool->addCommitted("A", {0.1, 0.2, 0.3});
        tool->addCommitted("B", {0.1});
        tool->train();
        bind();
    }

    void rightClickGrid(const std::string& pick) {
        platform.menuPicks = {pick};
        screen().numeric.grid.mouseDown(MouseEvent{kRightButton, 0, 30, 45});
    }
};

TEST_F(PopupMenusTest, ItemsFollowTheNumberOfTrainedSamples) {
    const std::map<std::string, std::vector<std::string>> items = {
        {"A",
         {"Show Character Array for A", "Show StdDev Array for A", "Show Histogram for A",
          "Show &Font Histogram", "Delete Training for A", "Remove A from Font"}},
        {"B",
         {"Show Character Array for B", "Show StdDev Array for B", "Show &Font Histogram",
          "Delete Training for B", "Remove B from Font"}},
        {"C",
         {"Show Character Array for C", "Show StdDev Array for C", "Show &Font Histogram",
          "Remove C from Font"}}};
    for (const auto& [character, expected] : items) {
        rightClick(character, "");
        EXPECT_EQ(platform.menus.back(), expected);
    }
}

TEST_F(PopupMenusTest, OnlyARightClickOnACharacterOfTheFontOpensTheMenu) {
    screen().sbr.panel("Message").setText("old");
    cell("A").mouseDown(MouseEvent{kLeftButton, 0, 1, 1});
    EXPECT_EQ(message(), "");
    cell("A").mouseDown(MouseEvent{kMiddleButton, 0, 1, 1});
    cell("z").mouseDown(MouseEvent{kRightButton, 0, 1, 1});
    EXPECT_TRUE(platform.menus.empty());
}

TEST_F(PopupMenusTest, RemovingACharacterAsksFirst) {
    platform.boxAnswers = {Answer::No, Answer::Yes};
    rightClick("A", "mnuMainCharacterExclude");
    EXPECT_THAT(platform.told(), ElementsAre("Delete Samples for A: Are you certain you want to exclude the "
                                             "character A from the font?"));
    EXPECT_TRUE(tool->changes().empty());
    rightClick("A", "mnuMainCharacterExclude");
    EXPECT_EQ(tool->committed.size(), 1u);
    EXPECT_EQ(tool->count("SetCharacterSet(B,C)"), 1);
    EXPECT_EQ(cell("A").bold(), false);
    EXPECT_EQ(message(), "Excluded A. Retrain required.");
}

TEST_F(PopupMenusTest, ASetThatCannotBeReadIsNotTakenForAnEmptyOne) {
    platform.boxAnswers = {Answer::Yes};
    tool->failAt("GetCharacterSet", 70, "Permission denied");
    rightClick("A", "mnuMainCharacterExclude");
    EXPECT_EQ(tool->characterSet, (CharacterSet{"A", "B", "C"}));
    EXPECT_EQ(message(), "FontWithoutChar Err 70 Permission denied");
}

TEST_F(PopupMenusTest, DeletingTheTrainingAsksFirstAndKeepsTheSet) {
    platform.boxAnswers = {Answer::Yes};
    control.HighlightIncluded("A");
    const FocusCount focus(screen().train.cmdTrain);
    rightClick("A", "mnuMainCharacterDelete");
    EXPECT_EQ(focus, 1);
    EXPECT_EQ(cell("A").backColor(), rgb(255, 192, 192)) << "the highlight of samples that are gone";
    EXPECT_THAT(platform.told(), ElementsAre("Delete Samples for A: Are you certain you want to delete all "
                                             "samples for the character A?"));
    EXPECT_EQ(tool->changes(), std::vector<std::string>(3, "DeleteSample(300000)"));
    EXPECT_EQ(message(), "Deleted character A. Retrain to update display.");
    EXPECT_TRUE(control.m_FontChanged());
}

TEST_F(PopupMenusTest, TheViewersOpenAndCloseWithTheControl) {
    rightClick("A", "mnuMainCharacterShowArray");
    rightClick("A", "mnuMainCharacterShowStdDev");
    rightClick("A", "mnuMainCharHist");
    rightClick("B", "mnuMainFontHist");
    EXPECT_EQ(platform.open.size(), 2u);
    screen().font.txtCharSet.setText("AB");
    platform.boxAnswers = {Answer::No};
    std::size_t openAtQuestion = 9;
    platform.asking = [&] { openAtQuestion = platform.open.size(); };
    control.UserControl_Terminate();
    EXPECT_EQ(openAtQuestion, 0u) << "a viewer could not be used any more while the screen asks";
}

TEST_F(PopupMenusTest, TheGridsMenuCopiesDeletesAndShowsTheFontHistogram) {
    screen().numeric.grid.select(1, 1, 2, 1);
    rightClickGrid("mnuMainGridCopy");
    EXPECT_EQ(platform.clipboard, "A\t\r\nA\t\r\n");
    EXPECT_THAT(platform.menus[0], ElementsAre("&Copy", "&Delete", "Show &Font Histogram"));
    rightClickGrid("mnuMainGridDelete");
    EXPECT_EQ(tool->count("DeleteSample(300000)"), 2);
    rightClickGrid("mnuMainFontHist");
    EXPECT_EQ(platform.opened("dlgCharHist").caption(), "Frequency Histogram for Font");
}

}  // namespace
}  // namespace dravik::test
