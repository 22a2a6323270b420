#include "screen/support/BoundScreen.h"

namespace dravik::test {
namespace {

TEST_F(BoundScreen, CellsShowHowOftenACharacterWasTrained) {
    tool->characterSet = {"A", "B", "C", "D", "a", "="};
    tool->trained = {{"A", 0, {}}, {"B", 4, {}}, {"C", 5, {}}, {"D", 10, {}}, {"a", 9, {}}, {"z", 1, {}}};
    bind();
    const auto& key = screen().overview.lblKey;
    for (std::size_t i = 0; i < key.size(); ++i)
        for (std::size_t j = 0; j < i; ++j) EXPECT_NE(key[i]->backColor(), key[j]->backColor());
    const auto state = [&](const char* caption) {
        std::size_t i = 0;
        while (i < key.size() && key[i]->backColor() != cell(caption).backColor()) ++i;
        return i < key.size() ? screen().overview.lblNote[i]->caption() : "none of the key";
    };
    for (const auto& [caption, count] : {std::pair("A", "0"),
                                         {"B", "1 +"},
                                         {"C", "5 +"},
                                         {"D", "10+"},
                                         {"a", "5 +"},
                                         {"=", "0"},
                                         {"z", "1 +"},
                                         {"E", "Not In Font"}})
        EXPECT_EQ(state(caption), count) << caption;
    EXPECT_TRUE(cell("A").bold());
    EXPECT_FALSE(cell("E").bold());
    EXPECT_FALSE(cell("z").bold()) << "trained, though not in the set";
    EXPECT_EQ(cell("D").accessibleName(), "D, 10 trained");
    EXPECT_EQ(cell("E").accessibleName(), "E, not in font");
    EXPECT_FALSE(screen().overview.lblEmpty.bold());
    EXPECT_EQ(screen().overview.lblEmpty.backColor(), cell("E").backColor()) << "the font is not empty";
    EXPECT_GT(cell("A").fontSize(), screen().overview.lblNote[0]->fontSize());
    control.HighlightIncluded("Db");
    EXPECT_EQ(state("D") + ", " + state("b") + ", " + state("B"), "Included, Included, 1 +");
    EXPECT_EQ(cell("D").accessibleName(), "D, 10 trained, included");
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

TEST_F(BoundScreen, TheToolbarSwitchesViewsAndTracesItsKeys) {
    tool->trained = {{"B", 1, {}}, {"C", 1, {}}};
    bind();
    toolButton("Log").press();
    toolButton("Numeric").press();
    auto& numeric = screen().numeric;
    EXPECT_TRUE(numeric.grid.visible() && numeric.cboDisplay.visible() && numeric.lblCharData.visible() &&
                numeric.lblDisplay.visible() && !screen().overview.fraChar.visible());
    toolButton("Array").press();
    toolButton("Histogram").press();
    toolButton("Graphical").press();
    EXPECT_FALSE(numeric.lblCharData.visible() || numeric.lblDisplay.visible());
    std::string keys;
    for (const std::string& entry : jobs.entries())
        if (entry.starts_with("DravikDlg.tlbChars_ButtonClick(")) keys += entry.substr(entry.find('('));
    EXPECT_EQ(keys, "('Numeric')('Array')('Graphical')");
}

}  // namespace
}  // namespace dravik::test
