
#include "screen/support/BoundScreen.h"

namespace dravik::test {
namespace {

class TrainingRunTest : public BoundScreen {
  protected:
    TrainingRunTest() {
        tool->timeout = 10;
        tool->addCommitted("A", {0.1, 0.2});
        bind();
    }

    void learn() {
        tool->trainingDone = false;
        screen().train.cmdTrain.press();
    }
    void tick() { screen().train.tmrTrain.tick(); }
    void end(float rms, std::int32_t cycles) {
        tool->trainingDone = true;
        tool->rmsError = rms;
        tool->cycles = cycles;
        tick();
    }
    // What the operator can use of the controls that a run takes away or gives.
    std::vector<std::string> usable() {
        auto& train = screen().train;
        std::vector<std::string> names;
        for (const Widget* each : std::initializer_list<const Widget*>{
                 &screen().font.cmdSelectFont, &screen().sample.txtSampleInput, &screen().sample.cmdInclude,
                 &train.cboTimeout, &train.cmdTrain, &train.cmdStop, &train.cmdSaveFont, &train.cmdRevert})
            if (each->enabled()) names.push_back(each->name());
        return names;
    }
    const std::vector<std::string> free = {"cmdSelectFont", "txtSampleInput", "cmdInclude", "cboTimeout",
                                           "cmdTrain"};
    const std::vector<std::string> onlyStop = {"cmdStop"};
    const std::vector<std::string> decision = {"cmdSaveFont", "cmdRevert"};
};

TEST_F(TrainingRunTest, ClosingStopsARunThatGoesOn) {
    DravikDlg second(platform, jobs.folder());
    second.setStep(tool);
    second.UserControl_Terminate();
    EXPECT_EQ(tool->count("StopTraining()"), 0);
    learn();
    tool->failAt("StopTraining", 70, "Permission denied");
    EXPECT_NO_THROW(control.UserControl_Terminate());
    EXPECT_EQ(tool->count("StopTraining()"), 1) << "nobody would hear of its end";
    EXPECT_FALSE(screen().train.tmrTrain.enabled());
}

TEST_F(TrainingRunTest, AStepThatIsLeftTakesItsRunWithIt) {
    for (const bool decides : {false, true}) {
        learn();
        tick();
        if (decides) end(0.1f, 5);
        tool = std::make_shared<RecordingTool>();
        tool->fonts = {"ocrb"};
        tool->addCommitted("A", {0.1});
        control.setStep(tool);
        EXPECT_EQ(usable(), free);
        EXPECT_FALSE(screen().train.tmrTrain.enabled());
        EXPECT_EQ(screen().train.prgTrain.value(), 0);
        EXPECT_EQ(screen().train.lblStatus.caption(), "");
    }
}

TEST_F(TrainingRunTest, TheTimeoutListAndTheToolAgree) {
    const std::pair<std::int32_t, const char*> limits[] = {
        {10, "10 sec"},     {20, "20 sec"},     {30, "30 sec"},    {60, "1 minute"},
        {120, "2 minutes"}, {180, "3 minutes"}, {300, "5 minutes"}};
    for (const auto& [seconds, text] : limits) {
        tool->timeout = seconds;
        control.setStep(tool);
        EXPECT_EQ(screen().train.cboTimeout.text(), text);
        EXPECT_EQ(tool->timeout, seconds);
    }
    tool->timeout = 45;
    control.setStep(tool);
    EXPECT_EQ(screen().train.cboTimeout.text(), "1 minute");
    EXPECT_EQ(tool->timeout, 60) << "a limit that the list does not have is replaced";
}

TEST_F(TrainingRunTest, ARunShowsItsProgressAndItsFigures) {
    toolButton("Log").press();
    learn();
    EXPECT_TRUE(screen().train.tmrTrain.enabled());
    EXPECT_EQ(usable(), onlyStop);
    tool->rmsError = 0.5f;
    tick();
    EXPECT_EQ(screen().train.lblStatus.caption(), " RMS Error: 0.50");
    tool->rmsError = std::numeric_limits<float>::infinity();
    tick();
    EXPECT_EQ(screen().train.lblStatus.caption(), " RMS Error: 1.#INF") << "not the figure of a perfect run";
    EXPECT_FLOAT_EQ(screen().train.prgTrain.value(), 2.0f);

    const FocusCount focus(screen().train.cmdSaveFont);
    end(0.03f, 412);
    EXPECT_EQ(screen().train.lblStatus.caption(), "Cycles: 412, RMS: 0.03");
    EXPECT_EQ(screen().train.prgTrain.value(), 100);
    EXPECT_EQ(message(), "Save Font or Revert");
    EXPECT_EQ(focus, 1);
    EXPECT_FALSE(screen().train.tmrTrain.enabled());
    EXPECT_EQ(usable(), decision) << "the operator must decide first";
    EXPECT_TRUE(control.m_FontChanged());
    EXPECT_THAT(jobs.entries(), Contains("Dravikdlg.training done, RMS = 0.03").Times(1));
}

TEST_F(TrainingRunTest, SaveEndsTheRun) {
    platform.fileDates[jobs.folder().fontFile("ocrb")] = "11/21/2026 3:04 PM";
    learn();
    end(0.1f, 5);
    tool->train();
    screen().train.cmdSaveFont.press();
    EXPECT_EQ(tool->count("SaveFont(ocrb)"), 1);
    EXPECT_FALSE(control.m_FontChanged());
    EXPECT_EQ(screen().font.lblFontDateTime.caption(), "Trained on 11/21/2026 3:04 PM");
    EXPECT_EQ(cell("A").backColor(), rgb(255, 192, 192));
    EXPECT_EQ(message(), "Saved font");
    EXPECT_EQ(screen().train.prgTrain.value(), 0);
    EXPECT_EQ(usable(), free);
}

TEST_F(TrainingRunTest, AFailedSaveKeepsTheFontChangedAndTheDecisionOpen) {
    learn();
    tool->trainingAborted = true;
    end(0.5f, 3);
    EXPECT_EQ(screen().train.lblStatus.caption(), "") << "an aborted run shows no figures";
    EXPECT_EQ(message(), "Save Font or Revert");
    screen().train.cmdRevert.press();
    tool->trainingAborted = false;
    learn();
    end(0.1f, 5);
    tool->failAt("SaveFont", 61, "Disk full");
    screen().train.cmdSaveFont.press();
    EXPECT_EQ(message(), "SaveFont Err 61 Disk full");
    EXPECT_TRUE(control.m_FontChanged());
    EXPECT_TRUE(screen().train.cmdSaveFont.enabled());
}

TEST_F(TrainingRunTest, RevertLeavesSaveEnabledAndStopAllowsNeither) {
    learn();
    tick();
    end(0.1f, 5);
    const FocusCount focus(screen().sample.txtSampleInput);
    screen().train.cmdRevert.press();
    EXPECT_EQ(tool->count("RevertFont(ocrb)"), 1);
    EXPECT_EQ(message(), "Reverted font to previous training.");
    EXPECT_EQ(screen().train.prgTrain.value(), 0);
    EXPECT_EQ(focus, 1) << "the next part image can be typed at once";
    EXPECT_THAT(usable(), testing::IsSupersetOf(free));
    EXPECT_THAT(usable(), testing::IsSupersetOf(decision));
    EXPECT_TRUE(control.m_FontChanged());

    learn();
    EXPECT_EQ(usable(), onlyStop) << "nothing of the run before can be saved under this one";
    tick();
    EXPECT_FLOAT_EQ(screen().train.prgTrain.value(), 1.0f) << "each run is timed anew";
    tool->failAt("StopTraining", 70, "Permission denied");
    screen().train.cmdStop.press();
    EXPECT_EQ(message(), "Stop Err 70 Permission denied");
    EXPECT_TRUE(screen().train.tmrTrain.enabled()) << "a run that goes on is followed";
    EXPECT_EQ(usable(), onlyStop);
    tool->succeedAt("StopTraining");
    screen().train.cmdStop.press();
    EXPECT_EQ(message(), "Stopped training.");
    EXPECT_FALSE(screen().train.tmrTrain.enabled());
    EXPECT_EQ(usable(), free);
}

TEST_F(TrainingRunTest, UncommittedSamplesAreAskedAboutFirst) {
    tool->uncommitted.push_back({"A", 0, {}});
    platform.boxAnswers = {Answer::Cancel};
    learn();
    ASSERT_THAT(platform.told(), ElementsAre("Warning: Uncommitted Samples: This font contains uncommitted "
                                             "samples. Commit all samples now?"));
    EXPECT_EQ(platform.boxes[0].buttons, MessageBox::Buttons::YesNoCancel);
    EXPECT_EQ(tool->count("StartTraining()"), 0);
    EXPECT_EQ(usable(), free);

    platform.boxAnswers = {Answer::No};
    learn();
    EXPECT_EQ(tool->count("StartTraining()"), 1);
    EXPECT_EQ(tool->uncommitted.size(), 1u);
    screen().train.cmdStop.press();

    screen().sample.txtSampleInput.setText("A");
    platform.boxAnswers = {Answer::Yes};
    learn();
    EXPECT_EQ(tool->committed.size(), 4u) << "Yes runs Include";
    EXPECT_EQ(tool->count("StartTraining()"), 2);
}

TEST_F(TrainingRunTest, AnEventDuringAPollDoesNotStartAnother) {
    learn();
    tool->onCall = [&](const std::string& call) {
        if (call == "IsTrainingDone()" && tool->count(call) < 5) tick();
    };
    tick();
    EXPECT_EQ(tool->count("IsTrainingDone()"), 1);
    tick();
    EXPECT_EQ(tool->count("IsTrainingDone()"), 2) << "the next one goes on";
}

TEST_F(TrainingRunTest, AFailureAtAPollIsReportedAndPollingGoesOn) {
    learn();
    tool->failAt("GetRmsError", 1000, "Tool is gone");
    tick();
    EXPECT_EQ(message(), "TrainTimer Err 1000 Tool is gone");
    EXPECT_TRUE(screen().train.tmrTrain.enabled());
    tool->failAt("StartTraining", 1001, "No samples");
    screen().train.cmdStop.press();
    learn();
    EXPECT_EQ(message(), "Train Err 1001 No samples");
    EXPECT_FALSE(screen().train.tmrTrain.enabled());
    EXPECT_EQ(usable(), onlyStop) << "Stop is the way back";
    screen().train.cmdStop.press();
    EXPECT_EQ(usable(), free);
}

}  // namespace
}  // namespace dravik::test
