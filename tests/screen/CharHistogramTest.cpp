#include "screen/histogram/CharHistogram.h"

#include "screen/support/ProcedureTest.h"

namespace dravik::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using Strings = std::vector<std::string>;

struct CharHistogramTest : ProcedureTest, HistogramControl {
    CharHistogramTest() {
        tool->characterSet = {"A", "a", "B"};
        tool->addCommitted("A", {0.1, 0.5, 0.2});
        tool->addCommitted("a", {0.9});
        tool->addCommitted("A", {1.0});
        tool->train();
    }

    dlgCharHist& form() { return *histograms.m_dlgHist(); }
    std::string msg() { return form().sbr.panel("Msg").text(); }
    void deleteFirstBin() {
        platform.menuPicks.push_back("mnuHistogramDelete");
        moved += 0.25;
        form().chart.mouseMove({0, 0, 2, -moved});
        form().tmrGraphics.tick();
        form().chart.mouseDown({kRightButton, 0, 2, -moved});
    }

    double moved = 0;
    Strings fontArray = {"A", "a", "B"};
    Strings deleted;
    CharHistogram histograms{context, fontArray, *this};

    void m_dlgHist_DeleteByDistance(std::string c, double minimum, double maximum) override {
        deleted.push_back(c + " " + std::to_string(minimum) + " " + std::to_string(maximum));
    }
    void m_dlgHist_ShowDistHist(std::string c) override {
        histograms.DisplayCharHistogram(c, kCharacterDistance, CharHistogram::In::OpenForm);
    }
    void m_dlgHist_ShowFontHist(std::string c) override {
        histograms.DisplayCharHistogram(c, kFontHistogram, CharHistogram::In::OpenForm);
    }
    void m_dlgHist_UserMsg(std::string text) override { errors.UserMsg(text); }
};

TEST_F(CharHistogramTest, CharacterHistogramShowsTheCharactersOwnDistances) {
    histograms.DisplayCharHistogram("A", kCharacterDistance);
    EXPECT_EQ(form().caption(), "Histogram of Distance values for A");
    EXPECT_EQ(form().sbr.panel("MaxDist").text(), "4");
    EXPECT_EQ(form().drawing().lblX[9].caption, "1.000");
    EXPECT_EQ(form().cboChar.items(), fontArray);
    EXPECT_EQ(message(), "Created character histogram");
    EXPECT_THAT(platform.shown, ElementsAre("dlgCharHist"));
    EXPECT_THAT(tool->calls, ElementsAre("GetSampleData(399999;1,2,3,5,6)"));

    // Case counts, and a character of several bytes is one character.
    histograms.DisplayCharHistogram("a", kCharacterDistance);
    EXPECT_EQ(form().sbr.panel("MaxDist").text(), "1");
    tool->addCommitted("Ä", {0.25, 0.5});
    histograms.DisplayCharHistogram("Ä", kCharacterDistance);
    EXPECT_EQ(form().sbr.panel("MaxDist").text(), "2");
}

TEST_F(CharHistogramTest, FontHistogramShowsCountsAndLargestDistances) {
    g_bTrace = true;
    histograms.DisplayCharHistogram("A", kFontHistogram);
    g_bTrace = false;
    const auto entries = jobs.entries();
    EXPECT_EQ(form().caption(), "Frequency Histogram for Font");
    EXPECT_EQ(message(), "Creating histogram...");
    const auto& bars = form().chart.scene().bars;
    ASSERT_EQ(bars.size(), 3u);
    EXPECT_EQ(bars[0].accessibleName, "A, 4 samples, largest Distance 1.000, over the threshold");
    EXPECT_EQ(bars[1].accessibleName, "a, 1 sample, largest Distance 0.900, over the threshold");
    EXPECT_EQ(bars[2].accessibleName, "B, 0 samples, largest Distance 0.000");
    EXPECT_THAT(tool->calls, ElementsAre("GetSampleData(199999;1,4,5,6)", "GetSampleData(399999;1,2,3,5,6)"));
    EXPECT_EQ(std::count(entries.begin(), entries.end(), "Dravikdlg.MaxCharDistance"), 3)
        << "the procedure runs for each character, on samples that are fetched once";

    EXPECT_EQ(histograms.MaxCharDistance("a"), 0.9);
    EXPECT_EQ(histograms.MaxCharDistance("B"), 0);
    tool->committed.clear();
    EXPECT_EQ(histograms.MaxCharDistance("A"), 0);
}

