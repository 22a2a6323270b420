// Print of which no threshold shows enough is found in what the network of ink takes for print.
#include "engine/PngFile.h"
#include "engine/scene/GivenCharacters.h"
#include "engine/scene/Scene.h"
#include "support/Testing.h"

namespace dravik::test {
namespace {

using namespace engine;

// Faint dots on a rough ground: 27358, dark on light.
std::shared_ptr<const GreyImage> faintDots() {
    return std::make_shared<GreyImage>(
        readPng(DRAVIK_SOURCE_DIR "/tests/engine/regression/extreme/dot5x7_024.png"));
}

Scene sceneOf(const std::shared_ptr<const GreyImage>& image, Polarity polarity) {
    return findScene(image, {.print = {.polarity = polarity}});
}

TEST(PrintAlone, IsLookedAtWhereCharactersAreInDoubtAndOfTheOperatorsPolarity) {
    const auto image = faintDots();
    for (const Polarity polarity : {Polarity::Automatic, Polarity::DarkOnLight}) {
        const Scene scene = sceneOf(image, polarity);
        ASSERT_EQ(scene.parts.size(), 1u);
        EXPECT_EQ(scene.characters(), 5u);
        EXPECT_EQ(scene.parts.front().original, image);
        EXPECT_TRUE(scene.parts.front().isDark());
    }
    for (const ScenePart& part : sceneOf(image, Polarity::LightOnDark).parts) EXPECT_FALSE(part.isDark());
    const auto clear =
        std::make_shared<GreyImage>(readPng(DRAVIK_SOURCE_DIR "/data/parts/rendered_lines/hack_000.png"));
    EXPECT_EQ(findScene(clear).parts.front().original, nullptr);
}

// Where the network sees print, a box that an operator sets takes it; where it sees none, the image tells.
TEST(PrintAlone, BoxesSetByHandTakeItsInkOrThatOfTheImage) {
    const auto image = faintDots();
    const Scene found = sceneOf(image, Polarity::Automatic);
    std::vector<CharacterBox> boxes = characterBoxes(found);
    ASSERT_EQ(boxes.size(), 5u);
    boxes[2].place.width += 4;
    const Scene wider = withCharacters(*image, found, boxes, {});
    const auto inkOf = [](const Scene& scene, std::size_t place) {
        return static_cast<double>(scene.parts.front().found.glyphs[place].piece.area);
    };
    EXPECT_NEAR(inkOf(wider, 2), inkOf(found, 2), 0.2 * inkOf(found, 2));

    auto spotted = std::make_shared<GreyImage>(*image);
    Scene missed = found;
    missed.parts.front().original = spotted;
    boxes = characterBoxes(missed);
    RotatedBox& place = boxes.emplace_back(boxes.back()).place;
    place.centreX = 15;
    place.width = 20;
    const int x = static_cast<int>(place.centreX), y = static_cast<int>(place.centreY);
    for (int row = y - 10; row < y + 10; ++row)
        for (int column = x - 3; column < x + 3; ++column) (*spotted)(column, row) = 0;
    const Scene more = withCharacters(*spotted, missed, boxes, {});
    EXPECT_NEAR(inkOf(more, 5) * std::pow(more.parts.front().found.ink.scale, 2), 120, 40);
}

}  // namespace
}  // namespace dravik::test
