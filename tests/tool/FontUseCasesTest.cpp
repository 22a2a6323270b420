#include "tool/FontUseCases.h"

#include "screen/support/RecordingTool.h"
#include "support/Testing.h"

namespace dravik::test {
namespace {

class FontUseCasesTest : public testing::Test {
  protected:
    template <class Outcome>
    Outcome includes(const IncludeRequest& request) {
        const auto outcome = font.include(request);
        const auto* wanted = std::get_if<Outcome>(&outcome);
        EXPECT_TRUE(wanted) << "outcome " << outcome.index();
        return wanted ? *wanted : Outcome{};
    }

    RecordingTool tool;
    FontUseCases font{tool};
};

TEST_F(FontUseCasesTest, AnIncludeCommitsWhatMatchesAndAddsCharactersOnlyWhenAsked) {
    tool.characterSet = {"1", "2"};
    EXPECT_EQ(includes<Included>({" 121 "}).samples, 3U);
    EXPECT_EQ(tool.committed.size(), 3U);

    tool.calls.clear();
    EXPECT_EQ(includes<MissingCharacters>({"1AbA"}).characters, "Ab");
    EXPECT_EQ(tool.committed.size(), 3U);
    EXPECT_THAT(tool.uncommitted, IsEmpty());
    EXPECT_THAT(tool.characterSet, ElementsAre("1", "2"));

    EXPECT_EQ(includes<Included>({.text = "1AbA", .addMissing = true}).samples, 4U);
    EXPECT_THAT(tool.characterSet, ElementsAre("1", "2", "A", "b"));
    EXPECT_EQ(font.committedSamples(), 7);
}

TEST_F(FontUseCasesTest, TheTextFollowsTheFontsCaseWhenAsked) {
    tool.characterSet = {"A"};
    tool.trained = {{"A", 1, {}}};
    includes<Included>({.text = "aa", .maintainCase = true});
    EXPECT_EQ(tool.count("IncludeSamples(AA)"), 1);
    includes<MissingCharacters>({.text = "aa"});
    EXPECT_EQ(tool.count("IncludeSamples(aa)"), 1);
}

TEST_F(FontUseCasesTest, AToolThatFailsInAnIncludeLeavesTheFontAsItWas) {
    tool.characterSet = {"1"};
    for (const char* operation : {"IncludeSamples", "CommitNewSamples", "SetCharacterSet"}) {
        tool.failAt(operation, 7, "too many");
        EXPECT_EQ(refusal([&] { font.include({.text = "12", .addMissing = true}); }), 7) << operation;
        tool.succeedAt(operation);
        EXPECT_THAT(tool.uncommitted, IsEmpty()) << operation;
        EXPECT_THAT(tool.characterSet, ElementsAre("1")) << operation;
    }
    tool.failAt("CommitNewSamples", 7, "too many");
    tool.failAt("DeleteSample", 5, "gone");
    EXPECT_EQ(refusal([&] { font.include({.text = "1"}); }), 7) << "the first failure is told";
}

TEST_F(FontUseCasesTest, ARunThatIsStoppedOrFailsIsStoppedInTheToolToo) {
    tool.trainingDone = false;
    const auto stopped = font.learn(
        {}, [](const LearnProgress&) {}, [] { return true; });
    EXPECT_EQ(stopped.end, LearnOutcome::End::Stopped);
    EXPECT_THAT(tool.changes(), ElementsAre("StartTraining()", "StopTraining()"));

    tool.failAt("IsTrainingDone", 7, "Training failed: Out of memory");
    tool.failAt("StopTraining", 5, "no run");
    EXPECT_EQ(refusal([&] {
                  font.learn(
                      {}, [](const LearnProgress&) {}, [] { return false; });
              }),
              7);
    EXPECT_EQ(tool.count("StopTraining()"), 2);
}

}  // namespace
}  // namespace dravik::test
