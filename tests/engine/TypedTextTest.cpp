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

RotatedBox around(const RotatedBox& a, const RotatedBox& b) {
    const RotatedBox::Point first = a.toOwn({b.centreX, b.centreY});
    const float left = std::min(-0.5f * a.width, first.x - 0.5f * b.width),
                right = std::max(0.5f * a.width, first.x + 0.5f * b.width),
                top = std::min(-0.5f * a.height, first.y - 0.5f * b.height),
                bottom = std::max(0.5f * a.height, first.y + 0.5f * b.height);
    const RotatedBox::Point middle = a.toImage({0.5f * (left + right), 0.5f * (top + bottom)});
    return {middle.x, middle.y, right - left, bottom - top, a.angle};
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

TEST(TypedText, DividesWhatWasFoundTogetherLeftOutOrApart) {
    Counts together, leftOut, apart;
    for (const Image& image : rightlyFound()) {
        const std::size_t place = image.boxes.size() / 2;
        const CharacterBox one = image.boxes[place];
        Boxes wrongly = image.boxes;
        wrongly.erase(wrongly.begin() + static_cast<std::ptrdiff_t>(place));
        tryOut(image, wrongly, leftOut);
        if (image.boxes[place - 1].line == one.line) {
            wrongly[place - 1].place = around(image.boxes[place - 1].place, one.place);
            tryOut(image, wrongly, together);
        }
        wrongly = image.boxes;
        const float quarter = 0.25f * one.place.width;
        for (const float side : {-1.0f, 1.0f}) {
            CharacterBox& half =
                side < 0 ? wrongly[place]
                         : *wrongly.insert(wrongly.begin() + static_cast<std::ptrdiff_t>(place) + 1, one);
            const RotatedBox::Point middle = one.place.toImage({side * quarter, 0});
            half.place.centreX = middle.x;
            half.place.centreY = middle.y;
            half.place.width = 2 * quarter;
        }
        tryOut(image, wrongly, apart);
    }
    for (const auto& [what, counts] :
         {std::pair("together", together), {"left out", leftOut}, {"apart", apart}}) {
        SCOPED_TRACE(what);
        EXPECT_GT(counts.tried, 20);
        EXPECT_GE(10 * counts.divided, 9 * counts.tried);
        EXPECT_EQ(counts.misplaced, 0);
        EXPECT_EQ(counts.wrongTaken, 0);
    }
}

}  // namespace
}  // namespace dravik::test
