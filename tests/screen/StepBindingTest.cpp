#include "screen/support/BoundScreen.h"

namespace dravik::test {
namespace {

TEST_F(BoundScreen, StartsEmptyWithNothingToSaveOrStop) {
    const auto& train = screen().train;
    EXPECT_FALSE(train.cmdSaveFont.enabled() || train.cmdRevert.enabled() || train.cmdStop.enabled());
    EXPECT_EQ(train.cboTimeout.text(), "10 sec");
    EXPECT_TRUE(screen().overview.fraChar.visible());
    EXPECT_FALSE(screen().numeric.grid.visible() || screen().numeric.grid.redraw());
    EXPECT_EQ(screen().font.lblSelectedFont.caption(), "Name");
    // What the first timeout could not be told to.
    EXPECT_EQ(message(), "TimeoutSelect Err 91 Object variable or With block variable not set");
    control.setStep(tool);
    EXPECT_EQ(message(), "");
}

TEST_F(BoundScreen, RefusesAnyOtherStepAndChangesNothing) {
    for (const char* identifier : {"Step.DravikTool.2", "step.draviktool.1", "Step.DravikTool.1 ", ""}) {
        tool->program = identifier;
        const Failure failure = failureOfAction([&] { control.setStep(tool); });
        EXPECT_EQ(static_cast<std::uint32_t>(failure.number()), 0x80004005u) << identifier;
        EXPECT_EQ(failure.source(), "DravikPage.DravikPage");
        EXPECT_EQ(failure.description(), "Given step is not Dravik Tool");
    }
    EXPECT_EQ(control.step(), nullptr);
    EXPECT_TRUE(tool->calls.empty());
}

TEST_F(BoundScreen, NoStepAndOneThatFailsAreReportedAndLeaveTheOneBeforeInItsPlace) {
    struct Empty : RecordingTool {
        FontTool& fontTool() override { throw Failure(RuntimeError::TypeMismatch); }
    };
    bind();
    screen().font.txtCharSet.setText("AB");
    const std::vector<std::pair<StepPtr, std::string>> steps = {
        {std::make_shared<Empty>(), "StepEditor_Step Err 13 Type mismatch"},
        {nullptr, "StepEditor_Step Err 91 Object variable or With block variable not set"}};
    for (const auto& [step, told] : steps) {
        EXPECT_NO_THROW(control.setStep(step)) << told;
        EXPECT_EQ(message(), told);
        EXPECT_EQ(control.step(), tool);
        EXPECT_TRUE(control.m_FontChanged());
    }
    include("A");
    EXPECT_EQ(message(), "1 samples included.");
}

TEST_F(BoundScreen, KeepsWhatTheHostSetsUntilItIsClosed) {
    auto root = std::make_shared<RecordingTool>();
    const std::weak_ptr<RecordingTool> watched = root;
    control.setRootStep(std::exchange(root, nullptr));
    EXPECT_FALSE(watched.expired());
    control.setReadOnly(true);
    EXPECT_TRUE(control.readOnly());
    control.UserControl_Terminate();
    EXPECT_TRUE(watched.expired()) << "a host's object must not be held by a page that is gone";
}

TEST_F(BoundScreen, LoadsTheFontOfTheLowestBitAndFillsTheScreen) {
    tool->fonts = {"a", "b", "c"};
    tool->data["SelFont"] = 6;
    tool->characterSet = {"X", "Y"};
    tool->addCommitted("X", {0.1});
    platform.fileDates[jobs.folder().fontFile("b")] = "1/2/2026 3:04 PM";
    control.setStep(tool);
    EXPECT_EQ(tool->currentFont + control.selectedFont(), "bb");
    EXPECT_EQ(screen().font.txtCharSet.text(), "XY");
    EXPECT_FALSE(screen().font.txtCharSet.locked());
    EXPECT_FALSE(control.m_FontChanged());
    EXPECT_THAT(tool->changes(), ElementsAre("SetTrainTimeout(60)", "LoadFont(b)"));
    EXPECT_TRUE(screen().sample.cmdInclude.enabled() && screen().train.cmdTrain.enabled());
    EXPECT_TRUE(screen().numeric.grid.redraw());
    EXPECT_EQ(screen().font.lblFontDateTime.caption(), "Not trained. Created 1/2/2026 3:04 PM");
    EXPECT_EQ(cell("X").backColor(), rgb(255, 255, 255));
}

TEST_F(BoundScreen, WithoutASelectedFontShowsNoneAndOffersNeitherIncludeNorLearn) {
    for (const double mask : {0.0, -1.0}) {
        tool->data["SelFont"] = mask;
        control.setStep(tool);
        EXPECT_EQ(screen().font.lblSelectedFont.caption() + control.selectedFont(), "<None>");
        EXPECT_FALSE(screen().sample.cmdInclude.enabled() || screen().train.cmdTrain.enabled());
        EXPECT_FALSE(screen().numeric.grid.redraw());
    }
    tool->trained = {{"A", 1, {}}};
    toolButton("Array").press();
    EXPECT_EQ(message(), "tlbChars_ButtonClick Err 9 Subscript out of range");
    EXPECT_TRUE(platform.open.empty()) << "the tool's characters are not the font's";
    DravikDlg other(platform, jobs.folder());
    tool->failAt("GetCharacterSet", 70, "Permission denied");
    other.setStep(tool);
    EXPECT_FALSE(other.screen().train.cmdTrain.enabled()) << "whatever fails behind it";
}

TEST_F(BoundScreen, AFailureWhileFillingIsReportedAndLeavesWhatWasDone) {
    tool->data["SelFont"] = 2;  // the list has one font
    control.setStep(tool);
    EXPECT_EQ(message(), "FillItems Err 9 Subscript out of range");
    tool->data["SelFont"] = 40000;
    DravikDlg other(platform, jobs.folder());
    other.setStep(tool);
    EXPECT_EQ(other.screen().sbr.panel("Message").text(), "FillItems Err 6 Overflow");
    EXPECT_EQ(other.screen().train.cboTimeout.text(), "1 minute");
}

TEST_F(BoundScreen, NothingOfTheFirstStepActsOnTheSecond) {
    bind();
    include("AB");
    tool->train();
    rightClick("A", "mnuMainFontHist");
    screen().train.cmdTrain.press();
    auto second = std::make_shared<RecordingTool>();
    second->fonts = {"ocrb"};
    second->characterSet = {"A", "C"};
    second->addCommitted("A", {0.1, 0.2, 0.3});
    control.setStep(second);
    EXPECT_EQ(control.step(), second);
    EXPECT_FALSE(control.m_FontChanged());
    second->calls.clear();
    toolButton("Undo").press();
    EXPECT_EQ(second->committed.size(), 3u);
    EXPECT_TRUE(platform.open.empty()) << "a histogram of the first step's font";

    // The same step once more is no other one.
    include("C");
    EXPECT_TRUE(toolButton("Undo").enabled());
    control.setStep(second);
    EXPECT_TRUE(toolButton("Undo").enabled());
}

TEST_F(BoundScreen, AFontThatCannotBeLoadedIsNotTheSelectedOne) {
    tool->failAt("LoadFont", 57, "damaged");
    control.setStep(tool);
    EXPECT_EQ(message(), "FillItems Err 57 damaged");
    EXPECT_EQ(control.selectedFont(), "");
    platform.modalHandlers["dlgFontManager"] = [](Form& manager) { manager.defaultButton->press(); };
    tool->succeedAt("LoadFont");
    screen().font.cmdSelectFont.press();
    EXPECT_EQ(control.selectedFont(), "ocrb");
}

TEST_F(BoundScreen, WhatAHostSetsAndWhatTheOperatorSwitchesIsTraced) {
    bind();
    toolButton("Log").press();
    control.setReadOnly(true);
    control.readOnly();
    control.setRootStep(tool);
    control.step();
    toolButton("Numeric").press();
    screen().numeric.cboDisplay.setListIndex(kDisplayStatistics);
    cell("A").mouseMove({0, 0, 1, 1});
    tool->failAt("RevertFont", 75, "first\r\nsecond\tthird");
    screen().train.cmdRevert.setEnabled(true);
    screen().train.cmdRevert.press();
    EXPECT_THAT(jobs.entries(),
                testing::ElementsAre("Dravikdlg.StepEditor_ReadOnly", "Dravikdlg.StepEditor_ReadOnly",
                                     "Dravikdlg.StepEditor_RootStep", "Dravikdlg.StepEditor_Step",
                                     "DravikDlg.tlbChars_ButtonClick('Numeric')",
                                     "Dravikdlg.SetGraphicalView", "Dravikdlg.cboDisplay_Click",
                                     "Dravikdlg.FillSamplesArray", "Dravikdlg.lblChar_MouseMove",
                                     "Dravikdlg.NumberTrained", "Dravikdlg.cmdRevert_Click",
                                     "# Dravikdlg error: Revert Err 75 first  second third"));

    DravikDlg other(platform, jobs.folder());
    EXPECT_TRUE(other.screen().overview.tlbChars.button("Log").pressed()) << "its thread goes on logging";
    EXPECT_THAT(jobs.entries(), Contains("Dravikdlg.InitColorKey"));
}

TEST_F(BoundScreen, ClosingAsksOnlyForAChangedFontAndSavesOnYes) {
    bind();
    screen().font.txtCharSet.setText("AB");
    platform.boxAnswers = {Answer::Yes};
    control.UserControl_Terminate();
    ASSERT_THAT(platform.told(), ElementsAre("Font Changed: The font has changed since it was last saved.\r\r"
                                             "Save changes?"));
    EXPECT_EQ(platform.boxes[0].buttons, MessageBox::Buttons::YesNo);
    EXPECT_EQ(tool->count("SaveFont(ocrb)"), 1);
    control.UserControl_Terminate();
    EXPECT_EQ(platform.boxes.size(), 1u);

    DravikDlg declined(platform, jobs.folder());
    declined.setStep(tool);
    declined.screen().font.txtCharSet.setText("ABCD");
    platform.boxAnswers = {Answer::No};
    declined.UserControl_Terminate();
    EXPECT_EQ(tool->count("SaveFont(ocrb)"), 1);

    DravikDlg failing(platform, jobs.folder());
    failing.setStep(tool);
    failing.screen().font.txtCharSet.setText("A");
    tool->failAt("SaveFont", 61, "Disk full");
    platform.boxAnswers = {Answer::Yes, Answer::Ok};
    failing.UserControl_Terminate();
    EXPECT_EQ(platform.told().back(), "Error in UserControl_Terminate: 61 Disk full");
}

}  // namespace
}  // namespace dravik::test
