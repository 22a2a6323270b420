
#include "screen/support/BoundScreen.h"

namespace dravik::test {
namespace {

class InclusionTest : public BoundScreen {
  protected:
    InclusionTest() { bind(); }

    // The image shows one sample a character, all features `value`.
    void show(const std::string& characters, double value = 0.5) {
        tool->image.emplace();
        for (const char c : characters) tool->image->push_back({std::string(1, c), 0, filled(value)});
    }
};

TEST_F(InclusionTest, AnEmptyTextAsksForOneAndNothingFoundForBlanksCannotBeCounted) {
    include("");
    EXPECT_EQ(message(), "Input text or characters, then click Include.");
    EXPECT_TRUE(tool->changes().empty());
    EXPECT_FALSE(control.m_FontChanged());
    show("");
    include("   ");
    EXPECT_EQ(tool->count("IncludeSamples()"), 1);
    EXPECT_EQ(message(), "Samples could not be included. Error counting samples.");
}

TEST_F(InclusionTest, CommitsTheSamplesAndRemembersTheInclude) {
    include(" ABA ");
    EXPECT_EQ(tool->count("IncludeSamples(ABA)"), 1);
    EXPECT_EQ(tool->committed.size(), 3u);
    EXPECT_EQ(message(), "3 samples included.");
    EXPECT_EQ(screen().sbr.panel("LastInclude").text(), "ABA");
    EXPECT_EQ(toolButton("Undo").toolTip(), "Undo include for 'ABA'");
    EXPECT_TRUE(toolButton("Undo").enabled());
    EXPECT_TRUE(control.m_FontChanged());
    EXPECT_TRUE(screen().sample.cmdInclude.enabled() && screen().train.cmdTrain.enabled());
    EXPECT_EQ(screen().numeric.cboDisplay.listIndex(), kDisplayCommitted);
    EXPECT_EQ(screen().numeric.grid.rows(), 4);
    EXPECT_EQ(cell("A").backColor(), rgb(128, 128, 255));
    EXPECT_EQ(cell("C").backColor(), rgb(255, 255, 255));
    include("C");
    EXPECT_EQ(cell("A").backColor(), rgb(128, 128, 255))
        << "all includes since the font was loaded are marked";
    EXPECT_EQ(cell("C").backColor(), rgb(128, 128, 255));
}

TEST_F(InclusionTest, WhileItRunsNoSecondIncludeStartsAndTheNewSamplesAreShown) {
    screen().train.prgTrain.setValue(40);
    int checked = 0;
    tool->onCall = [&](const std::string& call) {
        if (call == "IncludeSamples(AB)") {
            ++checked;
            EXPECT_FALSE(screen().sample.cmdInclude.enabled());
            EXPECT_EQ(screen().train.prgTrain.value(), 0);
        } else if (call == "CommitNewSamples()") {
            ++checked;
            EXPECT_EQ(screen().numeric.cboDisplay.listIndex(), kDisplayUncommitted);
            EXPECT_EQ(screen().numeric.grid.rows(), 3);
        }
    };
    include("AB");
    EXPECT_EQ(checked, 2);
}

TEST_F(InclusionTest, ADifferentCountIsShownAndTheSamplesAreDeleted) {
    toolButton("Log").press();
    show("ABCA");
    platform.boxAnswers = {Answer::Ok};
    include("AB CA");
    EXPECT_THAT(jobs.entries(), Contains("DeleteSamples(uncommitted)").Times(1));
    EXPECT_THAT(platform.told(),
                ElementsAre("Difference in character counts: Input characters:\r    AB CA (5 characters)\r\r"
                            "Found characters:\r    ABCA (4 characters)\r\rSamples will not be included."));
    EXPECT_TRUE(tool->uncommitted.empty() && tool->committed.empty());
    EXPECT_EQ(tool->count("DeleteSample(200000)"), 5) << "one call more than there are samples";
    EXPECT_EQ(message(), "Adjust OCR tool and try Include again.");
    EXPECT_TRUE(screen().sample.cmdInclude.enabled() && !toolButton("Undo").enabled());
}

TEST_F(InclusionTest, ASampleWithoutFeaturesIsNotCountedAndOneOfInvalidFeaturesStopsTheInclude) {
    show("AB");
    tool->image->push_back({"C", 0, filled(0)});
    include("AB");
    EXPECT_EQ(message(), "3 samples included.");
    for (const double bad : {-0.1, std::nan(""), std::numeric_limits<double>::infinity()}) {
        show("AB");
        (*tool->image)[1].features[48] = bad;
        platform.boxAnswers = {Answer::Ok};
        include("AB");
        EXPECT_EQ(platform.told().back(),
                  "Error constant detected: Error detected for character B\r\r"
                  "Characters will not be included.");
        EXPECT_TRUE(tool->uncommitted.empty() && tool->committed.size() == 3);
    }
}

// A job system's tool may answer with texts; what stands in front of the features may be negative.
TEST_F(InclusionTest, FeaturesMayBeTextsAndOffsetsNegative) {
    const auto typed = [&](const Cell& feature) {
        std::vector<Cell> row(54, feature);
        row[1] = 65.0;
        row[4] = -0.25;
        tool->setAnswer(kAllUncommitted, {std::vector<Cell>(54, "H"), row});
        tool->uncommitted.assign(1, {"A", 0, {}});
        include("A");
    };
    typed("0.5");
    EXPECT_EQ(message(), "2 samples included.");
    platform.boxAnswers = {Answer::Ok};
    typed("1.#INF");
    EXPECT_THAT(platform.told(), ElementsAre(StartsWith("Error constant detected")));
}

TEST_F(InclusionTest, MissingCharactersAreOfferedOnceInTheirOrder) {
    platform.boxAnswers = {Answer::Yes};
    include("aA1a");
    EXPECT_THAT(platform.told(),
                ElementsAre("Warning: Invalid Characters: Characters a1 are not in the font character set. "
                            "Include these characters now?\r\r"
                            "Note: Selecting 'No' will remove samples added when Include was clicked."));
    EXPECT_EQ(screen().font.txtCharSet.text(), "ABCa1");
    EXPECT_EQ(tool->count("SetCharacterSet(,A,B,C,a,1)"), 1);
    EXPECT_EQ(message(), "4 samples included.");
}

TEST_F(InclusionTest, DecliningDeletesTheSamplesAndEmptiesTheLastInclude) {
    include("A");
    platform.boxAnswers = {Answer::No};
    include("x");
    EXPECT_EQ(message(), "Samples not included.");
    EXPECT_EQ(tool->committed.size(), 1u);
    EXPECT_TRUE(tool->uncommitted.empty());
    EXPECT_EQ(screen().sbr.panel("LastInclude").text(), "");
    EXPECT_EQ(toolButton("Undo").toolTip(), "Undo include for ''");
    EXPECT_TRUE(toolButton("Undo").enabled());
    toolButton("Undo").press();
    EXPECT_EQ(tool->committed.size(), 1u) << "nothing is left to undo";
}

TEST_F(InclusionTest, MaintainCaseFollowsTheFontsLetters) {
    screen().sample.chkCase.setChecked(true);
    show("");
    const std::tuple<std::vector<CharacterRecord>, const char*, const char*> fonts[] = {
        {{{"A", 1, {}}, {"1", 1, {}}}, "aBé", "ABÉ"},
        {{{"a", 1, {}}}, "aBz", "abz"},
        {{{"a", 1, {}}, {"A", 1, {}}}, "aBz", "aBz"},
        {{{"1", 1, {}}, {"É", 1, {}}}, "aBz", "aBz"},
        {{{"@", 1, {}}, {"[", 1, {}}, {"`", 1, {}}, {"{", 1, {}}}, "aBz", "aBz"}};
    for (const auto& [records, typed, taken] : fonts) {
        tool->trained = records;
        platform.boxAnswers = {Answer::Ok};
        include(typed);
        EXPECT_EQ(screen().sample.txtSampleInput.text(), taken);
    }
}

TEST_F(InclusionTest, TypingCountsTheCharacters) {
    for (const auto& [text, told] :
         {std::pair(" é ", "1 character"), {"a b", "3 characters"}, {"", "0 characters"}}) {
        screen().sample.txtSampleInput.setText(text);
        EXPECT_EQ(message(), told);
    }
}

TEST_F(InclusionTest, AToolThatFailsAtAnyStepLeavesTheScreenUsable) {
    toolButton("Log").press();
    const std::pair<const char*, std::size_t> committed[] = {
        {"IncludeSamples", 0}, {"GetUncommittedSamples", 0}, {"CommitNewSamples", 0},
        {"GetSampleData", 0},  {"DeleteSample", 2},          {"GetCharacterSet", 4}};
    for (const auto& [operation, samples] : committed) {
        tool->failAt(operation, -2147467259, "Camera lost");
        platform.boxAnswers.assign(3, Answer::Ok);
        include("AB");
        EXPECT_TRUE(screen().sample.cmdInclude.enabled()) << operation;
        EXPECT_EQ(tool->committed.size(), samples) << operation;
        tool->succeedAt(operation);
        tool->uncommitted.clear();
    }
    platform.boxAnswers.clear();
    EXPECT_THAT(jobs.entries(), Contains("# Dravikdlg error: CommitSamples Err -2147467259 Camera lost"));
}

}  // namespace
}  // namespace dravik::test
