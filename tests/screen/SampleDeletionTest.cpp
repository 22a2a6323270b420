#include "screen/support/BoundScreen.h"

namespace dravik::test {
namespace {

class SampleDeletionTest : public BoundScreen {
  protected:
    std::string committed() const {
        std::string all;
        for (const auto& sample : tool->committed) all += sample.character;
        return all;
    }
};

TEST_F(SampleDeletionTest, ARangeOfDistancesDeletesThatCharactersSamplesOnly) {
    bind();
    EXPECT_EQ(control.DeleteSamplesByDistance("A", 0, 1), 0) << "there are none";
    EXPECT_FALSE(control.m_FontChanged());
    EXPECT_EQ(message(), "");
    tool->addCommitted("A", {0.1, 0.5, 0.9});
    tool->addCommitted("B", {0.5});
    tool->addCommitted("A", {0.5, 0.2});
    EXPECT_EQ(control.DeleteSamplesByDistance("A", 0.5, 0.9), 3);
    EXPECT_THAT(tool->changes(),
                ElementsAre("DeleteSample(300001)", "DeleteSample(300001)", "DeleteSample(300002)"));
    EXPECT_TRUE(control.m_FontChanged());
    EXPECT_EQ(screen().numeric.grid.rows(), 4);
    EXPECT_EQ(control.DeleteSamplesByDistance("A", 0.1, 0.1), 1);
}

TEST_F(SampleDeletionTest, TheLastRecordIsNeverExamined) {
    tool->addCommitted("B", {0.1, 0.1});
    tool->addCommitted("A", {0.1});
    bind();
    EXPECT_EQ(control.DeleteSamplesByDistance("A", 0, 1), 0);
    EXPECT_EQ(committed(), "BBA");
    tool->committed.resize(1);
    EXPECT_EQ(control.DeleteSamplesByDistance("B", 0, 1), 0)
        << "a failed deletion answers what it had so far";
    EXPECT_EQ(message(), "DeleteSamplesByDistance Err 9 Subscript out of range");
    EXPECT_EQ(committed(), "") << "the sample that matched before the failure stays deleted";
}

TEST_F(SampleDeletionTest, UndoRemovesTheLastIncludeOnce) {
    tool->addCommitted("C", {0.1, 0.2});
    bind();
    include("AB");
    include("BAAB");
    EXPECT_EQ(committed(), "CCABBAAB");
    tool->calls.clear();
    toolButton("Undo").press();
    EXPECT_THAT(tool->changes(),
                ElementsAre("DeleteSample(300008)", "DeleteSample(300007)", "DeleteSample(300006)",
                            "DeleteSample(300005)", "DeleteSample(300004)"))
        << "the first names the place behind the last sample";
    EXPECT_EQ(committed(), "CCAB");
    EXPECT_EQ(message(), "Removed last included: BAAB");
    EXPECT_EQ(screen().sbr.panel("LastInclude").text(), "");
    EXPECT_EQ(toolButton("Undo").toolTip(), "Nothing to undo");
    EXPECT_EQ(cell("A").backColor(), rgb(128, 128, 255)) << "A and B are still included by the first";
    toolButton("Undo").press();
    EXPECT_EQ(committed(), "CCAB");
}

TEST_F(SampleDeletionTest, UndoOfTheOnlyIncludeLeavesNothingOfIt) {
    tool->addCommitted("C", {0.1});
    bind();
    include("AB");
    EXPECT_EQ(screen().numeric.grid.rows(), 4);
    screen().train.cmdSaveFont.setEnabled(true);
    screen().train.cmdSaveFont.press();
    ASSERT_FALSE(control.m_FontChanged());
    toolButton("Undo").press();
    EXPECT_TRUE(control.m_FontChanged()) << "the saved font has the samples that are gone";
    EXPECT_EQ(cell("A").backColor(), rgb(255, 255, 255));
    EXPECT_EQ(screen().numeric.grid.rows(), 2);
}

TEST_F(SampleDeletionTest, UndoAfterAFailureTakesNoOlderSamples) {
    tool->addCommitted("C", {0.1, 0.2, 0.3});
    bind();
    tool->failAt("CommitNewSamples", 70, "Permission denied");
    include("AB");
    EXPECT_EQ(message(), "0 samples included.");
    tool->succeedAt("CommitNewSamples");
    tool->uncommitted.clear();
    toolButton("Undo").press();
    EXPECT_EQ(committed(), "CCC");

    include("AB");
    tool->onCall = [&](const std::string& call) {
        if (call == "DeleteSample(300003)") tool->failAt("DeleteSample", 70, "Permission denied");
    };
    toolButton("Undo").press();
    EXPECT_EQ(message(), "DeleteLast Err 70 Permission denied");
    EXPECT_EQ(committed(), "CCCA");
    EXPECT_EQ(screen().numeric.grid.rows(), 5) << "the rows are those of the samples that are left";
    tool->onCall = nullptr;
    tool->succeedAt("DeleteSample");
    toolButton("Undo").press();
    EXPECT_EQ(committed(), "CCC") << "what was left of the include";
    EXPECT_EQ(message(), "Removed last included: AB");
}

}  // namespace
}  // namespace dravik::test
