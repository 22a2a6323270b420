// Undo, unsaved changes and older versions as the operator meets them: the trainer's window on the embedded
// tool, without a window system.
#include "trainer/FontActs.h"

#include "trainer/support/TrainerFixture.h"

namespace dravik::test {
namespace {

class FontActsTest : public TrainerFixture {
  protected:
    FontActsTest() : TrainerFixture(true) {
        EXPECT_EQ(workspace.learnDigits("digits").status, 0);
        std::filesystem::copy_file(toPath(workspace.fontFile("digits")), toPath(workspace.fontFile("other")));
        platform.script("closingForm", [this](Form& form) {
            unsavedAtEnd = in<ListBox>(form, "lbFonts").items();
            form.cancelButton->press();
        });
        start();
    }
    void setWritable(const char* font, bool isWritable) {
        using std::filesystem::perm_options;
        std::filesystem::permissions(workspace.fontFile(font), std::filesystem::perms::owner_write,
                                     isWritable ? perm_options::add : perm_options::remove);
    }
    ToolButton& undoButton() { return screen().overview.tlbChars.button("Undo"); }

    std::vector<std::string> unsavedAtEnd;
};

TEST_F(FontActsTest, IncludesAndDeletionsGoBackAndForthWithTheScreen) {
    choose("other");
    const int before = committed();
    EXPECT_FALSE(window->actions.undo.enabled());

    include("86");
    EXPECT_EQ(window->title(), "other* - Dravik Trainer");
    EXPECT_EQ(window->actions.undo.text(), "&Undo include of 86");
    EXPECT_TRUE(undoButton().enabled());
    window->actions.undo.trigger();
    EXPECT_EQ(committed(), before);
    EXPECT_EQ(window->title(), "other - Dravik Trainer") << "include and undo leave the font as its file is";
    EXPECT_FALSE(undoButton().enabled()) << "the screen's own Undo would delete samples of the font itself";
    EXPECT_FALSE(trainer->control().m_FontChanged());
    EXPECT_EQ(window->noticeText(), "Undone: include of 86");
    window->actions.redo.trigger();
    EXPECT_EQ(committed(), before + 2);
    EXPECT_TRUE(undoButton().enabled());
    EXPECT_FALSE(window->actions.redo.enabled());

    trainer->control().DeleteSamplesByDistance("3", 0, 1);
    EXPECT_THAT(window->noticeText(), HasSubstr("Deleted 3, 3")) << "what a deletion took is told";
    EXPECT_THAT(window->actions.undo.text(), HasSubstr("of 3"));
    const int left = committed();
    window->actions.undo.trigger();
    EXPECT_GT(committed(), left);
    window->actions.undo.trigger();
    EXPECT_EQ(committed(), before);
}

// Colours of cells, figures of a run and marks are of what was done to the font, not of what the operator did
// meanwhile or to another font.
TEST_F(FontActsTest, TheScreenShowsWhatIsTrueOfTheFont) {
    const auto isMarked = [this](const char* character) {
        const auto& cells = screen().overview.lblChar;
        return (*std::find_if(cells.begin(), cells.end(), [&](const auto& cell) {
                   return cell->caption() == character;
               }))->backColor() == kIncludedColor;
    };
    const auto& train = screen().train;
    choose("digits");
    include("86");
    EXPECT_TRUE(isMarked("8") && isMarked("6"));
    screen().train.cmdTrain.press();
    runTimer(screen().train.tmrTrain);
    EXPECT_EQ(train.prgTrain.value(), 100);
    window->actions.undo.trigger();
    EXPECT_EQ(train.prgTrain.value(), 0);
    EXPECT_EQ(message(), "") << "what was said of the include stands beside what is said of the undo";
    window->actions.redo.trigger();
    EXPECT_EQ(train.prgTrain.value(), 100);
    EXPECT_THAT(train.lblStatus.caption(), StartsWith("Cycles: "));
    screen().train.cmdSaveFont.press();
    EXPECT_FALSE(isMarked("8"));
    // The screen's own Undo takes the character back that the include has brought, as Edit > Undo does.
    const std::string set = screen().font.txtCharSet.text();
    draw("A1");
    type("A1");
    EXPECT_EQ(trainer->includeAsLabelled(), "");
    EXPECT_EQ(screen().font.txtCharSet.text(), set + "A");
    EXPECT_FALSE(window->actions.undo.text().empty());
    undoButton().press();
    EXPECT_EQ(screen().font.txtCharSet.text(), set);
    EXPECT_THAT(window->noticeText(), StartsWith("Undone: include of A1"));
    window->actions.undo.trigger();
    EXPECT_EQ(screen().font.txtCharSet.text(), set + "A");

    const std::string part = trainer->parts().path(trainer->parts().current());
    draw("45");
    type("456");
    enter();
    const std::string refused = trainer->parts().path(trainer->parts().current());
    EXPECT_EQ(trainer->labelling().state(refused), PartState::Refused);
    choose("other");
    EXPECT_EQ(train.lblStatus.caption(), "");
    EXPECT_EQ(trainer->labelling().state(refused), PartState::New);
    EXPECT_EQ(trainer->labelling().state(part), PartState::New);
    choose("digits");
    EXPECT_EQ(trainer->labelling().state(refused), PartState::Refused);
    EXPECT_EQ(trainer->labelling().state(part), PartState::Included);
}

TEST_F(FontActsTest, TheStarIsOfTheFontShownAndTheEndNamesEveryOther) {
    choose("digits");
    include("86");
    choose("digits");
    EXPECT_EQ(window->title(), "digits* - Dravik Trainer") << "it is the one that is shown";
    choose("other");
    EXPECT_EQ(window->title(), "other - Dravik Trainer");
    EXPECT_FALSE(window->close());
    EXPECT_FALSE(window->hasEnded()) << "Escape stays";
    EXPECT_THAT(unsavedAtEnd, ElementsAre("digits"));
    EXPECT_EQ(window->title(), "other - Dravik Trainer");

    include("45");
    platform.script("closingForm", [](Form& form) { form.defaultButton->press(); });
    platform.boxes.clear();
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(window->hasEnded());
    EXPECT_THAT(platform.boxes, IsEmpty()) << "the screen's own question is not asked";
    EXPECT_EQ(trainer->tool().summary("digits").samples, trainer->tool().summary("other").samples);
    start();
    EXPECT_THAT(window->problems(), IsEmpty());
    EXPECT_TRUE(window->actions.undo.enabled()) << "also after a save and another start";
}

TEST_F(FontActsTest, ASaveThatFailsAtTheEndOffersAnotherPlaceAndKeepForLater) {
    for (const char* font : {"digits", "other"}) {
        choose(font);
        include("86");
    }
    const int before = trainer->tool().summary("other").samples, now = committed();
    setWritable("other", false);
    system.newFile = workspace.jobs();  // a folder
    platform.script("closingForm", [&](Form& form) {
        const auto& fonts = in<ListBox>(form, "lbFonts");
        EXPECT_THAT(fonts.items(), ElementsAre("digits", "other"));
        EXPECT_FALSE(in<Button>(form, "cmdKeep").visible());
        press(form, {"cmdSaveAll"});
        EXPECT_THAT(fonts.items(), ElementsAre("other")) << "one that fails does not keep the others";
        EXPECT_THAT(platform.boxes.back().text, AllOf(StartsWith("other: "), HasSubstr("Keep for Later")));
        press(form, {"cmdSaveCopy"});
        EXPECT_EQ(platform.boxes.back().icon, MessageBox::Icon::Critical);
        system.newFile = workspace.path("copy.nnd");
        press(form, {"cmdSaveCopy"});
        EXPECT_TRUE(std::filesystem::exists(toPath(system.newFile)));
        EXPECT_TRUE(form.loaded()) << "the font's own file is still without the changes";
        press(form, {"cmdKeep"});
    });
    EXPECT_TRUE(window->close()) << "a disk that fails is no reason to stay";
    EXPECT_EQ(trainer->tool().summary("other").samples, before);
    setWritable("other", true);
    start();
    choose("other");
    EXPECT_EQ(committed(), now);
    platform.script("closingForm", [](Form& form) { press(form, {"cmdDiscard"}); });
    EXPECT_TRUE(window->close());
    EXPECT_EQ(trainer->tool().summary("other").samples, before);
}

TEST_F(FontActsTest, SaveAndSaveCopyNeedNoLearnAndNothingIsADeadEnd) {
    choose("digits");
    EXPECT_FALSE(window->actions.fontSave.enabled());
    const int before = trainer->tool().summary("digits").samples;
    include("86");
    EXPECT_FALSE(screen().train.cmdSaveFont.enabled());
    ASSERT_TRUE(window->actions.fontSave.enabled());
    window->actions.fontSave.trigger();
    EXPECT_EQ(trainer->tool().summary("digits").samples, before + 2);
    EXPECT_EQ(window->title(), "digits - Dravik Trainer");
    EXPECT_FALSE(trainer->control().m_FontChanged());
    EXPECT_EQ(window->noticeText(), "Saved digits");

    system.newFile = workspace.jobs() + "/copy.nnd";
    window->actions.fontSaveCopy.trigger();
    EXPECT_TRUE(std::filesystem::exists(toPath(system.newFile)));

    // A run has ended, and its file is gone: neither Save nor Revert need go.
    screen().train.cmdTrain.press();
    EXPECT_FALSE(window->actions.undo.enabled()) << "not during a run";
    EXPECT_FALSE(window->actions.fontSelect.enabled());
    EXPECT_FALSE(window->actions.fontRestore.enabled());
    platform.script("closingForm", [](Form& form) {
        EXPECT_TRUE(in<Label>(form, "lblTraining").visible());
        form.cancelButton->press();
    });
    EXPECT_FALSE(window->close());
    runTimer(screen().train.tmrTrain);
    EXPECT_FALSE(screen().font.cmdSelectFont.enabled());
    choose("other");
    EXPECT_EQ(trainer->control().selectedFont(), "other");
    EXPECT_TRUE(screen().sample.cmdInclude.enabled());
    EXPECT_TRUE(screen().sample.txtSampleInput.enabled());
    EXPECT_THAT(trainer->history().unsavedFonts(), ElementsAre("digits")) << "what was learnt is kept";
}

TEST_F(FontActsTest, AProgramThatDiesLosesNothingAndSaysWhatIsThereAgain) {
    choose("digits");
    const int before = committed();
    include("86");
    include("45");
    platform.boxes.clear();
    start();
    EXPECT_THAT(platform.boxes, IsEmpty()) << "the window asks before; this one was just let go";
    EXPECT_EQ(committed(), before + 4);
    window->open({workspace.path("gone.pgm")});
    EXPECT_THAT(window->problems(), ElementsAre(HasSubstr("digits: 2 changes of "), HasSubstr("gone.pgm")));
    window->open({workspace.path("86.pgm")});
    EXPECT_THAT(window->problems(), ElementsAre(HasSubstr("digits: 2 changes of ")))
        << "what could not be opened before is over";
    EXPECT_EQ(window->title(), "digits* - Dravik Trainer");
    EXPECT_EQ(window->actions.undo.text(), "&Undo include of 45");
    window->actions.undo.trigger();
    EXPECT_EQ(committed(), before + 2);
}

TEST_F(FontActsTest, ADeletedFontComesBackByUndoAndByRestore) {
    choose("digits");
    const int samples = committed();
    manager([](Form& form) { press(form, {"cmdDeleteFont"}); });
    EXPECT_EQ(window->title(), "Dravik Trainer");
    ASSERT_TRUE(window->actions.undo.enabled());
    EXPECT_THAT(window->actions.undo.text(), HasSubstr("digits"));
    window->actions.undo.trigger();
    EXPECT_EQ(window->title(), "digits - Dravik Trainer");
    EXPECT_EQ(committed(), samples);

    manager([](Form& form) { press(form, {"cmdDeleteFont"}); });
    platform.script("restoreForm", [](Form& form) {
        EXPECT_THAT(in<ListBox>(form, "lbVersions").items()[0], HasSubstr("(deleted)"));
        in<TextBox>(form, "txtName").setText("again");
        form.defaultButton->press();
    });
    window->actions.fontRestore.trigger();
    EXPECT_EQ(window->title(), "again - Dravik Trainer");
    EXPECT_EQ(committed(), samples);
    EXPECT_THAT(window->noticeText(), HasSubstr("Restored again"));
}

TEST_F(FontActsTest, ADamagedRememberedFontIsNotShownAsLoaded) {
    choose("digits");
    window.reset();
    trainer.reset();
    workspace.write("jobs/Fonts/digits.nnd", "no font");
    start();
    EXPECT_EQ(window->title(), "Dravik Trainer");
    EXPECT_FALSE(window->actions.undo.enabled());
    EXPECT_FALSE(window->actions.fontSave.enabled());
    EXPECT_TRUE(window->close());
}

}  // namespace
}  // namespace dravik::test
