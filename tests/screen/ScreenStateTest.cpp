#include "screen/histogram/dlgCharHist.h"
#include "screen/support/BoundScreen.h"

namespace dravik::test {
namespace {

TEST(ScreenState, ComesBackFromItsBytesUnlessTheyAreDamaged) {
    ScreenState state;
    state.m_LastInclude = "A\xC3\xA9";
    state.message = "2 samples included.";
    state.markedChars = "A";
    state.committed = 2;
    state.undoEnabled = state.saveEnabled = true;
    const std::string bytes = encode(state);
    EXPECT_EQ(decodeScreenState(bytes), state);
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        EXPECT_FALSE(decodeScreenState(bytes.substr(0, at))) << "cut at " << at;
        for (const int flip : {1, 0x80}) {
            std::string damaged = bytes;
            damaged[at] = static_cast<char>(damaged[at] ^ flip);
            EXPECT_FALSE(decodeScreenState(damaged)) << "byte " << at;
        }
    }
    EXPECT_FALSE(decodeScreenState(bytes + '\0'));
}

class OperatorActs : public BoundScreen {
  protected:
    OperatorActs() {
        control.actEnded().subscribe([this](const OperatorAct& act) {
            acts.push_back(act);
            said.push_back(actName(act) + (deletedText(act).empty() ? "" : " | " + deletedText(act)));
        });
    }

    std::vector<OperatorAct> acts;
    std::vector<std::string> said;
};

TEST_F(OperatorActs, EachIsToldOnceWithWhatItDid) {
    tool->addCommitted("B", {0.1, 0.2, 0.3});
    tool->addCommitted("A", {0.1, 0.9, 0.2});
    tool->train();
    bind();
    include("CA");
    control.DeleteSamplesByDistance("A", 0.85, 1);
    screen().numeric.grid.select(1, 0, 2, 0);
    screen().numeric.grid.keyDown(kKeyDelete, 0);
    platform.boxAnswers = {Answer::Yes};
    rightClick("A", "mnuMainCharacterExclude");
    screen().font.txtCharSet.setText("BCD");
    screen().train.cmdTrain.press();
    screen().train.tmrTrain.tick();
    screen().train.cmdRevert.press();
    screen().train.cmdSaveFont.press();
    EXPECT_THAT(said, ElementsAre("include of CA", "deletion of 1 sample of A | Deleted A",
                                  "deletion of 2 samples of B | Deleted B, B",
                                  "removal of A from the font | Deleted A, A", "change of the character set",
                                  "learning", "revert of ocrb", "save of ocrb"));
}

TEST_F(OperatorActs, WhatChangedNothingIsNotTold) {
    tool->addCommitted("A", {0.1, 0.2});
    bind();
    tool->image = std::vector<SampleRecord>{};
    platform.boxAnswers = {Answer::Ok};
    include("AB");
    control.DeleteSamplesByDistance("B", 0, 1);
    toolButton("Undo").press();
    tool->failAt("DeleteSample", 5, "no");
    screen().numeric.grid.keyDown(kKeyDelete, 0);
    EXPECT_EQ(said, std::vector<std::string>());
}

// A history that keeps the tool's font and the screen's state together goes back and forth.
TEST_F(OperatorActs, TheScreenGoesBackAndForthWithTheFont) {
    tool->addCommitted("C", {0.1, 0.2});
    tool->train();
    bind();
    include("AB");
    include("C");
    const auto before = acts[1].before;
    const auto after = acts[1].after;
    EXPECT_EQ(after, control.state());
    rightClick("C", "mnuMainCharHist");
    auto& histogram = static_cast<dlgCharHist&>(platform.opened("dlgCharHist"));
    tool->calls.clear();

    tool->committed.pop_back();
    tool->characterSet = {"A"};
    control.refreshAfterHistory(before, true);
    EXPECT_THAT(tool->changes(), IsEmpty());
    EXPECT_EQ(control.state(), before);
    EXPECT_EQ(screen().sbr.panel("LastInclude").text(), "AB");
    EXPECT_EQ(screen().font.txtCharSet.text(), "A");
    EXPECT_EQ(screen().numeric.grid.rows(), 5);
    EXPECT_NE(cell("C").backColor(), rgb(128, 128, 255));
    EXPECT_EQ(histogram.sbr.panel("MaxDist").text(), "2");

    tool->committed.clear();
    control.refreshAfterHistory(acts[0].before, false);
    EXPECT_FALSE(control.m_FontChanged() || screen().train.cmdTrain.enabled() ||
                 toolButton("Undo").enabled());
    EXPECT_EQ(screen().numeric.grid.rows(), 0);
    EXPECT_TRUE(platform.open.empty()) << "a histogram without samples";

    tool->addCommitted("C", {0.1, 0.2, 0.3});
    control.refreshAfterHistory(after, true);
    EXPECT_EQ(control.state(), after);
    EXPECT_TRUE(screen().train.cmdTrain.enabled());
    toolButton("Undo").press();
    EXPECT_EQ(message(), "Removed last included: C");
}

TEST_F(OperatorActs, ARunIsDecidedOnceAndNotRestored) {
    tool->addCommitted("C", {0.1, 0.2});
    bind();
    screen().train.cmdTrain.press();
    screen().font.txtCharSet.setText("CD");  // the box stays open during a run
    const auto running = acts.back().after;
    screen().train.tmrTrain.tick();
    const auto ended = acts.back().after;
    EXPECT_FALSE(acts.back().before.awaitsDecision);

    control.refreshAfterHistory(running, true);
    EXPECT_TRUE(screen().train.cmdTrain.enabled() && screen().sample.cmdInclude.enabled() &&
                screen().font.cmdSelectFont.enabled());
    EXPECT_FALSE(screen().train.cmdSaveFont.enabled());
    control.refreshAfterHistory(ended, true);
    EXPECT_FALSE(screen().train.cmdTrain.enabled() || screen().sample.cmdInclude.enabled());
    EXPECT_TRUE(screen().train.cmdRevert.enabled() && screen().train.cmdSaveFont.enabled());
    screen().train.cmdRevert.press();

    screen().train.cmdTrain.press();
    control.refreshAfterHistory(ended, true);
    EXPECT_TRUE(screen().train.cmdStop.enabled());
    EXPECT_FALSE(screen().train.cmdSaveFont.enabled());
}

}  // namespace
}  // namespace dravik::test
