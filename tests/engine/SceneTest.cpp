// Print on a whole part, beside other things and turned; how well photographs are seen, RegressionTest.cpp
// asks.
#include "engine/scene/Scene.h"

#include <stop_token>

#include "contract/DrawnText.h"
#include "engine/classifier/SceneReading.h"
#include "support/Testing.h"

namespace dravik {
namespace {

constexpr int kMargin = 220;  // so wide that no turn loses any print

GreyImage plate(const std::vector<std::string>& text) {
    return drawn(text, {.scale = 5, .dot = 5, .margin = kMargin});
}

RotatedBox boxOf(const GreyImage& image, float degrees) {
    const float width = static_cast<float>(image.width()), height = static_cast<float>(image.height());
    return {0.5f * width, 0.5f * height, width, height, degrees};
}

GreyImage turned(const GreyImage& image, float degrees) {
    return uprightPicture(image, boxOf(image, -degrees));
}

RotatedBox::Point middleOf(const Region& place) {
    return {0.5f * static_cast<float>(place.left + place.right),
            0.5f * static_cast<float>(place.top + place.bottom)};
}

Scene sceneOf(const GreyImage& picture, const SegmentationSettings& settings = {}) {
    return findScene(std::make_shared<GreyImage>(picture), settings);
}

// A character's box holds its ink, wherever the line stands and however it is turned; lines are numbered
// through all parts.
TEST(Scene, PlacesAndLinesAreThoseOfTheWholePicture) {
    const GreyImage picture = plate({"ABCEHLAB", "CE0HEBAC"});
    const std::vector<PlacedGlyph> found = allPlaces(sceneOf(turned(picture, 20)));
    ASSERT_EQ(found.size(), 16u);
    const RotatedBox all = boxOf(picture, 20);
    for (std::size_t i = 0; i < found.size(); ++i) {
        // The middle of the character's five by seven dots.
        const std::size_t line = i / 8;
        const float x = kMargin + 30 * static_cast<float>(i % 8) + 12.5f,
                    y = kMargin + 55 * static_cast<float>(line) + 17.5f;
        const RotatedBox::Point wanted = all.toImage({x - all.centreX, y - all.centreY});
        EXPECT_NEAR(middleOf(found[i].place).x, wanted.x, 4);
        EXPECT_NEAR(middleOf(found[i].place).y, wanted.y, 4);
        EXPECT_LT(found[i].place.width(), 48);
        EXPECT_EQ(found[i].line, static_cast<int>(line));
    }
}

// Upright, on its head and on its side, with a barcode so near that without the region it joins the print.
TEST(Scene, OfARegionOnlyWhatIsInItIsSeenTurnedUpright) {
    GreyImage picture = plate({"A1B2C3E4H5"});
    for (int x = kMargin; x < kMargin + 300; x += 4 + x % 5)
        for (int y = kMargin - 60; y < kMargin - 4; ++y) picture(x, y) = picture(x + 1, y) = 40;
    for (const float degrees : {0.0f, 25.0f, -38.0f, 90.0f, 180.0f}) {
        RotatedBox region = boxOf(picture, degrees);
        region.width = 310;
        region.height = 60;
        const Scene scene = sceneOf(turned(picture, degrees), {.region = region});
        EXPECT_EQ(scene.characters(), 10u) << degrees;
        for (const PlacedGlyph& glyph : allPlaces(scene)) EXPECT_TRUE(region.contains(middleOf(glyph.place)));
    }
}

TEST(Scene, SearchEndsOnceAStopIsRequested) {
    std::stop_source stop;
    stop.request_stop();
    for (const float degrees : {0.0f, 30.0f}) {
        const auto picture = std::make_shared<GreyImage>(turned(plate({"A1B2C3"}), degrees));
        EXPECT_EQ(findScene(picture, {}, stop.get_token()).characters(), 0u);
        EXPECT_EQ(findScene(picture).characters(), 6u);
    }
}

TEST(Scene, NoiseAndTextureHaveNoLines) {
    std::mt19937 random(11);
    for (const int kind : {0, 1, 2}) {
        GreyImage picture(1600, 1250);
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                picture(x, y) =
                    kind == 0   ? static_cast<std::uint8_t>(random())
                    : kind == 1 ? static_cast<std::uint8_t>((x / 3 + y / 3) % 2 ? 210 : 60)
                                : static_cast<std::uint8_t>(128 + 90 * std::sin(0.7 * x) * std::sin(0.5 * y));
        EXPECT_EQ(sceneOf(picture).characters(), 0u) << kind;
    }
}

}  // namespace
}  // namespace dravik
