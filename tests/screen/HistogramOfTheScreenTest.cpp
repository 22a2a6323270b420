// The histogram as it is opened from the screen's menu and worked with the pointer.
#include "screen/histogram/dlgCharHist.h"
#include "screen/support/BoundScreen.h"

namespace dravik::test {
namespace {

class HistogramOfTheScreen : public BoundScreen {
  protected:
    HistogramOfTheScreen() {
        // Ten bins of width 0.098764; the second Distance lies just behind the first bin.
        tool->addCommitted("A", {0.05, 0.0989, 0.5, 0.98764});
        tool->addCommitted("B", {0.2, 0.1});
        tool->addCommitted("C", {0.3});
        tool->train();
        bind();
    }

    dlgCharHist& form() { return dynamic_cast<dlgCharHist&>(platform.opened("dlgCharHist")); }
    Chart& chart() { return form().chart; }
    StatusPanel& panel(const char* key) { return form().sbr.panel(key); }
    void open(const char* item, const char* character = "A") { BoundScreen::rightClick(character, item); }
    void point(double x, double y) {
        chart().mouseMove({0, 0, x, y});
        for (Timer* timer : form().timers)
            if (timer->enabled()) timer->tick();
    }
    void rightClick(double x, double y, const char* item = "") {
        platform.menuPicks = {item};
        chart().mouseDown({kRightButton, 0, x, y});
    }
};

TEST_F(HistogramOfTheScreen, DeletesABinToItsVeryEndsAndShowsWhatIsLeft) {
    control.HighlightIncluded("A");
    const int busy = platform.busyTimes;
    open("mnuMainCharHist");
    EXPECT_EQ(platform.busyTimes, busy + 1);
    EXPECT_EQ(form().cboChar.items(), (std::vector<std::string>{"A", "B", "C"}));
    EXPECT_FALSE(form().txtThreshold.visible());
    EXPECT_EQ(panel("MaxDistCaption").toolTip(), "Total samples for this character");
    EXPECT_EQ(panel("MaxDist").text(), "4");

    point(2, 50);
    rightClick(2, 50);
    EXPECT_THAT(platform.menus.back(), ElementsAre("Delete samples with Distance 0.000 to 0.099"));
    EXPECT_EQ(tool->committed.size(), 7u) << "nothing was picked";
    rightClick(2, 50, "mnuHistogramDelete");
    EXPECT_EQ(tool->committed.size(), 6u);
    EXPECT_EQ(tool->committed[0].distance, 0.0989) << "it is shown in the next bar";
    EXPECT_EQ(panel("MaxDist").text(), "3");
    EXPECT_EQ(cell("A").backColor(), rgb(255, 192, 192)) << "the highlight of an include";
    EXPECT_TRUE(control.m_FontChanged());
    form().tlbMain.button("Font").press();
    EXPECT_EQ(form().mode(), kFontHistogram);

    // One that the screen opens takes the place of the form.
    form().udThreshold.setValue(9);
    open("mnuMainFontHist");
    EXPECT_EQ(message(), "Samples were deleted. Learn required.");
    EXPECT_EQ(platform.open.size(), 1u);
    EXPECT_EQ(form().txtThreshold.text(), "0.400");
}

TEST_F(HistogramOfTheScreen, ManyDeletionsRecommendLearning) {
    tool->addCommitted("C", {0.06, 0.12, 0.18, 0.24});
    tool->addCommitted("B", {0.3});
    tool->train();
    tool->onCall = [this](const std::string& call) {
        if (call.starts_with("DeleteSample")) {
            EXPECT_EQ(panel("Msg").text(), "Deleting and updating...");
        }
    };
    open("mnuMainCharHist", "C");
    for (int i = 1; i <= 5; ++i) {
        const double left = chart().scene().bars.back().left;
        point(left, 1);
        rightClick(left, 1, "mnuHistogramDelete");
        EXPECT_EQ(panel("Msg").text(),
                  i < 5 ? "Created character histogram" : "5 deletions have occurred. Learn recommended.");
        EXPECT_FALSE(form().timers.front()->enabled()) << "the next tick would clear the message";
    }
}

TEST_F(HistogramOfTheScreen, TheOutlierItselfIsDeletedWithTheLastBin) {
    tool->committed[3].distance = 0x1.486e3f9abcab9p-2;
    tool->committed[2].distance = 0.1;
    open("mnuMainCharHist");
    point(47, 10);
    rightClick(47, 10, "mnuHistogramDelete");
    EXPECT_THAT(platform.menus.back(), ElementsAre("Delete samples with Distance 0.289 to 0.321"));
    EXPECT_EQ(tool->committed[3].character, "B") << "the sample that the bin was made for";
}

TEST_F(HistogramOfTheScreen, FollowsWhatIsDoneOnTheScreenAndGoesWithItsFont) {
    tool->fonts = {"ocrb", "other"};
    open("mnuMainCharHist");
    include("AB");
    EXPECT_EQ(panel("MaxDist").text(), "5");
    EXPECT_EQ(message(), "2 samples included.") << "the form is filled again without a word";
    toolButton("Undo").press();
    EXPECT_EQ(panel("MaxDist").text(), "4");
    include("AB");
    platform.modalHandlers["dlgFontManager"] = [](Form& manager) {
        dynamic_cast<ListBox&>(*manager.find("lbFonts")).setListIndex(1);
        manager.defaultButton->press();
    };
    screen().font.cmdSelectFont.press();
    EXPECT_TRUE(platform.open.empty()) << "its bins would delete from the other font";
    EXPECT_FALSE(toolButton("Undo").enabled()) << "nor does Undo reach into it";
    EXPECT_EQ(screen().sbr.panel("LastInclude").text(), "");
    include("C");
    EXPECT_NE(cell("A").backColor(), rgb(128, 128, 255));
    open("mnuMainFontHist", "C");
    tool->trained.clear();
    include("C");
    EXPECT_TRUE(platform.open.empty()) << "a font without records has none";
}

TEST_F(HistogramOfTheScreen, OpensTheOneOfACharacterFromTwoSamplesOn) {
    toolButton("Log").press();
    open("mnuMainFontHist");
    EXPECT_THAT(jobs.entries(), Contains("DravikDlg.DisplayCharHistogram(A, FontHistogram)"));
    EXPECT_THAT(jobs.entries(), Contains("Dravikdlg.MaxCharDistance").Times(3))
        << "the procedure runs for each character, on samples that are fetched once";
    EXPECT_EQ(form().caption(), "Frequency Histogram for Font");
    EXPECT_EQ(message(), "Creating histogram...");
    const auto& bars = chart().scene().bars;
    ASSERT_EQ(bars.size(), 3u);
    EXPECT_EQ(bars[1].accessibleName, "B, 2 samples, largest Distance 0.200");
    EXPECT_EQ(tool->count("GetSampleData(399999;1,2,3,5,6)"), 1);
    rightClick(bars[2].left, 1);
    EXPECT_EQ(panel("Msg").text(), "Minimum 2 samples required to generate character histogram.");
    EXPECT_THAT(platform.menus.back(), IsEmpty());
    rightClick(bars[1].left, 1, "mnuHistogramShowChar");
    EXPECT_THAT(platform.menus.back(), ElementsAre("Show Character Histogram"));
    EXPECT_EQ(form().caption(), "Histogram of Distance values for B");
}

TEST_F(HistogramOfTheScreen, WithoutSamplesItIsEmptiedAndOffersTheOtherCharacters) {
    open("mnuMainCharHist", "B");
    for (int i = 0; i < 2; ++i) {
        const double left = chart().scene().bars.back().left;
        point(left, 1);
        rightClick(left, 1, "mnuHistogramDelete");
    }
    EXPECT_EQ(panel("Msg").text(), "No data");
    EXPECT_EQ(message(), "Samples delete. Click 'Train'.");
    EXPECT_TRUE(chart().scene().bars.empty());
    form().tlbMain.button("Char").press();
    for (const char* character : {"A", "B", "C", "B"}) {
        form().cboChar.setText(character);
        EXPECT_EQ(form().caption(), "Histogram of Distance values for " + std::string(character));
        EXPECT_EQ(panel("Msg").text(), character[0] == 'B' ? "No data" : "Created character histogram");
    }
}

TEST_F(HistogramOfTheScreen, NothingToShowAndAFailureOpenNoForm) {
    tool->trained.clear();
    open("mnuMainFontHist");
    EXPECT_EQ(message(), "Creating histogram...");
    tool->failAt("GetSampleData", 7, "Out of memory");
    open("mnuMainFontHist");
    EXPECT_EQ(message(), "DisplayCharHistogram Err 7 Out of memory");
    EXPECT_TRUE(platform.open.empty());
}

}  // namespace
}  // namespace dravik::test
