#include "screen/histogram/dlgCharHist.h"

#include "screen/support/ProcedureTest.h"

namespace dravik::test {
namespace {

using Strings = std::vector<std::string>;
using Numbers = std::vector<double>;

// Writes down what the form asks for.
struct AskedControl : HistogramControl {
    void m_dlgHist_DeleteByDistance(std::string character, double, double) override {
        events.push_back("Delete " + character);
    }
    void m_dlgHist_ShowDistHist(std::string character) override { events.push_back("Dist " + character); }
    void m_dlgHist_ShowFontHist(std::string character) override { events.push_back("Font " + character); }
    void m_dlgHist_UserMsg(std::string text) override { events.push_back("Msg " + text); }

    Strings events;
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
    // What is asked for when the button is pressed.
    Strings press(const char* button) {
        events.clear();
        form.tlbMain.button(button).press();
        return events;
    }
    const ChartBar& bar(std::size_t i) { return form.drawing().shpData.at(i); }
    const ChartLabel& label(std::size_t i) { return form.drawing().lblX.at(i); }
    std::string panel(const std::string& name) { return form.sbr.panel(name).text(); }
    // What a screen reader says of the bars that are drawn.
    Strings names() {
        Strings all;
        for (const ChartBar& each : form.chart.scene().bars) all.push_back(each.accessibleName);
        return all;
    }
    // Of each bar: red, black or blue.
    std::string colours() {
        std::string all;
        for (const ChartBar& each : form.drawing().shpData)
            all += each.fill == rgb(255, 0, 0)   ? 'r'
                   : each.fill == rgb(0, 0, 255) ? 'b'
                   : each.fill                   ? '?'
                                                 : 'k';
        return all;
    }
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
    const ChartScale& scale = form.chart.scale();
    EXPECT_THAT((Numbers{scale.left, scale.top, scale.right, scale.bottom}), ElementsAre(-5, 120, 55, -20));
    EXPECT_EQ(form.chart.scene().lines.size(), 1u) << "the axis";
    fontHistogram();
    std::vector<Numbers> places;
    for (const ChartBar& each : form.drawing().shpData)
        places.push_back({each.left, each.top, each.width, each.height});
    // A pitch of 12.5, each centred on its place; no samples: a square just below the axis.
    const double one = 100.0 / 12;
    EXPECT_EQ(places, (std::vector<Numbers>{
                          {12, 100, 1, 100}, {24.5, one, 1, one}, {37, 0, 1, 1}, {49.5, 50, 1, 50}}));
    EXPECT_THAT(names(),
                ElementsAre("A, 12 samples, largest Distance 0.400, over the threshold",
                            "B, 1 sample, largest Distance 0.350", "O, 0 samples, largest Distance 0.000",
                            "0, 6 samples, largest Distance 0.200"));
    EXPECT_TRUE(bar(0).hatched && !bar(1).hatched) << "over the threshold, told by more than the colour";
    EXPECT_EQ(label(3).caption, "0");
    EXPECT_EQ(label(3).left + label(3).width / 2, 50);
    EXPECT_EQ(form.chart.scene().labels.back().caption, "samples");
    EXPECT_EQ(panel("SamplesCaption"), "Samples");
    EXPECT_EQ(form.sbr.panel("SamplesCaption").toolTip(), "Number of samples for the select character");
    EXPECT_EQ(form.cboChar.text(), "A");
    EXPECT_TRUE(form.udThreshold.visible() && !form.cboChar.enabled());

