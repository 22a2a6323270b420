#include "trainer/Trainer.h"

#include <gmock/gmock.h>

#include "base/Failure.h"
#include "trainer/HeadlessPlatform.h"
#include "trainer/RunLoop.h"
#include "trainer/support/DrawnPart.h"
#include "trainer/support/Workspace.h"

namespace dravik::test {
namespace {

using testing::HasSubstr;

class TrainerTest : public testing::Test {
  protected:
    TrainerTest() {
        platform.script("dlgFontManager", [](Form& manager) {
            dynamic_cast<ListBox&>(*manager.find("lbFonts")).setListIndex(0);
            dynamic_cast<Button&>(*manager.find("OKButton")).press();
        });
    }

    std::string labels() const {
        std::string all;
        for (const auto& character : trainer.preview())
            all += character.label.empty() ? "_" : character.label;
        return all;
    }

    std::string readText() const {
        std::string text;
        for (const auto& line : trainer.reading().lines) {
            for (const auto& character : line) text += character.character;
            text += '|';
        }
        return text;
    }

    Screen& screen() { return trainer.control().screen(); }
    void type(const std::string& text) { screen().sample.txtSampleInput.setText(text); }

    Workspace workspace;
    HeadlessPlatform platform;
    Trainer trainer{platform, JobFolder(workspace.jobs()), readPgm, false};
};

TEST_F(TrainerTest, ThePreviewShowsWhatIncludeWouldLabel) {
    EXPECT_EQ(trainer.previewText(), "No image is open");
    trainer.parts().open({workspace.draw("part.pgm", "123\n45")});
    EXPECT_EQ(labels(), "_____");
    EXPECT_EQ(trainer.preview()[3].place.line, 1);
    EXPECT_EQ(trainer.mismatch(), 0);
    EXPECT_EQ(trainer.previewText(), "5 characters found");

    int changes = 0;
    trainer.previewChanged.subscribe([&] { ++changes; });
    type("  123 ");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(labels(), "123__");
    EXPECT_EQ(trainer.mismatch(), -2);
    EXPECT_EQ(trainer.previewText(), "5 characters found, 3 typed");
    type("12 345");
    EXPECT_EQ(labels(), "12 34") << "a blank inside the text counts";
    EXPECT_EQ(trainer.mismatch(), 1);
    type(
        "\xC3\xA9"
        "2345");
    EXPECT_EQ(trainer.mismatch(), 0) << "characters are counted, not bytes";
    EXPECT_EQ(trainer.preview()[0].label, "\xC3\xA9");
    type("   ");
    EXPECT_EQ(trainer.mismatch(), 0);
    EXPECT_EQ(trainer.previewText(), "5 characters found");
}

TEST_F(TrainerTest, WithoutAnImageOrATrainedFontTheReadingSaysWhy) {
    EXPECT_EQ(trainer.reading().note, "No image is open");
    trainer.parts().open({workspace.draw("part.pgm", "12")});
    EXPECT_EQ(trainer.reading().note, "No font is selected");
    EXPECT_FALSE(trainer.reading().available);
    trainer.parts().open({workspace.write("text.png", "this is a text")});
    trainer.parts().next();
    EXPECT_THAT(trainer.reading().note, HasSubstr("text.png: is not a grey image"));
    EXPECT_THAT(trainer.previewText(), HasSubstr("text.png: is not a grey image"));
    EXPECT_TRUE(trainer.preview().empty()) << "the characters of the part before are gone";
    EXPECT_EQ(trainer.title(), "Dravik Trainer");
}

TEST_F(TrainerTest, TheReadingFollowsTheImageTheFontAndTheTraining) {
    ASSERT_EQ(workspace.learnDigits("digits").status, 0);
    trainer.parts().open({workspace.draw("a.pgm", "123\n45"), workspace.draw("b.pgm", "6789")});
    int titles = 0;
    trainer.titleChanged.subscribe([&] { ++titles; });
    screen().font.cmdSelectFont.press();
    EXPECT_EQ(trainer.title(), "digits - Dravik Trainer");
    EXPECT_EQ(titles, 1);
    EXPECT_TRUE(trainer.reading().available);
    EXPECT_EQ(readText(), "123|45|");
    trainer.parts().next();
    EXPECT_EQ(readText(), "6789|");

    type("6789");
    screen().sample.cmdInclude.press();
    EXPECT_EQ(trainer.title(), "digits* - Dravik Trainer");
    EXPECT_EQ(titles, 2);

    screen().train.cmdTrain.press();
    EXPECT_EQ(trainer.reading().note, "The font is being trained");
    trainer.parts().previous();
    EXPECT_EQ(trainer.preview().size(), 5U) << "parts can be looked at meanwhile";
    runTimer(screen().train.tmrTrain, [] {});
    EXPECT_EQ(readText(), "123|45|");
    screen().train.cmdSaveFont.press();
    EXPECT_EQ(trainer.title(), "digits - Dravik Trainer");
    EXPECT_EQ(titles, 3);
    EXPECT_EQ(readText(), "123|45|");
}

}  // namespace
}  // namespace dravik::test
