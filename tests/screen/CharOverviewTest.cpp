#include "screen/context/modGlobals.h"
#include "screen/support/BoundScreen.h"

namespace dravik::test {

using namespace screen;
using namespace ui;
namespace {

TEST_F(BoundScreen, CellsShowHowOftenACharacterWasTrained) {
    tool->characterSet = {"A", "B", "C", "D", "a", "="};
    tool->trained = {{"A", 0, {}}, {"B", 4, {}}, {"C", 5, {}}, {"D", 10, {}}, {"a", 9, {}}, {"z", 1, {}}};
    bind();
    EXPECT_EQ(cell("A").backColor(), rgb(255, 255, 255));
    EXPECT_EQ(cell("B").backColor(), rgb(255, 192, 192));
    EXPECT_EQ(cell("C").backColor(), rgb(255, 255, 128));
    EXPECT_EQ(cell("D").backColor(), rgb(0, 255, 0));
    EXPECT_EQ(cell("a").backColor(), rgb(255, 255, 128));
    EXPECT_EQ(cell("=").backColor(), rgb(255, 255, 255));
    EXPECT_EQ(cell("E").backColor(), kScrollBarColor);
    EXPECT_TRUE(cell("A").bold());
    EXPECT_FALSE(cell("E").bold());
    EXPECT_EQ(cell("z").backColor(), rgb(255, 192, 192)) << "trained, though not in the set";
    EXPECT_FALSE(cell("z").bold());
    EXPECT_EQ(cell("D").accessibleName(), "D, 10 trained");
    EXPECT_EQ(cell("E").accessibleName(), "E, not in font");
    EXPECT_FALSE(screen().overview.lblEmpty.bold());
    const auto& key = screen().overview.lblKey;
    EXPECT_EQ(key[0]->backColor(), cell("E").backColor());
    EXPECT_EQ(key[2]->backColor(), cell("B").backColor());
    EXPECT_EQ(key[4]->backColor(), cell("D").backColor());
    EXPECT_EQ(key[5]->backColor(), rgb(128, 128, 255));
}

TEST_F(BoundScreen, AnEmptySetLightsEmpty) {
    bind();
    screen().font.txtCharSet.setText("");
    control.HighlightIncluded("");
    EXPECT_EQ(screen().overview.lblEmpty.backColor(), rgb(255, 255, 255));
    EXPECT_TRUE(screen().overview.lblEmpty.bold());
    for (const auto& label : screen().overview.lblChar) EXPECT_EQ(label->backColor(), kScrollBarColor);
    EXPECT_EQ(message(), "");
}

TEST_F(BoundScreen, HoveringNamesTheCountOfTheMoment) {
    bind();
    cell("A").mouseMove(MouseEvent{});
    EXPECT_EQ(cell("A").toolTip(), "A -- 0 trained");
    tool->trained = {{"A", 12, {}}};
    cell("A").mouseMove(MouseEvent{});
    EXPECT_EQ(cell("A").toolTip(), "A -- 12 trained");
    DravikDlg unbound(platform, jobs.folder());
    unbound.screen().overview.lblChar[0]->mouseMove(MouseEvent{});
    EXPECT_EQ(unbound.screen().overview.lblChar[0]->toolTip(), "A -- -9999 trained");
}

TEST_F(BoundScreen, CellsStandWhereTheyAreDesigned) {
    const Layout layout = screen().overview.arrangement();
    const auto& cells = layout.children[0].children;
    ASSERT_EQ(cells.size(), 74u);
    const auto placeOf = [&](std::string_view caption) {
        for (const auto& each : cells)
            if (dynamic_cast<Label&>(*each.widget).caption() == caption) return each.place;
        return Place{};
    };
    EXPECT_EQ(placeOf("A").left, 180);
    EXPECT_EQ(placeOf("M").left, 4830);
    EXPECT_EQ(placeOf("Z").top, 660);
    EXPECT_EQ(placeOf("9").left, 3660);
    EXPECT_EQ(placeOf("=").left, 1350);
    EXPECT_EQ(placeOf("3").left, 1335);
    EXPECT_EQ(placeOf("_").top, 2490);
    EXPECT_EQ(placeOf("_").left, 4440);
}

TEST_F(BoundScreen, TheToolbarSwitchesViewsAndTracesItsKeys) {
    bind();
    toolButton("Log").press();
    toolButton("Numeric").press();
    EXPECT_FALSE(screen().overview.fraChar.visible());
    EXPECT_TRUE(screen().numeric.grid.visible());
    EXPECT_TRUE(screen().numeric.cboDisplay.visible());
    toolButton("Histogram").press();
    toolButton("Graphical").press();
    toolButton("Log").press();
    toolButton("Numeric").press();
    EXPECT_TRUE(screen().numeric.grid.visible());
    EXPECT_EQ(jobs.entries(), (std::vector<std::string>{"DravikDlg.tlbChars_ButtonClick('Numeric')",
                                                        "DravikDlg.tlbChars_ButtonClick('Graphical')"}));
}

TEST_F(BoundScreen, AnEmptyAnswerKeepsTheFontsCharacters) {
    tool->trained = {{"B", 1, {}}, {"C", 1, {}}};
    bind();
    toolButton("Array").press();
    tool->trained.clear();
    toolButton("Array").press();
    EXPECT_EQ(platform.opened("dlgCharArray").caption(), "Character Array for B");
    EXPECT_EQ(platform.shown.size(), 2u);
    EXPECT_EQ(message(), "");
}

TEST_F(BoundScreen, ArrayWithoutAnyCharacterIsReported) {
    tool->characterSet.clear();
    bind();
    toolButton("Array").press();
    EXPECT_EQ(message(), "tlbChars_ButtonClick Err 9 Subscript out of range");
}

}  // namespace
}  // namespace dravik::test