    for (const auto& [count, size] : {std::pair(26u, 10), {27u, 8}}) {
        form.SetFontHistogram(Numbers(count, 3), Strings(count, "A"), Numbers(count, 0.1));
        EXPECT_EQ(label(5).fontSize, size) << "labels shrink";
    }
    form.SetFontHistogram({0, 0}, {"A", "B"}, {0, 0});
    EXPECT_TRUE(form.drawing().linY.empty() && form.drawing().lblY.empty()) << "no marks without samples";
    EXPECT_EQ(colours() + panel("Msg"), "bbCreated font histogram");
}

TEST_F(dlgCharHistTest, CharHistogramCountsIntoBins) {
    // One tenth of the largest, and what is hardly more, stays in the first bin; the largest is in the last.
    form.SetCharHistogram({0, 0.1, 0.10005, 0.5, 0.102, 0.9, 0.91, 1.0}, "B", {"A", "B"});
    EXPECT_THAT(names(),
                ElementsAre("Distance 0.000 to 0.100, 3 samples", "Distance 0.100 to 0.200, 1 sample",
                            "Distance 0.400 to 0.500, 1 sample", "Distance 0.800 to 0.900, 1 sample",
                            "Distance 0.900 to 1.000, 2 samples"));
    EXPECT_THAT((Numbers{bar(9).left, bar(9).width, bar(9).top, label(2).left, label(2).width}),
                ElementsAre(47, 2, 200.0 / 3, 11, 4));
    EXPECT_EQ(label(2).caption, "0.300");
    EXPECT_TRUE(label(2).visible);
    EXPECT_EQ(panel("MaxDistCaption") + panel("MaxDist"), "Total8");
    EXPECT_EQ(form.cboChar.text(), "B");
    EXPECT_TRUE(form.cboChar.enabled() && !form.txtExceed.visible());
    EXPECT_THAT(events, ElementsAre("Msg Created character histogram"));
    form.SetCharHistogram({0, 0, 0}, "A", {"A"});
    EXPECT_THAT(names(), ElementsAre("Distance 0.000 to 0.000, 3 samples"));
}

TEST_F(dlgCharHistTest, HashMarksFollowTheAxisMaximum) {
    const auto& marks = form.drawing().linY;
    const auto& numbers = form.drawing().lblY;
    for (const auto& [most, lines, labels, first] :
         {std::tuple(99, 99u, 19u, "5"), {100, 20u, 4u, "25"}, {500, 50u, 10u, "50"}, {12, 12u, 2u, "5"}}) {
        form.CreateHashMarks(static_cast<std::int16_t>(most));
        EXPECT_EQ(marks.size(), lines);
        EXPECT_EQ(numbers.size(), labels);
        EXPECT_EQ(numbers.front().caption, first);
    }
    EXPECT_THAT((Numbers{marks[4].x1, marks[3].x1, numbers[0].left + numbers[0].width}),
                ElementsAre(-2, -1, -2.5));
    EXPECT_EQ(numbers[0].alignment, ChartLabel::Alignment::End);
    EXPECT_DOUBLE_EQ(marks[4].y1, 500.0 / 12);
    EXPECT_EQ(numbers[0].top, marks[4].y1);
    EXPECT_NE(marks[3].color, marks[4].color);
}

TEST_F(dlgCharHistTest, MissingDataIsToldAndDrawsNothing) {
    fontHistogram();
    form.SetFontHistogram({}, {"A"}, {});
    EXPECT_EQ(panel("Msg"), "No data");
    EXPECT_THAT(names(), IsEmpty());
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
    form.SetFontHistogram({32768, 1}, {"A", "B"}, {0.1, 0.1});
    EXPECT_EQ(panel("Msg"), "Err 6 in dlgCharHist.SetFontHistogram: Overflow");
    EXPECT_THAT(names(), IsEmpty());
    form.SetCharHistogram(Numbers(32768, 0.5), "A", {"A"});
    EXPECT_EQ(panel("Msg"), "Err 6 in dlgCharHist.SetCharHistogram: Overflow");
    g_bTrace = true;
    form.SetFontHistogram({1, 2}, {"A"}, {0.1, 0.2});
    const std::string told = "Err 9 in dlgCharHist.SetFontHistogram: Subscript out of range";
    EXPECT_EQ(panel("Msg"), told);
    EXPECT_THAT(jobs.entries(), Contains("# dlgCharHist error: " + told));
}

TEST_F(dlgCharHistTest, TheThresholdColoursTheBars) {
    fontHistogram();
    form.tmrGraphics.tick();
    EXPECT_EQ(colours(), "rkbk") << "blue until the first tick that sees the pointer move";
    // The first is exactly at the threshold that the form begins with.
    EXPECT_EQ(form.txtThreshold.text(), "0.400");
    point(30, 110);
    EXPECT_EQ(colours(), "rkkk");
    EXPECT_EQ(form.txtExceed.text(), "1 characters have Distance values over the threshold");
    form.udThreshold.setValue(5);
    EXPECT_EQ(form.txtThreshold.text(), "0.500");
    form.tmrGraphics.tick();  // the pointer rests
    EXPECT_EQ(colours(), "kkkk");
    EXPECT_EQ(form.txtExceed.text(), "All characters have Distance values below the threshold");

    // Every step of the up-down meets a Distance of just that many tenths.
    for (const int steps : {0, 3, 6, 7, 10}) {
        form.SetFontHistogram({5}, {"A"}, {steps / 10.0});
        form.udThreshold.setValue(steps);
        form.tmrGraphics.tick();
        EXPECT_EQ(colours(), "r") << steps;
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
    EXPECT_TRUE(platform.menus.empty());
}

TEST_F(dlgCharHistTest, ToolbarSwitchesTheHistogram) {
    fontHistogram();
    auto& fontButton = form.tlbMain.button("Font");
    EXPECT_THAT(press("Char"), ElementsAre("Dist A"));
    EXPECT_THAT(press("Font"), IsEmpty()) << "it was down and is released";
    EXPECT_THAT(press("Font"), ElementsAre("Font A"));
    fontButton.press();
    form.tmrGraphics.tick();
    EXPECT_TRUE(fontButton.pressed()) << "the buttons tell what is shown";

    for (const auto& [x, told] : {std::pair(25, "1 sample. Character histogram not available."),
                                  {37, "0 samples. No character histogram to display"}}) {
        point(x, -1);
        EXPECT_THAT(press("Char"), IsEmpty());
        EXPECT_EQ(panel("Msg"), told);
        EXPECT_TRUE(fontButton.pressed() && !form.tlbMain.button("Char").pressed());
        EXPECT_FALSE(form.tmrGraphics.enabled()) << "the next tick would clear the message";
    }
}

TEST_F(dlgCharHistTest, HoveringRestsWhileTheListIsOpen) {
    form.cboChar.gotFocus();
    EXPECT_FALSE(form.tmrGraphics.enabled());
    form.cboChar.lostFocus();
    EXPECT_TRUE(form.tmrGraphics.enabled());
}

TEST_F(dlgCharHistTest, ArrowKeysWalkTheBarsAndTheMenuKeyOpensTheirMenu) {
    constexpr int kLeft = 37, kRight = 39, kMenu = 93, kF10 = 121;
    // So many that their zones overlap, of which the first is the one that is hit.
    Strings chars;
    for (char c = '0'; c < '0' + 74; ++c) chars.emplace_back(1, c);
    form.SetFontHistogram(Numbers(74, 5), chars, Numbers(74, 0.1));
    point(bar(40).left, 50);
    EXPECT_EQ(form.currentCharacter(), chars[39]);
    for (std::size_t i = 40; i < 74; ++i) {
        key(kRight);
        ASSERT_EQ(form.currentCharacter(), chars[i]);
    }
    key(kRight);
    EXPECT_EQ(form.currentCharacter(), chars[73]);

    charHistogram();
    platform.menuPicks = {"", ""};
    key(kRight);
    EXPECT_EQ(panel("Msg"), "Distance = 0.000 to 0.100");
    key(kRight);
    key(kRight);
    EXPECT_EQ(panel("Msg"), "Distance = 0.900 to 1.000") << "over the empty bins";
    EXPECT_EQ(form.chart.scene().bars.at(static_cast<std::size_t>(form.chart.pointed())).left, bar(9).left);
    key(kLeft);
    EXPECT_EQ(panel("Msg"), "Distance = 0.100 to 0.200");
    key(kMenu);
    key(kF10, kShiftMask);
    key(kF10);
    EXPECT_EQ(platform.menus.size(), 2u);
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
    const Connection failing =
        traced.tmrVarState.changed.connect([] { throw Failure(RuntimeError::PermissionDenied); });
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
            "dlgCharHist.Form_Unload",
            "# dlgCharHist error: Error in dlgCharHist:Form_Unload - Permission denied"));
}

// A host may destroy the control while a menu is open.
TEST_F(dlgCharHistTest, FormMayVanishWhileItsMenuIsOpen) {
    auto vanishing = std::make_unique<dlgCharHist>(log, platform, control);
    vanishing->load();
    vanishing->SetCharHistogram({0.5, 1.0}, "A", {"A"});
    events.clear();
    vanishing->chart.mouseMove({0, 0, 47, 10});
    vanishing->tmrGraphics.tick();
    platform.menuPicks = {"mnuHistogramDelete"};
    platform.asking = [&] { vanishing.reset(); };
    vanishing->chart.mouseDown({kRightButton, 0, 47, 10});
    EXPECT_EQ(vanishing, nullptr);
    EXPECT_THAT(events, IsEmpty()) << "deleted after the end";
}

}  // namespace
}  // namespace dravik::test
