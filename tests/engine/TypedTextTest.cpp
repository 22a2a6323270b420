// Print whose characters were found wrongly, divided into those of the text that it is known to show.

#include "engine/LabelledImages.h"
#include "engine/PngFile.h"
#include "engine/scene/GivenCharacters.h"
#include "engine/scene/GivenText.h"
#include "support/Testing.h"

namespace dravik::test {
namespace {

using namespace engine;
using Boxes = std::vector<CharacterBox>;
using Text = std::vector<std::string>;

struct Image {
    std::string name;
    std::shared_ptr<const GreyImage> pixels;
    Text text;
    Scene found;
    Boxes boxes;
};

// Of a regression folder, as many characters found as there are, upright in one line or several.
std::vector<Image> rightlyFound() {
    std::vector<Image> result;
    for (const LabelledImage& image : labelledImages(DRAVIK_SOURCE_DIR "/tests/engine/regression/usual")) {
        auto pixels = std::make_shared<const GreyImage>(readPng(image.file));
        Scene found = findScene(pixels);
        Text text = characters(image.text);
        Boxes boxes = characterBoxes(found);
        if (boxes.size() == text.size() && text.size() > 4)
            result.push_back(
                {image.name, std::move(pixels), std::move(text), std::move(found), std::move(boxes)});
    }
    return result;
}

bool samePlaces(const Boxes& a, const Boxes& b) {
    return std::equal(
        a.begin(), a.end(), b.begin(), b.end(), [](const CharacterBox& one, const CharacterBox& other) {
            const float off = 0.35f * std::max(one.place.width, other.place.width) + 2;
            return std::abs(one.place.centreX - other.place.centreX) < off && one.line == other.line;
        });
}

RotatedBox around(RotatedBox a, const RotatedBox& b) {
    a.width = 0.5f * (a.width + b.width) + std::hypot(a.centreX - b.centreX, a.centreY - b.centreY);
    a.height = std::max(a.height, b.height);
    a.centreX = 0.5f * (a.centreX + b.centreX);
    a.centreY = 0.5f * (a.centreY + b.centreY);
    return a;
}

struct Counts {
    int tried = 0, divided = 0, misplaced = 0, wrongTaken = 0;
};

// The image with its characters found wrongly, divided by its text, and by texts of another number.
void tryOut(const Image& image, const Boxes& wrongly, Counts& counts) {
    const Scene found = withCharacters(*image.pixels, image.found, wrongly);
    ASSERT_NE(found.characters(), image.text.size()) << image.name;
    ++counts.tried;
    if (const std::optional<Scene> divided = sceneWithText(found, image.text)) {
        ++counts.divided;
        counts.misplaced += samePlaces(characterBoxes(*divided), image.boxes) ? 0 : 1;
    }
    Text shorter = image.text, longer = image.text;
    shorter.erase(shorter.begin() + 1);
    longer.insert(longer.begin() + 1, "7");
    for (const Text& wrong : {shorter, longer})
        if (wrong.size() != found.characters()) counts.wrongTaken += sceneWithText(found, wrong) ? 1 : 0;
}

TEST(TypedText, DividesWhatWasFoundTogetherOrLeftOut) {
    Counts together, leftOut;
    for (const Image& image : rightlyFound()) {
        const std::size_t place = image.boxes.size() / 2;
        const CharacterBox &before = image.boxes[place - 1], &one = image.boxes[place];
        Boxes wrongly = image.boxes;
        wrongly.erase(wrongly.begin() + static_cast<std::ptrdiff_t>(place));
        tryOut(image, wrongly, leftOut);
        if (before.line != one.line) continue;
        wrongly[place - 1].place = around(before.place, one.place);
        tryOut(image, wrongly, together);
    }
    for (const Counts& counts : {together, leftOut}) {
        EXPECT_GT(counts.tried, 20);
        EXPECT_GE(10 * counts.divided, 9 * counts.tried);
        EXPECT_EQ(counts.misplaced, 0);
        EXPECT_EQ(counts.wrongTaken, 0);
    }
}

}  // namespace
}  // namespace dravik::test
