// A font file that is opened as images are: by a double click, a drop, the command line.

#include "trainer/FontOpening.h"
#include "trainer/support/TrainerFixture.h"

namespace dravik::test {
namespace {

TEST(FontOpening, ShowsAFontOfTheFolderAndCopiesAnotherOneOnlyAsTheOperatorWants) {
    Workspace workspace;
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    const std::string inside = workspace.fontFile("digits"), outside = workspace.path("digits.nnd");
    const std::string saved = Workspace::content(inside);
    std::filesystem::copy_file(toPath(inside), toPath(outside));
    ScriptedPlatform platform;
    Trainer trainer(platform, JobFolder(workspace.jobs()), readPgm, false);
    const auto open = [&](const std::string& path) { return openFontFile(trainer, platform, path); };
    const auto shown = [&] {
        return trainer.control().selectedFont() + "/" + trainer.tool().currentFont().value_or("");
    };

    EXPECT_TRUE(isFontFile(outside));
    EXPECT_FALSE(isFontFile(workspace.draw("a.pgm", "1")));
    EXPECT_THAT(open(inside), ElementsAre());
    EXPECT_EQ(shown(), "digits/digits");

    // Its name is taken: nothing, beside it, in its place.
    trainer.tool().SetCharacterSet({"X"});
    trainer.tool().SaveFont("digits");
    const std::string changed = Workspace::content(inside);
    platform.boxAnswers = {Answer::Cancel, Answer::No, Answer::Yes};
    EXPECT_THAT(open(outside), ElementsAre());
    EXPECT_THAT(trainer.tool().GetFontList(), ElementsAre("digits"));
    EXPECT_THAT(open(outside), ElementsAre());
    EXPECT_EQ(shown(), "digits 2/digits 2");
    EXPECT_EQ(Workspace::content(inside), changed);
    EXPECT_THAT(open(outside), ElementsAre());
    EXPECT_EQ(shown(), "digits/digits");
    EXPECT_THAT(trainer.tool().GetCharacterSet(), testing::SizeIs(10)) << "those of the file";
    EXPECT_FALSE(trainer.history().versions("digits").empty()) << "what was replaced can be had back";
    EXPECT_EQ(Workspace::content(outside), saved) << "the file that was opened stays as it is";

    std::filesystem::rename(toPath(outside), toPath(workspace.path("fresh.nnd")));
    platform.boxAnswers = {Answer::Yes};
    open(workspace.path("fresh.nnd"));
    EXPECT_EQ(shown(), "fresh/fresh");

    platform.boxAnswers = {Answer::Yes};
    EXPECT_THAT(open(workspace.write("damaged.nnd", "TLXFONT\n")),
                ElementsAre(HasSubstr("damaged.nnd: not opened: ")));
    EXPECT_THAT(open(workspace.path("absent.nnd")), ElementsAre(HasSubstr("absent.nnd: no such file")));
    EXPECT_EQ(shown(), "fresh/fresh");
    EXPECT_THAT(trainer.tool().GetFontList(), ElementsAre("digits", "digits 2", "fresh"));
}

}  // namespace
}  // namespace dravik::test
