// An image whose characters are not found by themselves is included with its text, and with no other one.

#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/classifier/SceneReading.h"
#include "engine/scene/GivenText.h"
#include "trainer/support/TrainerFixture.h"

namespace dravik::test {
namespace {

// An image of the regression set that is found wrongly and divided rightly, in no doubt of its characters.
struct HardImage {
    GreyImage pixels;
    std::string text;
    int found = 0;
};

HardImage hardImage() {
    for (const char* folder : {"regression/usual", "corpus", "regression/extreme"})
        for (const LabelledImage& image :
             labelledImages(std::string(DRAVIK_SOURCE_DIR "/tests/engine/") + folder)) {
            const auto pixels = std::make_shared<const GreyImage>(readPng(image.file));
            const Scene found = findScene(pixels);
            const std::vector<std::string> text = characters(image.text);
            if (found.characters() >= text.size() || found.characters() < 2) continue;
            const std::optional<Scene> divided = sceneWithText(found, text);
            if (!divided) continue;
            const auto said = compareWithText(*divided, text);
            if (std::none_of(said.begin(), said.end(), [](const auto& one) { return one.disagrees(); }))
                return {*pixels, image.text, static_cast<int>(found.characters())};
        }
    throw std::runtime_error("every image is found rightly: choose others");
}

class TypedDivisionTest : public TrainerFixture {
  protected:
    TypedDivisionTest() {
        EXPECT_EQ(workspace.learnDigits("digits").status, 0);
        choose("digits");
        committedBefore_ = committed();
        writePgm(workspace.path("hard.pgm"), hard.pixels);
        window->open({workspace.path("hard.pgm")});
    }
    int included() { return committed() - committedBefore_; }

    const HardImage hard = hardImage();
    const int printed = static_cast<int>(characterCount(hard.text));

  private:
    int committedBefore_ = 0;
};

TEST_F(TypedDivisionTest, ATextHelpsToFindItsCharactersAndAWrongOneDoesNot) {
    const std::string oneMore = hard.text + "8";
    type(oneMore);
    EXPECT_EQ(static_cast<int>(trainer->preview().size()), hard.found);
    EXPECT_EQ(trainer->mismatch(), printed + 1 - hard.found);
    enter();
    EXPECT_EQ(included(), 0);
    type(hard.text);
    EXPECT_EQ(trainer->mismatch(), 0);
    EXPECT_EQ(labels(), hard.text);
    EXPECT_EQ(trainer->previewText(), std::to_string(printed) + " characters found by the text (" +
                                          std::to_string(hard.found) + " without it), " +
                                          std::to_string(printed) + " typed");
    type(oneMore);
    EXPECT_EQ(static_cast<int>(trainer->preview().size()), hard.found) << "of another time's text";
}

TEST_F(TypedDivisionTest, TheWindowDoesNotWaitForItAndAnIncludeDoes) {
    trainer->setPatience(std::chrono::milliseconds(0));
    type(hard.text);
    EXPECT_TRUE(trainer->isWorking());
    EXPECT_EQ(trainer->includeAsLabelled(), "");
    EXPECT_EQ(included(), printed);
}

TEST_F(TypedDivisionTest, CharactersCorrectedByHandStayWhateverIsTyped) {
    type(hard.text);
    const std::vector<CharacterBox> divided = trainer->tool().characterBoxes();
    std::vector<CharacterBox> corrected = divided;
    corrected.pop_back();
    trainer->adjustments().correct(corrected, "deletion of a character");
    type("8");
    type(hard.text);
    EXPECT_EQ(trainer->tool().characterBoxes(), corrected);

    // The same when the image comes up again.
    draw("123");
    trainer->parts().setCurrent(0);
    EXPECT_EQ(trainer->tool().characterBoxes(), corrected);
    trainer->adjustments().undoCorrection();
    EXPECT_EQ(trainer->tool().characterBoxes(), divided);
    EXPECT_EQ(labels(), hard.text);
}

TEST_F(TypedDivisionTest, LearnTakesTheImageWithItsTextAlone) {
    workspace.write("list.tsv", "hard.pgm\t" + hard.text + "8\nhard.pgm\t" + hard.text + "\n");
    const CommandResult learnt =
        workspace.run({"learn", "--font", "hard", "--samples", workspace.path("list.tsv"), "--timeout", "1"});
    ASSERT_GE(learnt.out.size(), 2u);
    EXPECT_EQ(learnt.out[0], "refused\thard.pgm\t" + std::to_string(printed + 1) + " characters typed, " +
                                 std::to_string(hard.found) + " found");
    EXPECT_EQ(learnt.out[1], "included " + std::to_string(printed) + "\thard.pgm");
}

}  // namespace
}  // namespace dravik::test
