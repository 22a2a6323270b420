// What text an image gets, as the operator meets it: proposals, the way through what is doubtful, and what
// keeps a wrong label out of the font.
#include "trainer/Labelling.h"

#include "trainer/support/TrainerFixture.h"

namespace dravik::test {
namespace {

// Digits of dot print are read without a font, and surely with one.
class LabellingTest : public TrainerFixture {
  protected:
    LabellingTest() {
        EXPECT_EQ(workspace.learnDigits("digits").status, 0);
        choose("digits");
    }
    void open(std::initializer_list<const char*> texts) {
        std::vector<std::string> images;
        for (const char* one : texts) images.push_back(workspace.draw(std::string(one) + ".pgm", one));
        window->open(images);
    }
    int current() { return trainer->parts().current(); }
    std::string labelOf(int image) {
        return trainer->labelling().labels().text(trainer->parts().path(image)).value_or("");
    }
    // As in the gallery, the sample at a place of the font.
    GalleryForm& chooseSample(std::size_t place) {
        const auto all = trainer->tool().samples(SampleKind::Committed);
        GalleryForm& gallery = window->gallery;
        gallery.setShown(true);
        gallery.show({ShownSamples::Kind::Numbers, 0, 0, 0, {all->samples.at(place)->serial}});
        gallery.pictures.choose(0, 0);
        return gallery;
    }
    PartState stateOf(int image) { return trainer->labelling().state(trainer->parts().path(image)); }
    // What the operator does when he is asked whether a text is right.
    void answerQuestion(const char* button) {
        platform.script("includeQuestion", [this, button](Form& form) {
            questions.push_back(in<Label>(form, "lblFound(0)").caption());
            press(form, {button});
        });
    }