TEST_F(CharHistogramTest, NothingToShowOpensNoForm) {
    g_bTrace = true;
    histograms.DisplayCharHistogram("A", 2);
    EXPECT_THAT(jobs.entries(), Contains("DravikDlg.DisplayCharHistogram(A, *unknown type*)"));
    EXPECT_TRUE(tool->calls.empty());
    tool->committed.clear();
    tool->trained.clear();
    histograms.DisplayCharHistogram("A", kCharacterDistance);
    histograms.DisplayCharHistogram("A", kFontHistogram);
    EXPECT_THAT(jobs.entries(), Contains("DravikDlg.DisplayCharHistogram(A, CharacterDistance)"));
    EXPECT_THAT(jobs.entries(), Contains("DravikDlg.DisplayCharHistogram(A, FontHistogram)"));
    EXPECT_EQ(message(), "Creating histogram...");
    EXPECT_EQ(histograms.m_dlgHist(), nullptr);
    EXPECT_TRUE(platform.shown.empty());
}

TEST_F(CharHistogramTest, FailuresAreReported) {
    tool->failAt("GetSampleData", 7, "Out of memory");
    histograms.DisplayCharHistogram("A", kFontHistogram);
    EXPECT_EQ(message(), "DisplayCharHistogram Err 7 Out of memory");
    EXPECT_EQ(histograms.MaxCharDistance("A"), 0);
    EXPECT_EQ(message(), "MaxCharDistance Err 7 Out of memory");
    tool->succeedAt("GetSampleData");
    tool->answers[kAllCommitted] =
        std::make_shared<CellTable>(std::vector<std::vector<Cell>>{{"H", "H", "H"}, {300000.0, 65.0, "far"}});
    histograms.DisplayCharHistogram("A", kCharacterDistance);
    EXPECT_EQ(message(), "DisplayCharHistogram Err 13 Type mismatch");
}

TEST_F(CharHistogramTest, WhatTheFormAsksForComesInTheFormWhichCountsOn) {
    histograms.DisplayCharHistogram("A", kCharacterDistance);
    auto* const before = &form();
    for (int i = 0; i < 4; ++i) deleteFirstBin();
    EXPECT_THAT(deleted, Contains("A 0.000000 0.100000").Times(4));
    EXPECT_EQ(platform.shown.size(), 5u);  // once for each filling
    form().tlbMain.button("Font").press();
    EXPECT_EQ(form().mode(), kFontHistogram);
    form().tlbMain.button("Char").press();
    deleteFirstBin();
    EXPECT_EQ(&form(), before);
    EXPECT_EQ(msg(), "5 deletions have occurred. Learn recommended.");

    // One that the screen opens takes the place of the form and starts afresh.
    form().udThreshold.setValue(9);
    histograms.DisplayCharHistogram("A", kFontHistogram);
    EXPECT_EQ(platform.open.size(), 1u);
    EXPECT_EQ(form().txtThreshold.text(), "0.400");
    EXPECT_EQ(message(), "Samples were deleted. Learn required.");
    form().tlbMain.button("Char").press();
    deleteFirstBin();
    EXPECT_EQ(msg(), "Created character histogram");
}

TEST_F(CharHistogramTest, WithoutSamplesTheFormIsEmptiedAndOffersTheOtherCharacters) {
    histograms.DisplayCharHistogram("B", kCharacterDistance);
    EXPECT_EQ(histograms.m_dlgHist(), nullptr) << "of a character without samples none is opened";
    histograms.DisplayCharHistogram("a", kCharacterDistance);
    EXPECT_EQ(form().chart.scene().bars.size(), 1u);
    const auto all = std::exchange(tool->committed, {});
    sbr.panel("Message").setText("Samples delete. Click 'Train'.");
    m_dlgHist_ShowDistHist("a");
    EXPECT_EQ(msg(), "No data");
    EXPECT_EQ(message(), "Samples delete. Click 'Train'.");
    EXPECT_TRUE(form().chart.scene().bars.empty());
    form().tlbMain.button("Char").press();
    EXPECT_THAT(msg(), Not(testing::StartsWith("Err")));

    tool->committed = all;
    for (const char* character : {"B", "A", "B", "a"}) {
        form().cboChar.setText(character);
        EXPECT_EQ(form().caption(), "Histogram of Distance values for " + std::string(character));
        EXPECT_EQ(form().currentCharacter(), character);
        EXPECT_EQ(msg(), character[0] == 'B' ? "No data" : "Created character histogram");
    }
}

TEST_F(CharHistogramTest, ReleaseClosesTheForm) {
    histograms.release();
    histograms.DisplayCharHistogram("A", kFontHistogram);
    int closed = 0;
    form().unloaded.subscribe([&] { ++closed; });
    histograms.release();
    EXPECT_EQ(closed, 1);
    EXPECT_EQ(histograms.m_dlgHist(), nullptr);
}

}  // namespace
}  // namespace dravik::test
