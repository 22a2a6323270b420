#include "trainer/Trainer.h"

#include "trainer/support/TrainerFixture.h"

namespace dravik::test {
namespace {

class TrainerTest : public TrainerFixture {
  protected:
    // Select Font takes the first one unless a test does something else in the manager.
    TrainerTest() {
        platform.script("dlgFontManager", [](Form& form) {
            in<ListBox>(form, "lbFonts").setListIndex(0);
            press(form, {"OKButton"});
        });
    }

    std::string readText() const {
        std::string text;
        for (const auto& line : trainer->reading().lines) {
            for (const auto& character : line) text += character.character;
            text += '|';
        }
        return text;
    }
};

TEST_F(TrainerTest, ThePreviewShowsWhatIncludeWouldLabel) {
    EXPECT_EQ(trainer->previewText(), "No image is open");
    trainer->parts().open({workspace.draw("part.pgm", "123\n45")});
    type("");
    EXPECT_EQ(labels(), "_____");
    EXPECT_EQ(trainer->preview()[3].place.line, 1);
    EXPECT_EQ(trainer->mismatch(), 0);
    EXPECT_EQ(trainer->previewText(), "5 characters found");

    int changes = 0;
    trainer->previewChanged.subscribe([&] { ++changes; });
    type("  123 ");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(labels(), "123__");
    EXPECT_EQ(window->previewText(), "\u26A0 5 characters found, 3 typed");
    EXPECT_EQ(window->viewDescription(), "5 characters found, 3 typed") << "without the sign";
    type("12 345");
    EXPECT_EQ(labels(), "12 34") << "a blank inside the text counts";
    EXPECT_EQ(trainer->mismatch(), 1);
    type("\u00E92345");
    EXPECT_EQ(trainer->mismatch(), 0) << "characters are counted, not bytes";
    EXPECT_EQ(trainer->preview()[0].label, "\u00E9");
}

TEST_F(TrainerTest, WithoutAnImageOrATrainedFontTheReadingSaysWhy) {
    EXPECT_EQ(trainer->reading().note, "No image is open");
    trainer->parts().open({workspace.draw("part.pgm", "12")});
    EXPECT_EQ(trainer->reading().note, "No font is selected");
    EXPECT_FALSE(trainer->reading().available);
    trainer->parts().open({workspace.write("text.png", "this is a text")});
    trainer->parts().next();
    EXPECT_THAT(trainer->reading().note, HasSubstr("text.png: is not a grey image"));
    EXPECT_THAT(trainer->previewText(), HasSubstr("text.png: is not a grey image"));
    EXPECT_TRUE(trainer->preview().empty()) << "the characters of the part before are gone";
    EXPECT_EQ(trainer->title(), "Dravik Trainer");
}

TEST_F(TrainerTest, TheReadingFollowsTheImageTheFontAndTheTraining) {
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    trainer->parts().open({workspace.draw("a.pgm", "123\n45"), workspace.draw("b.pgm", "6789")});
    screen().font.cmdSelectFont.press();
    EXPECT_EQ(trainer->title(), "digits - Dravik Trainer");
    EXPECT_TRUE(trainer->reading().available);
    EXPECT_EQ(readText(), "123|45|");
    trainer->parts().next();
    EXPECT_EQ(readText(), "6789|");

    type("6789");
    enter();
    EXPECT_EQ(trainer->title(), "digits* - Dravik Trainer");

    screen().train.cmdTrain.press();
    EXPECT_EQ(trainer->reading().note, "The font is being trained");
    trainer->parts().previous();
    EXPECT_EQ(trainer->preview().size(), 5U) << "parts can be looked at meanwhile";
    EXPECT_EQ(trainer->checkText(), "");
    runTimer(screen().train.tmrTrain);
    EXPECT_EQ(readText(), "123|45|");
    runTimer(trainer->checkTimer());
    EXPECT_THAT(trainer->checkText(), StartsWith("Held-out check (4-fold): "));
    screen().train.cmdSaveFont.press();
    EXPECT_EQ(trainer->title(), "digits - Dravik Trainer");
    EXPECT_EQ(readText(), "123|45|");
}

// The window goes on while an image is decoded and searched; what is chosen meanwhile is what counts.
TEST_F(TrainerTest, AnImageThatTakesLongHoldsIncludeAloneAndCanBeStopped) {
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    std::atomic<bool> goesOn = false;
    Trainer patient(
        platform, JobFolder(workspace.jobs()),
        [&goesOn](const std::string& path) {
            while (path.ends_with("slow.pgm") && !goesOn) std::this_thread::yield();
            return readPgm(path);
        },
        false);
    patient.setPatience(std::chrono::milliseconds(0));
    Button& include = patient.control().screen().sample.cmdInclude;
    Button& select = patient.control().screen().font.cmdSelectFont;
    select.press();
    EXPECT_FALSE(include.enabled()) << "there is no image";

    patient.parts().open({workspace.draw("slow.pgm", "12"), workspace.draw("quick.pgm", "345")});
    EXPECT_TRUE(patient.isLooking());
    EXPECT_EQ(patient.previewText(), "Looking for characters...");
    EXPECT_FALSE(include.enabled());
    select.press();
    EXPECT_FALSE(include.enabled()) << "the screen has enabled it for the font meanwhile";
    patient.parts().next();
    goesOn = true;
    runTimer(patient.workTimer());
    EXPECT_EQ(patient.previewText(), "3 characters found, text proposed")
        << "of the image that was chosen last";
    EXPECT_THAT(patient.reading().lines, ElementsAre(testing::SizeIs(3)));
    EXPECT_TRUE(include.enabled());

    goesOn = false;
    workspace.draw("slow.pgm", "6789");  // what was decoded of it before counts no more
    patient.parts().previous();
    patient.stopWorking();
    EXPECT_EQ(patient.previewText(), "Stopped before the image was decoded");
    EXPECT_FALSE(patient.isWorking());
    goesOn = true;
    patient.lookAgain();
    runTimer(patient.workTimer());
    EXPECT_EQ(patient.previewText(), "4 characters found, text proposed");
}

}  // namespace
}  // namespace dravik::test
