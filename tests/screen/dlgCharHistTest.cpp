#include "screen/histogram/dlgCharHist.h"

#include "screen/support/ProcedureTest.h"

namespace dravik::test {
namespace {

using Strings = std::vector<std::string>;
using Numbers = std::vector<double>;

// Writes down what the form asks for, and shows a character again if a test says how.
struct AskedControl : HistogramControl {
    void m_dlgHist_DeleteByDistance(std::string character, double minimum, double maximum) override {
        events.push_back("Delete " + std::to_string(minimum) + " " + std::to_string(maximum) + " " +
                         character);
    }
    void m_dlgHist_ShowDistHist(std::string character) override {
        events.push_back("Dist " + character);
        if (showAgain) showAgain(character);
    }
    void m_dlgHist_ShowFontHist(std::string character) override { events.push_back("Font " + character); }
    void m_dlgHist_UserMsg(std::string text) override { events.push_back("Msg " + text); }

    Strings events;
    std::function<void(const std::string& character)> showAgain;
};

struct dlgCharHistTest : ProcedureTest {
    dlgCharHistTest() { form.load(); }

    // A, B, O and 0; B has one sample, O has none.
    void fontHistogram() { form.SetFontHistogram({12, 1, 0, 6}, {"A", "B", "O", "0"}, {0.4, 0.35, 0, 0.2}); }
    void charHistogram() {
        form.SetCharHistogram({0, 0.1, 0.15, 1.0}, "A", {"A", "B"});
        events.clear();
    }
    void point(double x, double y) {
        form.chart.mouseMove({0, 0, x, y});
        form.tmrGraphics.tick();
    }
    void rightClick(double x, double y) { form.chart.mouseDown({kRightButton, 0, x, y}); }
    void key(int code, int shift = 0) { form.chart.keyDown(code, shift); }
    const ChartBar& bar(std::size_t i) { return form.drawing().shpData.at(i); }
    const ChartLabel& label(std::size_t i) { return form.drawing().lblX.at(i); }
    std::string panel(const std::string& name) { return form.sbr.panel(name).text(); }
    // Left, top, width and height.
    static Numbers place(const ChartBar& bar) { return {bar.left, bar.top, bar.width, bar.height}; }
    // What the panels tell of the character or the bin that is pointed at.
    Strings hovered(double x, double y) {
        point(x, y);
        return {panel("Samples"), panel("Msg")};
    }

