#include "tool/FontUseCases.h"

#include <gmock/gmock.h>

#include "screen/support/RecordingTool.h"
#include "support/Refused.h"

namespace dravik::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FontUseCasesTest : public testing::Test {
  protected:
    template <class Outcome>
    Outcome includes(const IncludeRequest& request) {
        const auto outcome = font.include(request);
        const auto* wanted = std::get_if<Outcome>(&outcome);
        EXPECT_TRUE(wanted) << "outcome " << outcome.index();
        return wanted ? *wanted : Outcome{};
    }

    // The image shows one sample a character, all features `value`.
    void show(const std::string& characters, double value = 0.5) {
        tool.image.emplace();
        for (const char c : characters) {
            tool.image->push_back({std::string(1, c), 0, {}});
            tool.image->back().features.fill(value);
        }
    }

    RecordingTool tool;
    FontUseCases font{tool};
};

TEST_F(FontUseCasesTest, ChoosingAFontLoadsItOrMakesItUnderACleanName) {
    tool.fonts = {"ocrb"};
    auto outcome = font.choose("ocrb");
    ASSERT_TRUE(std::holds_alternative<ChosenFont>(outcome));
    EXPECT_FALSE(std::get<ChosenFont>(outcome).made);
    EXPECT_THAT(tool.changes(), ElementsAre("LoadFont(ocrb)"));

    outcome = font.choose(" my font");
    EXPECT_EQ(std::get<ChosenFont>(outcome).name, "my_font");
    EXPECT_TRUE(std::get<ChosenFont>(outcome).made);
    font.save();
    EXPECT_THAT(tool.changes(), ElementsAre("LoadFont(ocrb)", "CreateFont(my_font)", "SaveFont(my_font)",
                                            "SaveFont(my_font)"));

    tool.calls.clear();
    EXPECT_EQ(std::get<NameProblem>(font.choose("New")), NameProblem::Reserved);
    EXPECT_EQ(std::get<NameProblem>(font.choose("OCRB")), NameProblem::OtherCase);
    EXPECT_THAT(tool.changes(), IsEmpty());
}

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

TEST_F(FontUseCasesTest, WhatDoesNotMatchLeavesNoSampleBehind) {
    tool.characterSet = {"1", "2", "3"};
    show("123");
    const auto mismatch = includes<CountMismatch>({"12"});
    EXPECT_EQ(mismatch.typed, 2U);
    EXPECT_EQ(mismatch.found, 3U);
    EXPECT_THAT(tool.uncommitted, IsEmpty());

    show("123", -1);
    EXPECT_EQ(includes<InvalidValues>({"123"}).character, "1");
    EXPECT_THAT(tool.uncommitted, IsEmpty());

    show("");
    includes<NothingFound>({"  "});
    EXPECT_THAT(tool.committed, IsEmpty());
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

TEST_F(FontUseCasesTest, LearningTellsItsFiguresUntilTheRunHasEnded) {
    tool.trainingDone = false;
    tool.cycles = 1;
    int told = 0;
    const auto learnt = font.learn(
        45,
        [&](const LearnProgress& progress) {
            EXPECT_EQ(progress.cycles, tool.cycles);
            EXPECT_GT(progress.seconds, 0);
            tool.cycles = 412;
            tool.rmsError = 0.03F;
            tool.trainingDone = ++told >= 2;
        },
        [] { return false; });
    EXPECT_EQ(learnt.end, LearnOutcome::End::Learnt);
    EXPECT_EQ(told, 3) << "and once more with the figures at the end";
    EXPECT_EQ(learnt.last.cycles, 412);
    EXPECT_EQ(learnt.last.rmsError, 0.03F);
    EXPECT_THAT(tool.changes(), ElementsAre("SetTrainTimeout(45)", "StartTraining()"));

    tool.trainingAborted = true;
    EXPECT_EQ(font.learn(
                      {}, [](const LearnProgress&) {}, [] { return false; })
                  .end,
              LearnOutcome::End::NoResult);
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
