// The program's window as a whole, in every window system: a font is made, taught, learnt, saved and reads,
// all through what the operator sees.

#include "OpenedProgram.h"
#include "drivers/ScriptedSession.h"

namespace dravik::test {
namespace {

using ProgramWindow = OpenedProgram;

const std::string kParts = DRAVIK_SOURCE_DIR "/data/parts/";
const std::string kLine = kParts + "rendered_lines/hack_000.png";

TEST_F(ProgramWindow, TeachesLearnsSavesAndReads) {
    std::ostringstream told;
    const std::string lesson = kParts + "rendered_charset/hack_00";
    ASSERT_NO_THROW(ScriptedSession(driver, trainer(), path(""), told)
                        .run({lesson + "0.png", lesson + "1.png", lesson + "2.png", kLine}))
        << told.str();
    EXPECT_EQ(text("reading"), "EXP2026/07/26");
    EXPECT_EQ(title(), "demo - Dravik Trainer");
    EXPECT_TRUE(std::filesystem::exists(toPath(path("Jobs/Fonts/demo.nnd"))));
    EXPECT_GT(std::filesystem::file_size(toPath(path("10-included.png"))), 10'000u);
    EXPECT_FALSE(canChoose("fontSave"));
    EXPECT_TRUE(canChoose("fontLearn"));

    // A changed font: the title says so, and closing asks. Cancel stays; what is discarded leaves the file as
    // it was.
    driver.type("txtSampleInput", "EXP2026/07/26");
    focus("txtSampleInput");
    press(Press::Enter);
    EXPECT_EQ(driver.message(), "13 samples included.");
    EXPECT_EQ(title(), "demo* - Dravik Trainer");
    EXPECT_FALSE(closes("CancelButton"));
    focus("txtSampleInput");
    press(Press::Undo);
    EXPECT_EQ(title(), "demo* - Dravik Trainer") << "it is the typing that it takes back there";
    focus("partView");
    press(Press::Undo);
    EXPECT_EQ(title(), "demo - Dravik Trainer");
    EXPECT_EQ(text("notice"), "Undone: include of 13 samples");
    choose("redo");
    EXPECT_TRUE(closes("cmdDiscard"));
    EXPECT_EQ(trainer().tool().summary("demo").samples, 3 * 74);
}

TEST_F(ProgramWindow, ImagesAreDroppedLeafedThroughAndClosed) {
    EXPECT_FALSE(canChoose("next"));
    drop(kParts + "rendered_lines");
    trainer::OpenedParts& parts = trainer().parts();
    ASSERT_EQ(parts.count(), 48);
    EXPECT_TRUE(text("partName").starts_with("1 of 48"));
    choose("previous");
    EXPECT_EQ(parts.current(), 0);
    choose("next");
    focus("partView");
    press(Press::PageDown);
    EXPECT_EQ(parts.current(), 2);
    clickThumbnail(1);
    EXPECT_EQ(parts.current(), 1);
    focus("txtSampleInput");
    press(Press::PageUp);
    EXPECT_EQ(parts.current(), 0);
    choose("closeImage");
    EXPECT_EQ(parts.count(), 47);
    choose("closeAll");
    EXPECT_EQ(parts.count(), 0);
    EXPECT_EQ(text("partName"), "");
    EXPECT_FALSE(canChoose("zoomIn"));
}

TEST_F(ProgramWindow, WhatCannotBeOpenedIsSaid) {
    std::ofstream(toPath(path("broken.png"))) << "no image";
    open({path("absent.png"), path("broken.png")});
    EXPECT_TRUE(isShown(kProblemText));
    EXPECT_NE(text(kProblemText).find("absent.png"), std::string::npos);
    EXPECT_NE(text("previewText").find("broken.png"), std::string::npos) << text("previewText");
    open({kLine});
    EXPECT_FALSE(isShown(kProblemText));
}

TEST_F(ProgramWindow, AMismatchIsVisibleBeforeInclude) {
    open({kLine});
    const auto warnings = [&] { return pixelsOfPart(0xD8, 0x43, 0x15); };
    EXPECT_TRUE(text("previewText").starts_with("13 characters found, text proposed")) << text("previewText");
    EXPECT_EQ(warnings(), 0);
    driver.type("txtSampleInput", "EXP2026/07/2");
    EXPECT_NE(text("previewText").find("13 characters found, 12 typed"), std::string::npos);
    EXPECT_GT(warnings(), 20);
    driver.type("txtSampleInput", "EXP2026/07/26");
    EXPECT_EQ(warnings(), 0);
    driver.type("txtSampleInput", "EXP2026/07/266");
    EXPECT_GT(warnings(), 20);
}

TEST_F(ProgramWindow, ASmallOneShowsEverythingThatMatters) {
    resize(1024, 720);
    open({kLine});
    for (const char* name : {"cmdSelectFont", "cmdInclude", "cmdRevert", "lblChar(73)", "sbr", "partView",
                             "reading", "thumbnails"})
        EXPECT_TRUE(isWhollySeen(name)) << name;
}

}  // namespace
}  // namespace dravik::test