    AskedControl control;
    dlgCharHist form{log, platform, control};
    Strings& events = control.events;
};

TEST_F(dlgCharHistTest, FontHistogramPlacesBarsOnTheAxis) {
    EXPECT_EQ(form.chart.scene().lines.size(), 1u) << "the axis";
    fontHistogram();
    // Four bars: a pitch of 12.5, each of width 1 centred on its place.
    EXPECT_THAT(place(bar(0)), ElementsAre(12, 100, 1, 100));
    EXPECT_THAT(place(bar(3)), ElementsAre(49.5, 50, 1, 50));
    EXPECT_EQ(label(3).caption, "0");
    EXPECT_EQ(label(3).left + label(3).width / 2, 50);
    EXPECT_EQ(label(3).fontSize, 10);

    // No samples: a blue square just below the axis.
    EXPECT_THAT(place(bar(2)), ElementsAre(37, 0, 1, 1));
    EXPECT_EQ(bar(2).fill, rgb(0, 0, 255));
    EXPECT_TRUE(bar(2).visible);

    EXPECT_EQ(panel("Msg"), "Created font histogram");
    EXPECT_EQ(panel("SamplesCaption"), "Samples");
    EXPECT_EQ(form.sbr.panel("SamplesCaption").toolTip(), "Number of samples for the select character");
    EXPECT_EQ(form.cboChar.text(), "A");
    EXPECT_FALSE(form.cboChar.enabled());
    EXPECT_TRUE(form.udThreshold.visible());
    EXPECT_TRUE(form.tlbMain.button("Font").pressed());
    EXPECT_THAT(events, IsEmpty());
    EXPECT_TRUE(bar(0).hatched && !bar(1).hatched) << "over the threshold, told by more than the colour";
    EXPECT_EQ(form.chart.scene().labels.back().caption, "samples");
    EXPECT_EQ(form.chart.scene().bars.at(1).accessibleName, "B, 1 sample, largest Distance 0.350");
    EXPECT_EQ(form.chart.scene().bars.at(0).accessibleName,
              "A, 12 samples, largest Distance 0.400, over the threshold");

    for (const std::size_t count : {26u, 27u}) {
        form.SetFontHistogram(Numbers(count, 3), Strings(count, "A"), Numbers(count, 0.1));
        EXPECT_EQ(label(5).fontSize, count == 27 ? 8 : 10) << "labels shrink";
        form.SetCharHistogram(Numbers(count, 0.1), "A", {"A"});
        EXPECT_EQ(label(5).fontSize, count == 27 ? 8 : 10) << "labels shrink";
    }
    EXPECT_FALSE(form.drawing().linY.empty());
    form.SetFontHistogram({0, 0}, {"A", "B"}, {0, 0});
    EXPECT_TRUE(form.drawing().linY.empty() && form.drawing().lblY.empty()) << "no marks without samples";
    EXPECT_EQ(bar(1).fill, rgb(0, 0, 255));
    EXPECT_EQ(panel("Msg"), "Created font histogram");
}

TEST_F(dlgCharHistTest, CharHistogramCountsIntoBins) {
    // One tenth of the largest, and what is hardly more, stays in the first bin; the largest is in the last.
    form.SetCharHistogram({0, 0.1, 0.10005, 0.5, 0.102, 0.9, 0.91, 1.0}, "B", {"A", "B"});
    EXPECT_EQ(bar(0).top, 100);
    for (const std::size_t i : {1, 4, 8}) EXPECT_DOUBLE_EQ(bar(i).top, 100.0 / 3);
    EXPECT_DOUBLE_EQ(bar(9).top, 200.0 / 3);
    EXPECT_FALSE(bar(2).visible);
    EXPECT_EQ(form.chart.scene().bars.size(), 5u);
    EXPECT_THAT((Numbers{bar(9).left, bar(9).width, label(2).left, label(2).width}),
                ElementsAre(47, 2, 11, 4));
    EXPECT_EQ(label(2).caption, "0.300");
    EXPECT_TRUE(label(2).visible);
    EXPECT_EQ(panel("MaxDistCaption") + panel("MaxDist"), "Total8");
    EXPECT_EQ(panel("Msg"), "Created character histogram");
    EXPECT_EQ(form.cboChar.text(), "B");
    EXPECT_TRUE(form.cboChar.enabled() && !form.txtExceed.visible());
    EXPECT_THAT(events, ElementsAre("Msg Created character histogram"));
    EXPECT_EQ(form.chart.scene().bars.at(1).accessibleName, "Distance 0.100 to 0.200, 1 sample");

    form.SetCharHistogram({0, 0, 0}, "A", {"A"});
    EXPECT_EQ(bar(0).height, 100);
    EXPECT_EQ(label(9).caption, "0.000");
    EXPECT_EQ(form.chart.scene().bars.size(), 1u) << "Distances of zero are all in the first bin";
}

TEST_F(dlgCharHistTest, HashMarksFollowTheAxisMaximum) {
    const auto labels = [this] {
        Strings captions;
        for (const auto& each : form.drawing().lblY) captions.push_back(each.caption);
        return captions;
    };
    form.CreateHashMarks(12);
    EXPECT_EQ(form.drawing().linY.size(), 12u);
    EXPECT_THAT(labels(), ElementsAre("5", "10"));
    const auto& major = form.drawing().linY[4];
    const auto& minor = form.drawing().linY[3];
    EXPECT_THAT((Numbers{major.x1, major.x2}), ElementsAre(-2, 0));
    EXPECT_DOUBLE_EQ(major.y1, 500.0 / 12);
    EXPECT_GT(minor.x1, major.x1);
    EXPECT_NE(minor.color, major.color);
    const auto& five = form.drawing().lblY[0];
    EXPECT_EQ(five.left + five.width, -2.5);
    EXPECT_EQ(five.top, major.y1);

    form.CreateHashMarks(99);
    EXPECT_EQ(form.drawing().linY.size(), 99u);
    EXPECT_EQ(labels().size(), 19u);
    form.CreateHashMarks(100);
    EXPECT_EQ(form.drawing().linY.size(), 20u);
    EXPECT_THAT(labels(), ElementsAre("25", "50", "75", "100"));
    form.CreateHashMarks(500);
    EXPECT_EQ(form.drawing().linY.size(), 50u);
    EXPECT_EQ(labels().front(), "50");
}

TEST_F(dlgCharHistTest, MissingDataIsToldAndDrawsNothing) {
    fontHistogram();
    form.SetFontHistogram({}, {"A"}, {});
    EXPECT_EQ(panel("Msg"), "No data");
    EXPECT_TRUE(form.chart.scene().bars.empty());
    form.SetFontHistogram({1}, {}, {0.1});
    EXPECT_EQ(panel("Msg"), "No character array");
    form.SetCharHistogram({0.1}, "", {"A"});
    EXPECT_EQ(panel("Msg"), "No character selected");
    form.SetCharHistogram({}, "A", {"A"});
    EXPECT_EQ(panel("Msg"), "No data");

    // Nothing is left that the pointer or the keys could hit.
    point(12, 1);
    rightClick(12, 1);
    key(39);
    EXPECT_EQ(panel("Msg"), "");
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(dlgCharHistTest, CountsThatDoNotFitAreReported) {
    form.SetFontHistogram({32767, 1}, {"A", "B"}, {0.1, 0.1});
    EXPECT_EQ(panel("Msg"), "Created font histogram");
    form.SetFontHistogram({32768, 1}, {"A", "B"}, {0.1, 0.1});
    EXPECT_EQ(panel("Msg"), "Err 6 in dlgCharHist.SetFontHistogram: Overflow");
    EXPECT_TRUE(form.chart.scene().bars.empty());
    form.SetCharHistogram(Numbers(32768, 0.5), "A", {"A"});
    EXPECT_EQ(panel("Msg"), "Err 6 in dlgCharHist.SetCharHistogram: Overflow");
    g_bTrace = true;
    form.SetFontHistogram({1, 2}, {"A"}, {0.1, 0.2});
    EXPECT_EQ(panel("Msg"), "Err 9 in dlgCharHist.SetFontHistogram: Subscript out of range");
    EXPECT_THAT(
        jobs.entries(),
        Contains("# dlgCharHist error: Err 9 in dlgCharHist.SetFontHistogram: Subscript out of range"));
}

TEST_F(dlgCharHistTest, TheThresholdColoursTheBars) {
    fontHistogram();
    EXPECT_EQ(form.txtThreshold.text(), "0.400");
    EXPECT_EQ(bar(0).fill, rgb(255, 0, 0));  // exactly at the threshold
    EXPECT_EQ(bar(2).fill,
              rgb(0, 0, 255));  // without samples, until the first tick that sees the pointer move
    form.tmrGraphics.tick();
    EXPECT_EQ(panel("Msg"), "Created font histogram");
    EXPECT_EQ(bar(2).fill, rgb(0, 0, 255));
    point(30, 110);
    EXPECT_EQ(bar(0).fill, rgb(255, 0, 0));
    EXPECT_EQ(bar(1).fill, rgb(0, 0, 0));
    EXPECT_EQ(bar(2).fill, rgb(0, 0, 0));
    EXPECT_EQ(form.txtExceed.text(), "1 characters have Distance values over the threshold");

    form.udThreshold.setValue(5);
    EXPECT_EQ(form.txtThreshold.text(), "0.500");
    form.tmrGraphics.tick();  // the pointer rests
    EXPECT_EQ(bar(0).fill, rgb(0, 0, 0));
    EXPECT_EQ(form.txtExceed.text(), "All characters have Distance values below the threshold");
    form.udThreshold.setValue(0);
    point(32, 110);
    EXPECT_EQ(form.txtExceed.text(), "4 characters have Distance values over the threshold");
    EXPECT_EQ(bar(2).fill, rgb(255, 0, 0));
    form.udThreshold.setValue(10);
    EXPECT_EQ(form.txtThreshold.text(), "1.000");

    // Every step of the up-down meets a Distance of just that many tenths.
    for (const auto& [steps, distance] : std::vector<std::pair<int, double>>{{3, 0.3}, {6, 0.6}, {7, 0.7}}) {
        form.SetFontHistogram({5}, {"A"}, {distance});
        form.udThreshold.setValue(steps);
        point(steps, 110);
        EXPECT_EQ(bar(0).fill, rgb(255, 0, 0)) << distance;
    }
}

TEST_F(dlgCharHistTest, HoveringShowsTheCharacter) {
    fontHistogram();
    EXPECT_THAT(hovered(12.5, 50), ElementsAre("12", ""));
    EXPECT_EQ(panel("MaxDist"), "0.400");
    EXPECT_EQ(label(0).backColor, rgb(255, 255, 0));
    EXPECT_THAT(hovered(49.5, 20), ElementsAre("6", "Numeral '0'"));
    EXPECT_EQ(form.cboChar.text() + form.currentCharacter(), "00");
    EXPECT_EQ(label(0).backColor, form.backColor());
    EXPECT_THAT(hovered(37, -1), ElementsAre("0", "Letter 'O'"));
    EXPECT_THAT(hovered(25, 1), ElementsAre("1", ""));
    EXPECT_THAT(hovered(30, 50), ElementsAre("", ""));
    EXPECT_EQ(label(1).backColor, form.backColor());
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(dlgCharHistTest, HitZoneIsMeasuredFromTheLeftEdge) {
    charHistogram();
    // The first bar stands at 2 with width 2: its zone reaches from 0 to 4, strictly below its top.
    const Numbers inside[] = {{0, 50}, {4, 50}, {2, -4.9}},
                  outside[] = {{4.01, 50}, {2, 100}, {2, -5}, {22, 1}};
    for (const Numbers& at : inside) EXPECT_EQ(hovered(at[0], at[1])[0], "2") << at[0] << "," << at[1];
    for (const Numbers& at : outside) EXPECT_EQ(hovered(at[0], at[1])[0], "") << at[0] << "," << at[1];
    EXPECT_THAT(hovered(22, -1), ElementsAre("0", "Distance = 0.400 to 0.500"))
        << "an empty bin, below the axis";

    // Zones that overlap: the lower index wins.
    form.SetFontHistogram(Numbers(74, 5), Strings(74, "A"), Numbers(74, 0.1));
    point(bar(40).left, 50);
    EXPECT_EQ(label(39).backColor, rgb(255, 255, 0));
}

TEST_F(dlgCharHistTest, DeletesTheBinUnderThePointer) {
    charHistogram();
    platform.menuPicks = {"", "mnuHistogramDelete"};
    point(7, 10);
    rightClick(7, 90);
    ASSERT_EQ(platform.menus.size(), 1u);
    EXPECT_EQ(platform.menus[0].name, "mnuHistogram");
    EXPECT_EQ(platform.menus[0].item("mnuHistogramDelete").caption,
              "Delete samples with Distance 0.100 to 0.200");
    EXPECT_FALSE(platform.menus[0].enabled("mnuHistogramShowChar"));
    EXPECT_THAT(events, IsEmpty());

    rightClick(7, 10);
    EXPECT_THAT(events, ElementsAre("Delete 0.100000 0.200000 A", "Dist A"));
    EXPECT_FALSE(form.tmrGraphics.enabled());
    EXPECT_EQ(panel("Msg"), "Deleting and updating...");
    form.chart.mouseMove({0, 0, 1, 1});
    EXPECT_TRUE(form.tmrGraphics.enabled());
}

TEST_F(dlgCharHistTest, NoMenuOffTheBarsOrWithAnotherButton) {
    charHistogram();
    rightClick(7, 10);  // nothing was hovered yet
    point(7, 10);
    point(7, 110);
    rightClick(7, 110);  // the pointer has left the bar
    point(7, 10);
    form.chart.mouseDown({kLeftButton, 0, 7, 10});
    form.chart.mouseDown({kMiddleButton, 0, 7, 10});
    rightClick(9.5, 10);
    fontHistogram();
    rightClick(30, 10);
    EXPECT_TRUE(platform.menus.empty());
}

TEST_F(dlgCharHistTest, ManyDeletionsRecommendLearning) {
    control.showAgain = [this](const std::string&) { charHistogram(); };
    charHistogram();
    form.unload();
    EXPECT_THAT(events, IsEmpty()) << "nothing was deleted";
    form.load();
    charHistogram();
    for (int i = 1; i <= 6; ++i) {
        platform.menuPicks.push_back("mnuHistogramDelete");
        point(7, 10);
        rightClick(7, 10);
        EXPECT_EQ(panel("Msg"), i < 5 ? "Created character histogram"
                                      : std::to_string(i) + " deletions have occurred. Learn recommended.");
    }
    events.clear();
    form.unload();
    EXPECT_THAT(events, ElementsAre("Msg Samples were deleted. Learn required."));
    EXPECT_FALSE(form.tmrGraphics.enabled());
}

TEST_F(dlgCharHistTest, CharacterMenuNeedsTwoSamples) {
    fontHistogram();
    platform.menuPicks = {"", "mnuHistogramShowChar"};
    rightClick(25, 1);
    EXPECT_EQ(panel("Msg"), "Minimum 2 samples required to generate character histogram.");
    for (const char* item : {"mnuHistogramShowChar", "mnuHistogramDelete"})
        EXPECT_FALSE(platform.menus[0].enabled(item)) << item;
    rightClick(49, 80);
    EXPECT_TRUE(platform.menus[1].enabled("mnuHistogramShowChar"));
    EXPECT_THAT(events, ElementsAre("Dist 0"));
    EXPECT_FALSE(form.tmrGraphics.enabled());
}

TEST_F(dlgCharHistTest, ToolbarSwitchesTheHistogram) {
    fontHistogram();
    auto& fontButton = form.tlbMain.button("Font");
    auto& charButton = form.tlbMain.button("Char");
    charButton.press();
    EXPECT_THAT(events, ElementsAre("Dist A"));
    fontButton.press();  // it was down: released, nothing happens
    EXPECT_EQ(events.size(), 1u);
    fontButton.press();
    EXPECT_EQ(events.back(), "Font A");
    fontButton.press();
    form.tmrGraphics.tick();
    EXPECT_TRUE(fontButton.pressed()) << "the buttons tell what is shown";

    events.clear();
    point(25, 1);
    charButton.press();
    EXPECT_EQ(panel("Msg"), "1 sample. Character histogram not available.");
    EXPECT_TRUE(fontButton.pressed());
    EXPECT_FALSE(charButton.pressed());
    point(37, -1);
    charButton.press();
    EXPECT_EQ(panel("Msg"), "0 samples. No character histogram to display");
    EXPECT_THAT(events, IsEmpty());
    EXPECT_FALSE(form.tmrGraphics.enabled());

    charHistogram();
    charButton.press();
    EXPECT_THAT(events, IsEmpty());
    charButton.press();
    EXPECT_THAT(events, ElementsAre("Dist A"));
}

TEST_F(dlgCharHistTest, ComboChoosesAnotherCharacterOnce) {
    control.showAgain = [this](const std::string& character) {
        form.SetCharHistogram({0.1}, character, {"A", "B"});
    };
    charHistogram();
    form.cboChar.gotFocus();
    EXPECT_FALSE(form.tmrGraphics.enabled());
    form.cboChar.setText("B");
    EXPECT_THAT(events, ElementsAre("Dist B", "Msg Created character histogram"));
    EXPECT_EQ(form.cboChar.text(), "B");
    form.cboChar.lostFocus();
    EXPECT_TRUE(form.tmrGraphics.enabled());

    fontHistogram();
    events.clear();
    form.cboChar.setText("B");
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(dlgCharHistTest, ArrowKeysWalkTheBarsAndTheMenuKeyOpensTheirMenu) {
    constexpr int kLeft = 37;
    constexpr int kRight = 39;
    constexpr int kMenu = 93;
    Strings chars;
    for (char c = '0'; c < '0' + 74; ++c) chars.emplace_back(1, c);
    form.SetFontHistogram(Numbers(74, 5), chars, Numbers(74, 0.1));
    for (std::size_t i = 0; i < 74; ++i) {
        key(kRight);
        ASSERT_EQ(form.currentCharacter(), chars[i]);
    }
    key(kRight);
    EXPECT_EQ(form.currentCharacter(), chars[73]);
    key(kLeft);
    EXPECT_EQ(form.currentCharacter(), chars[72]);

    charHistogram();
    platform.menuPicks = {"", ""};
    key(kRight);
    EXPECT_EQ(panel("Msg"), "Distance = 0.000 to 0.100");
    EXPECT_EQ(form.chart.pointed(), 0);
    key(kRight);
    key(kRight);
    EXPECT_EQ(panel("Msg"), "Distance = 0.900 to 1.000") << "over the empty bins";
    EXPECT_EQ(form.chart.scene().bars.at(static_cast<std::size_t>(form.chart.pointed())).left, bar(9).left);
    key(kLeft);
    key(kLeft);
    key(kMenu);
    key(121, kShiftMask);
    key(121);
    ASSERT_EQ(platform.menus.size(), 2u);
    EXPECT_TRUE(platform.menus[0].enabled("mnuHistogramDelete"));
}

TEST_F(dlgCharHistTest, TracesItsProceduresAndItsState) {
    g_bTrace = true;
    dlgCharHist traced(log, platform, control);
    traced.load();
    EXPECT_TRUE(traced.tmrVarState.enabled());
    traced.SetCharHistogram({0.1, 0.2}, "A", {"A"});
    traced.tmrVarState.tick();
    traced.tlbMain.button("Char").press();
    traced.chart.mouseDown({kLeftButton, 0, 2, 1});
    traced.chart.mouseDown({kRightButton, 0, 40, 1});
    traced.unload();
    EXPECT_FALSE(traced.tmrVarState.enabled());
    EXPECT_THAT(
        jobs.entries(),
        ElementsAre(
            "dlgCharHist.Form_Load", "dlgCharHist.udThreshold_Change",
            "dlgCharHist.SetCharHistogram(A), # chars = 2", "dlgCharHist.SetMode",
            "dlgCharHist.SetLocalDataArray", "dlgCharHist.SetLocalCharArray", "dlgCharHist.SetCharCombo",
            "dlgCharHist.cboChar_Click, m_bHistSet = False", "dlgCharHist.CreateHashMarks",
            "dlgCharHist.tmrVarState; shpData.UBound = 9, lblX.Ubound = 9, tmrGraphics.Enabled = True",
            "dlgCharHist.tlbMain_ButtonClick", "dlgCharHist.Form_MouseDown, right button",
            "dlgCharHist.Form_Unload"));
}

// A host may destroy the control while a menu is open.
TEST_F(dlgCharHistTest, FormMayVanishWhileItsMenuIsOpen) {
    struct VanishingPlatform : ScriptedPlatform {
        std::unique_ptr<dlgCharHist>* form = nullptr;
        void popUpMenu(PopupMenu& menu, Widget&, double, double) override {
            menu.item("mnuHistogramDelete").click();
            form->reset();
        }
    } vanishing;
    TraceLog vanishingLog(vanishing, jobs.folder());
    auto owned = std::make_unique<dlgCharHist>(vanishingLog, vanishing, control);
    vanishing.form = &owned;
    owned->load();
    owned->SetCharHistogram({0.5, 1.0}, "A", {"A"});
    events.clear();
    owned->chart.mouseMove({0, 0, 47, 10});
    owned->tmrGraphics.tick();
    owned->chart.mouseDown({kRightButton, 0, 47, 10});
    EXPECT_EQ(owned, nullptr);
    EXPECT_THAT(events, IsEmpty()) << "deleted after the end";
}

}  // namespace
}  // namespace dravik::test
