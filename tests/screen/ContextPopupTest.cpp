#include <gtest/gtest.h>

#include "screen/context/dlgContextPopup.h"
#include "screen/support/ScriptedPlatform.h"
#include "screen/support/TracedJobs.h"
#include "ui/Label.h"

namespace dravik::test {

using namespace screen;
using namespace ui;
namespace {

struct ContextPopup : testing::Test {
    TracedJobs jobs;
    ScriptedPlatform platform;
    TraceLog log{platform, jobs.folder()};
    Label cell{"lblChar(0)", "A"};

    static std::vector<std::string> enabledItems(const PopupMenu& menu) {
        std::vector<std::string> names;
        for (const auto& item : menu.items())
            if (item->enabled && !item->isSeparator()) names.push_back(item->name);
        return names;
    }
};

using Names = std::vector<std::string>;

TEST_F(ContextPopup, FreshMenuOffersTheArraysAndTheCharacterHistogramOnly) {
    g_bTrace = true;
    dlgContextPopup popup(log);
    EXPECT_EQ(enabledItems(popup.mnuMain),
              (Names{"mnuMainCharacterShowArray", "mnuMainCharacterShowStdDev"}));
    EXPECT_EQ(enabledItems(popup.mnuHistogram), Names{"mnuHistogramShowChar"});
    EXPECT_EQ(popup.UserSelection(), MenuPick::None);
    EXPECT_EQ(jobs.entries(), Names{"dlgContextPopup.Form_Initialize"});
}

TEST_F(ContextPopup, OperationsEnableTheirItemsTogether) {
    dlgContextPopup popup(log);
    popup.ShowCharArray(false);
    popup.ShowGridItems(true);
    EXPECT_EQ(enabledItems(popup.mnuMain), (Names{"mnuMainGridCopy", "mnuMainGridDelete"}));
    popup.ShowGridItems(false);
    popup.ShowCharHistogram(true);
    popup.ShowDeleteTrain(true);
    EXPECT_EQ(enabledItems(popup.mnuMain), (Names{"mnuMainCharHist", "mnuMainCharacterDelete"}));
    popup.ShowFullHistogram(true);
    popup.ShowExcludeChar(true);
    popup.ShowCharHistogram(false);
    popup.ShowDeleteTrain(false);
    EXPECT_EQ(enabledItems(popup.mnuMain), (Names{"mnuMainFontHist", "mnuMainCharacterExclude"}));
    popup.ShowFontPopup(true);
    EXPECT_EQ(enabledItems(popup.mnuHistogram), Names{"mnuHistogramDelete"});
}

TEST_F(ContextPopup, CaptionsNameTheCharacterOnlyOnceItIsSet) {
    dlgContextPopup popup(log);
    EXPECT_EQ(popup.mnuMain.item("mnuMainCharacterShowArray").caption, "Show Character &Array");
    EXPECT_EQ(popup.mnuMain.item("mnuMainCharacterExclude").caption, "&Remove");
    popup.setCharacter("Q");
    EXPECT_EQ(popup.Character(), "Q");
    EXPECT_EQ(popup.mnuMain.item("mnuMainCharacterShowArray").caption, "Show Character Array for Q");
    EXPECT_EQ(popup.mnuMain.item("mnuMainCharacterShowStdDev").caption, "Show StdDev Array for Q");
    EXPECT_EQ(popup.mnuMain.item("mnuMainCharHist").caption, "Show Histogram for Q");
    EXPECT_EQ(popup.mnuMain.item("mnuMainFontHist").caption, "Show &Font Histogram");
    EXPECT_EQ(popup.mnuMain.item("mnuMainCharacterDelete").caption, "Delete Training for Q");
    EXPECT_EQ(popup.mnuMain.item("mnuMainCharacterExclude").caption, "Remove Q from Font");
}

TEST_F(ContextPopup, EveryItemLeavesItsCode) {
    const std::vector<std::pair<std::string, int>> codes = {
        {"mnuMainGridCopy", 7},
        {"mnuMainGridDelete", 8},
        {"mnuMainCharacterShowArray", 1},
        {"mnuMainCharacterShowStdDev", 2},
        {"mnuMainCharHist", 5},
        {"mnuMainFontHist", 6},
        {"mnuMainCharacterDelete", 3},
        {"mnuMainCharacterExclude", 4},
        {"mnuGridCopy", 7},
        {"mnuGridDelete", 8},
        {"mnuGridShowGraphical", 0},
        {"mnuCharacterShowArray", 1},
        {"mnuHistogramDelete", 9},
        {"mnuHistogramShowChar", 10},
    };
    std::size_t items = 0;
    for (const auto menu : {&dlgContextPopup::mnuMain, &dlgContextPopup::mnuGrid,
                            &dlgContextPopup::mnuCharacter, &dlgContextPopup::mnuHistogram}) {
        for (const auto& [name, code] : codes) {
            dlgContextPopup popup(log);
            const auto& all = (popup.*menu).items();
            if (std::none_of(all.begin(), all.end(), [&](const auto& item) { return item->name == name; }))
                continue;
            (popup.*menu).item(name).click();
            EXPECT_EQ(static_cast<int>(popup.UserSelection()), code) << name;
            ++items;
        }
    }
    EXPECT_EQ(items, codes.size());
}

TEST_F(ContextPopup, PickIsKnownAfterTheMenuClosesAndNoneWithoutOne) {
    platform.menuPicks = {"", "mnuMainCharacterShowStdDev"};
    dlgContextPopup unpicked(log);
    EXPECT_EQ(unpicked.popUp(platform, unpicked.mnuMain, cell, 10, 20), MenuPick::None);
    dlgContextPopup picked(log);
    EXPECT_EQ(picked.popUp(platform, picked.mnuMain, cell, 10, 20), MenuPick::CharacterStdDev);
    ASSERT_EQ(platform.menus.size(), 2u);
    EXPECT_EQ(platform.menus[1].at, "lblChar(0)");
    EXPECT_EQ(platform.menus[1].y, 20);
}

}  // namespace
}  // namespace dravik::test