    std::vector<std::string> questions;
};

// The same number of characters on every image, as labels of a fixed format have it: nothing else would
// notice a text that stayed.
TEST_F(LabellingTest, NoImageIsIncludedWithTheTextOfAnother) {
    const std::string before = labelsOfFont();
    open({"1234", "5678", "9012"});
    EXPECT_EQ(text(), "1234");
    EXPECT_EQ(box().selectionLength(), 32767) << "typing replaces it";
    enter();
    EXPECT_EQ(current(), 1) << "it goes on by itself";
    EXPECT_THAT(window->noticeText(),
                AllOf(HasSubstr("Included 1234.pgm: 1234"), Not(HasSubstr("last image"))));
    EXPECT_EQ(message(), "4 samples included.") << "not the count of a text that nobody has typed";
    enter();
    EXPECT_THAT(window->noticeText(), HasSubstr("Included 5678.pgm: 5678 \u2013 this is the last image"));
    window->actions.previous.trigger();
    EXPECT_EQ(text(), "5678") << "what it was included with";
    type("7777");
    box().select(4, 0);
    box().gotFocus();
    EXPECT_EQ(box().selectionLength(), 0) << "the operator goes on with what he types";
    window->actions.next.trigger();
    EXPECT_EQ(text(), "9012");
    enter();
    EXPECT_EQ(labelsOfFont(), before + "123456789012");
    EXPECT_THAT(window->noticeText(), HasSubstr("every image is included"));

    window->actions.closeAll.trigger();
    EXPECT_EQ(text(), "");
    box().edit("8 6\xE2\x80\x8B\r\n");
    EXPECT_EQ(text(), "86") << "what is pasted and not seen is no character";
    type("");
    window->open({workspace.write("text.pgm", "no image"), workspace.path("5678.pgm")});
    EXPECT_EQ(text(), "") << "of an image that cannot be decoded";
    EXPECT_EQ(stateOf(0), PartState::Failed);
    enter();
    EXPECT_EQ(current(), 0) << "the other one is included already";
    window->actions.next.trigger();
    EXPECT_EQ(text(), "7777") << "typed and not included before";
}

TEST_F(LabellingTest, EnterLeadsToEachCharacterInDoubtBeforeItIncludes) {
    open({"BEHL", "1234"});
    const int before = committed();
    const std::size_t doubts = trainer->labelling().doubts();
    ASSERT_GT(doubts, 0u) << "the font has figures alone";
    for (std::size_t i = 0; i < doubts; ++i) {
        enter();
        EXPECT_GE(trainer->labelling().pointedAt(), 0);
        EXPECT_EQ(box().selectionLength(), 1);
        EXPECT_THAT(window->noticeText(), HasSubstr("Enter takes it, typing replaces it"));
        EXPECT_EQ(committed(), before);
    }
    enter();
    ASSERT_EQ(platform.boxes.size(), 1u) << "now the screen asks whether the font is to have them";
    EXPECT_EQ(box().pasteFilter(" 12 3\r\n4\t"), "1234");
}

TEST_F(LabellingTest, ATypedCharacterThatLooksLikeAnotherIsPointedOutBeforeItIsIncluded) {
    const int before = committed();
    open({"1234"});
    type("1274");
    answerQuestion("CancelButton");
    enter();
    EXPECT_THAT(questions, ElementsAre("3rd character: typed 7, looks like 3"));
    EXPECT_EQ(committed(), before);
    EXPECT_EQ(trainer->labelling().pointedAt(), 2);
    EXPECT_EQ(box().selectionStart(), 2);
    EXPECT_EQ(box().selectionLength(), 1);
    EXPECT_FALSE(trainer->acts().isUnsaved()) << "the font is as it was";

    answerQuestion("cmdInclude");
    enter();
    EXPECT_EQ(questions.size(), 2u);
    EXPECT_EQ(committed(), before + 4) << "the operator knows better";
}

TEST_F(LabellingTest, AnImageIsIncludedOnceUnlessTheOperatorWantsItTwice) {
    open({"1234", "56"});
    window->open({workspace.draw("copy.pgm", "1234")});
    enter();
    EXPECT_EQ(stateOf(0), PartState::Included);
    EXPECT_EQ(stateOf(1), PartState::New);
    const int once = committed();
    answerQuestion("CancelButton");
    trainer->parts().setCurrent(0);
    enter();
    EXPECT_THAT(questions, ElementsAre("This image is included in the font digits already."));
    type("5678");
    enter();
    EXPECT_EQ(labelOf(0), "1234") << "what he has typed is the text of another image";
    trainer->parts().setCurrent(2);
    enter();
    EXPECT_THAT(questions, Contains(HasSubstr("1234.pgm, is included")));
    EXPECT_EQ(committed(), once);
    EXPECT_EQ(stateOf(2), PartState::New);

    window->actions.undo.trigger();
    EXPECT_EQ(stateOf(0), PartState::New);
    trainer->parts().setCurrent(1);
    type("567");
    platform.boxes.clear();
    enter();
    EXPECT_EQ(stateOf(1), PartState::Refused);
    EXPECT_FALSE(platform.boxes.empty()) << "the screen's own box about the counts";
    EXPECT_EQ(current(), 1);
}

TEST_F(LabellingTest, LabelsAreThereAgainWithoutTheFont) {
    open({"1234", "5678"});
    type("1234");
    enter();
    const std::string list = workspace.write("list.tsv", "5678.pgm\t56 78\nabsent.pgm\t9\n");
    start();
    EXPECT_EQ(trainer->labelling().openLabels(list), 2u);
    choose("digits");
    open({"1234", "5678"});
    EXPECT_EQ(text(), "1234");
    EXPECT_TRUE(trainer->labelling().doubts() == 0 && !trainer->labelling().isProposed());
    window->actions.next.trigger();
    EXPECT_EQ(text(), "5678");
    const auto read =
        workspace.run({"learn", "--font", "again", "--samples", JobFolder(workspace.jobs()).labelsFile()});
    EXPECT_THAT(read.out, testing::Contains(HasSubstr("included 4\t"))) << "as a list of samples";
}

// Where a wrong label is corrected in the font alone, it comes back with its image.
TEST_F(LabellingTest, ALabelIsCorrectedWithTheSamplesOfItsImage) {
    const std::size_t first = labelsOfFont().size();
    open({"1234", "5678", "3333"});
    answerQuestion("cmdInclude");
    for (const char* typed : {"1274", "5678", "3333"}) {
        type(typed);
        enter();
    }
    trainer->parts().setCurrent(0);
    EXPECT_EQ(text(), "1274");
    chooseSample(first + 2).pictures.typed("3");
    EXPECT_EQ(labelsOfFont().substr(first), "123456783333");
    EXPECT_EQ(labelOf(0), "1234");
    EXPECT_EQ(text(), "1234") << "of the image that is shown";
    trainer->acts().undo();
    EXPECT_EQ(labelOf(0), "1274");
    trainer->acts().redo();

    chooseSample(first + 4).cmdDelete.press();
    chooseSample(first + 6).pictures.typed("9");
    EXPECT_EQ(labelOf(1), "5679") << "the sample of the 5 is gone";
    chooseSample(first + 7).cmdDelete.press();
    chooseSample(first + 7).pictures.typed("8");
    EXPECT_EQ(labelsOfFont().substr(first), "1234679833");
    EXPECT_EQ(labelOf(2), "3333") << "it may be any of them";

    answerQuestion("CancelButton");
    trainer->parts().setCurrent(1);
    type("5678");
    enter();
    EXPECT_EQ(labelOf(1), "5678") << "without including it once more";
    EXPECT_THAT(window->noticeText(), HasSubstr("is 5678 now"));
}

TEST_F(LabellingTest, AllLabelledImagesAreIncludedAndTheRefusedOnesListed) {
    open({"1234", "5678", "90", "12"});
    system.chosen = {workspace.write("list.tsv", "1234.pgm\t1234\n5678.pgm\t5678\n90.pgm\t9\n12.pgm\t72\n")};
    window->actions.openLabels.trigger();
    const int before = committed();
    std::vector<std::string> refused;
    platform.script("refusedForm", [&](Form& form) {
        refused = in<ListBox>(form, "lbRefused").items();
        press(form, {"cmdOpen"});
    });
    window->actions.includeLabelled.trigger();
    for (Timer* timer : window->timers())
        if (timer->name() == "tmrBatch") runTimer(*timer);
    EXPECT_THAT(refused, testing::ElementsAre("90.pgm: 2 characters found, 1 in the text",
                                              "12.pgm: 1st character: typed 7, looks like 1"));
    EXPECT_EQ(committed(), before + 8);
    EXPECT_EQ(trainer->parts().name(current()), "90.pgm") << "opened for correction";
    EXPECT_THAT(window->noticeText(), HasSubstr("Included 2 of 4 labelled images, refused 2"));
    EXPECT_TRUE(platform.boxes.empty());
    system.newFile = workspace.path("saved.tsv");
    window->actions.saveLabels.trigger();
    EXPECT_EQ(Workspace::content(system.newFile), "1234.pgm\t1234\n5678.pgm\t5678\n90.pgm\t9\n12.pgm\t72\n");
}

// Proposed characters count as the operator's as soon as he has typed over them, wherever he typed.
TEST(ProposedText, DoubtsFollowTheCharactersThatAreLeftOfTheProposal) {
    ProposedText text;
    text.setProposal(
        {{"L", 1, ""}, {"0", 0.5, "0 or O"}, {"T", 1, ""}, {"8", 0.6, "8 or B"}, {"8", 0.6, "8 or B"}});
    EXPECT_EQ(text.nextDoubt(), 1u);
    text.setTyped("LOT88");
    EXPECT_EQ(text.nextDoubt(), 3u);
    text.accept(3);
    EXPECT_EQ(text.nextDoubt(), 4u);
    text.setTyped("LOTX88");
    EXPECT_EQ(text.nextDoubt(), std::nullopt) << "it stands at another place than it was proposed for";
    text.setTyped("LOT88");
    EXPECT_EQ(text.nextDoubt(), 4u);
    for (const char* typed : {"", "L", "LO", "LOT", "LOT8", "LOT88"}) text.setTyped(typed);
    EXPECT_EQ(text.nextDoubt(), std::nullopt) << "all of it was typed";
}

TEST(TextFormats, DecidesBetweenLookAlikesAndNotAgainstAClearShape) {
    TextFormats format;
    const auto proposed = [&](double first, double second) {
        CharacterCandidates one;
        one.candidates = {{"O", first}, {"0", second}};
        std::string text;
        for (const auto& character : propose(std::vector(4, one), format)) text += character.character;
        return text;
    };
    EXPECT_EQ(proposed(0.6, 0.4), "OOOO");
    for (const char* text : {"LT12", "LT87", "LT55"}) format.add(text);
    EXPECT_EQ(proposed(0.6, 0.4), "OO00");
    EXPECT_EQ(proposed(0.9999, 0.0001), "OOOO");
    EXPECT_TRUE(propose({}, format).empty());
}

}  // namespace
}  // namespace dravik::test
